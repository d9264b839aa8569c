// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_FIELDS_H
#define ZELK_APPS_EXCHANGE_FIELDS_H

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

namespace cli {

// Converts to whatever a field is, for counting fields.
struct AnyField {
  template <typename Field>
  operator Field() const;
};

// The number of fields of a plain struct: as many as its braces take.
template <typename Struct, typename... Fields>
consteval std::size_t field_count(Fields... fields) {
  if constexpr (requires { Struct{fields..., AnyField{}}; }) {
    return field_count<Struct>(fields..., AnyField{});
  } else {
    return sizeof...(Fields);
  }
}

// All fields of a plain struct in their order, as JSON. Nobody lists them, so none can be left out;
// a struct with more fields than are provided for is not compiled.
template <typename Struct>
std::string fields_text(const Struct& value) {
  const auto text = [](const auto&... fields) {
    nlohmann::json list = nlohmann::json::array();
    (list.push_back(fields), ...);
    return list.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  };
  constexpr std::size_t kCount = field_count<Struct>();
  static_assert(kCount >= 1 && kCount <= 8, "add a line for structs of this many fields");
  if constexpr (kCount == 1) {
    const auto& [a] = value;
    return text(a);
  } else if constexpr (kCount == 2) {
    const auto& [a, b] = value;
    return text(a, b);
  } else if constexpr (kCount == 3) {
    const auto& [a, b, c] = value;
    return text(a, b, c);
  } else if constexpr (kCount == 4) {
    const auto& [a, b, c, d] = value;
    return text(a, b, c, d);
  } else if constexpr (kCount == 5) {
    const auto& [a, b, c, d, e] = value;
    return text(a, b, c, d, e);
  } else if constexpr (kCount == 6) {
    const auto& [a, b, c, d, e, f] = value;
    return text(a, b, c, d, e, f);
  } else if constexpr (kCount == 7) {
    const auto& [a, b, c, d, e, f, g] = value;
    return text(a, b, c, d, e, f, g);
  } else {
    const auto& [a, b, c, d, e, f, g, h] = value;
    return text(a, b, c, d, e, f, g, h);
  }
}

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_FIELDS_H
