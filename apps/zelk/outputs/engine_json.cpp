// SPDX-License-Identifier: Apache-2.0
#include "outputs/engine_json.h"

#include <stdexcept>

namespace cli {
namespace {

constexpr int kDeepest = 200;

class TooDeep : public std::runtime_error {
 public:
  TooDeep() : std::runtime_error("JSON nested too deep") {}
};

}  // namespace

std::optional<Json> parse_engine_json(const std::string& text) {
  const auto refuse_depth = [](int depth, Json::parse_event_t, Json&) {
    if (depth > kDeepest) throw TooDeep();
    return true;
  };
  try {
    Json json = Json::parse(text, refuse_depth, false);
    if (!json.is_discarded()) return json;
  } catch (const TooDeep&) {
  }
  return {};
}

std::string to_json_text(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace cli
