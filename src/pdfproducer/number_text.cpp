// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/number_text.h"

#include <array>
#include <charconv>

namespace zelk::pdf {

std::string number_text(double value, int decimals) {
  std::array<char, 400> digits;  // the greatest double has 309 of them
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, decimals);
  std::string text(digits.data(), end.ptr);
  if (decimals > 0) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  const std::size_t first = text.front() == '-' ? 1 : 0;
  if (text.compare(first, 2, "0.") == 0) text.erase(first, 1);
  return text == "-0" ? "0" : text;
}

}  // namespace zelk::pdf
