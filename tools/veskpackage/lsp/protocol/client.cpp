// SPDX-License-Identifier: Apache-2.0
#include "lsp/protocol/client.hpp"

#include <algorithm>

namespace tool::lsp
{

Client::Client(const Json& initializeParams)
{
  const auto given = initializeParams.find("capabilities");
  if (given != initializeParams.end() && given->is_object())
  {
    capabilities = *given;
  }
  if (supports("/general/positionEncodings", "utf-8"))
  {
    itsEncoding = PositionEncoding::Utf8;
  }
}

bool Client::supports(const std::string& capability) const
{
  const Json& value = at(capability);
  return value.is_boolean() && value.get<bool>();
}

bool Client::supports(const std::string& capability, const std::string& value) const
{
  const Json& values = at(capability);
  return values.is_array() && std::find(values.begin(), values.end(), value) != values.end();
}

const Json& Client::at(const std::string& capability) const
{
  static const Json none;
  const Json::json_pointer place(capability);
  return capabilities.contains(place) ? capabilities.at(place) : none;
}

} // namespace tool::lsp
