// SPDX-License-Identifier: Apache-2.0
#include "exchange/cbor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

namespace cli {
namespace {

using Json = nlohmann::json;

// Looks at nesting only; a reader of CBOR stops where it says no.
class NestingCheck : public nlohmann::json_sax<Json> {
 public:
  bool start_object(std::size_t) override { return enter(); }
  bool end_object() override { return leave(); }
  bool start_array(std::size_t) override { return enter(); }
  bool end_array() override { return leave(); }
  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const std::string&) override { return true; }
  bool string(string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool key(string_t&) override { return true; }
  bool parse_error(std::size_t, const std::string&, const Json::exception&) override {
    return false;
  }

 private:
  static constexpr int kDeepest = 16;

  bool enter() { return ++_depth <= kDeepest; }
  bool leave() {
    --_depth;
    return true;
  }

  int _depth = 0;
};

// A field that holds an int may have been given any number.
void limit_numbers(Json& value) {
  if (value.is_structured()) {
    for (Json& element : value) limit_numbers(element);
  } else if (value.is_number_float()) {
    const double number = value.get<double>();
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    value = std::isnan(number) ? 0.0 : std::clamp(number, kLowest, kHighest);
  }
}

}  // namespace

Json parse_cbor(std::string_view bytes) {
  NestingCheck check;
  if (!Json::sax_parse(bytes, &check, Json::input_format_t::cbor)) return nullptr;
  Json value = Json::from_cbor(bytes);
  limit_numbers(value);
  return value;
}

}  // namespace cli
