// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OUTPUTS_UTF8_TEXT_H
#define ZELK_APPS_OUTPUTS_UTF8_TEXT_H

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

// UTF-8 that a page of HTML shows as it is: lines end in a line feed alone, and U+FFFD stands for
// bytes that are no characters and for control characters other than tab and line feed.
std::string displayable(std::string_view text);

// The text with the five characters of HTML's syntax as references, for contents and attributes.
std::string html_escaped(std::string_view text);

// Number of UTF-16 code units of UTF-8 text.
std::size_t utf16_length(std::string_view text);

// UTF-8 of one UTF-16 code unit; U+FFFD for half a pair.
std::string utf8_of(char16_t unit);

}  // namespace cli

#endif  // ZELK_APPS_OUTPUTS_UTF8_TEXT_H
