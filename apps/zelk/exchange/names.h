// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_NAMES_H
#define ZELK_APPS_EXCHANGE_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

// File names are bytes. These functions make text of them.

// Length in bytes, 1 to 4, of the UTF-8 character at the start of `bytes`; 0 when there is none:
// stray and missing continuation bytes, overlong forms, surrogates, beyond U+10FFFF.
std::size_t utf8_character_length(std::string_view bytes);

// Whether the character at the start of `bytes`, `length` bytes long, is a control character: C0,
// DEL, and C1 in UTF-8 or, with length 0, as a byte by itself, which some terminals obey too.
bool is_control_character(std::string_view bytes, std::size_t length);

struct ShownName {
  std::string text;      // UTF-8
  bool escaped = false;  // bytes that are not UTF-8 stand as \xNN, and each backslash as \x5C
};

// A name as JSON and other UTF-8 texts hold it. Names that are UTF-8 stay as they are.
ShownName shown_name(std::string_view bytes);

// A name as a line on a terminal holds it: control characters stand as \xNN, so that a name can
// neither break the line nor command the terminal. All other bytes stay, UTF-8 or not.
std::string line_name(std::string_view bytes);

// The same for a text of several lines: line feeds stay.
std::string lines_text(std::string_view bytes);

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_NAMES_H
