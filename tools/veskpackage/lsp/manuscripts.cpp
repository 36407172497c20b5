// SPDX-License-Identifier: Apache-2.0
#include "lsp/manuscripts.hpp"

#include "files/manifestfile.hpp"
#include "lsp/protocol/errors.hpp"

#include <algorithm>

namespace tool::lsp
{
namespace
{
constexpr std::size_t mostDocuments = 1000;
constexpr std::size_t mostOfUri = 8192;
constexpr std::size_t mebibyte = std::size_t{1} << 20U;
constexpr std::size_t mostBytes = mostMebibytes * mebibyte;
constexpr std::size_t mostBytesOfAll = 256 * mebibyte;

[[noreturn]] void refuse(const std::string& why)
{
  throw RequestError(ErrorCode::RequestFailed, why);
}
} // namespace

Manuscript& Manuscripts::open(const Json& textDocument)
{
  const auto uri = textDocument.at("uri").get<std::string>();
  const auto& text = textDocument.at("text").get_ref<const std::string&>();
  const int version = textDocument.at("version").get<int>();
  close(uri);
  if (uri.size() > mostOfUri || all.size() == mostDocuments)
  {
    refuse(uri.substr(0, mostOfUri) + ": too many documents are open; this one is not looked at");
  }
  if (text.size() > std::min(mostBytes, mostBytesOfAll - bytesBesides(uri)))
  {
    refuse(uri + ": the text is too long to be looked at");
  }
  Manuscript& opened = all.try_emplace(uri, client, uri, version, text).first->second;
  use(opened);
  return opened;
}

Manuscript* Manuscripts::change(const Json& params)
{
  const Json& document = params.at("textDocument");
  const auto uri = document.at("uri").get<std::string>();
  Manuscript* const changed = find(uri);
  if (changed == nullptr)
  {
    return nullptr;
  }
  try
  {
    changed->change(document.at("version").get<int>(), params.at("contentChanges"),
                    std::min(mostBytes, mostBytesOfAll - bytesBesides(uri)));
  }
  catch (const std::exception& fault)
  {
    close(uri);
    refuse(uri + ": " + fault.what() + "; it is not looked at until it is opened again");
  }
  return changed;
}

void Manuscripts::close(const std::string& uri)
{
  const auto closed = all.find(uri);
  if (closed != all.end())
  {
    lastUsed = lastUsed == &closed->second ? nullptr : lastUsed;
    all.erase(closed);
  }
}

Manuscript* Manuscripts::find(const std::string& uri)
{
  const auto found = all.find(uri);
  if (found == all.end())
  {
    return nullptr;
  }
  use(found->second);
  return &found->second;
}

std::size_t Manuscripts::bytesBesides(const std::string& uri) const
{
  std::size_t bytes = 0;
  for (const auto& [itsUri, manuscript] : all)
  {
    bytes += itsUri == uri ? 0 : manuscript.text().size();
  }
  return bytes;
}

void Manuscripts::use(Manuscript& manuscript)
{
  if (lastUsed != nullptr && lastUsed != &manuscript)
  {
    lastUsed->forget();
  }
  lastUsed = &manuscript;
}

} // namespace tool::lsp
