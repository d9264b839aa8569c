// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OUTPUTS_ENGINE_JSON_H
#define ZELK_APPS_OUTPUTS_ENGINE_JSON_H

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace cli {

using Json = nlohmann::ordered_json;

// The JSON that an engine gave of a page; nothing when it is none, or nested deeper than any page
// needs: such text could exhaust the stack of whoever walks through it.
std::optional<Json> parse_engine_json(const std::string& text);

// One line. Bytes that are not UTF-8 become U+FFFD.
std::string to_json_text(const Json& value);

}  // namespace cli

#endif  // ZELK_APPS_OUTPUTS_ENGINE_JSON_H
