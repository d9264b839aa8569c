// SPDX-License-Identifier: Apache-2.0
// How a method of PDFlib calls the function that it stands for. For the sources of PDFlib alone.
#ifndef ZELK_WRITERS_PDFLIB_CALL_H
#define ZELK_WRITERS_PDFLIB_CALL_H

#include <algorithm>
#include <climits>
#include <string>
#include <type_traits>

#include "writers/pdflib.h"

namespace pdflib_call {

// The C form of an argument: strings become zero-terminated text, everything else stays.
inline const char* c_form(const std::string& text) {
  return text.c_str();
}
template <typename Value>
Value c_form(Value value) {
  return value;
}

inline int length_of(const std::string& text) {
  return static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
}

inline std::string string_of(const char* text) {
  return text == nullptr ? std::string() : std::string(text);
}

inline std::string string_of(const char* text, int size) {
  return text == nullptr || size <= 0 ? std::string()
                                      : std::string(text, static_cast<std::size_t>(size));
}

}  // namespace pdflib_call

template <typename Call>
auto PDFlib::guarded(Call call) {
  using Result = decltype(call());
  if constexpr (std::is_void_v<Result>) {
    protect([](void* body) { (*static_cast<Call*>(body))(); }, &call);
  } else {
    Result result{};
    auto keep = [&] { result = call(); };
    protect([](void* body) { (*static_cast<decltype(keep)*>(body))(); }, &keep);
    return result;
  }
}

template <typename Entry, typename... Arguments>
auto PDFlib::forward(Entry PDFlib_api::*entry, const Arguments&... arguments) {
  return guarded([&] { return (m_PDFlib_api->*entry)(p, pdflib_call::c_form(arguments)...); });
}

#endif  // ZELK_WRITERS_PDFLIB_CALL_H
