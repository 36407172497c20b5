// SPDX-License-Identifier: Apache-2.0
#include "output/jsonline.hpp"

#include <edit/json.hpp>
#include <edit/membername.hpp>

namespace tool
{

std::string jsonLine(const vesk::AnyConstReference& value)
{
  return vesk::edit::toJson(value, -1, vesk::edit::friendlyName);
}

std::string jsonLine(const std::string& text) { return jsonLine(vesk::AnyConstReference(text)); }

} // namespace tool
