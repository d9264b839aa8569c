// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_COLUMNS_H
#define ZELK_APPS_CONSOLE_COLUMNS_H

#include <string>
#include <string_view>

namespace cli {

// How many columns of a terminal a UTF-8 text takes: two for a Han character, none for a combining
// mark. Bytes that are not UTF-8 take one each.
int columns_of(std::string_view text);

// The text when it fits into `columns`, else "..." and as much of its end as fits. Characters stay
// whole. Less than 4 columns hold nothing but a text that fits.
std::string fit_columns(std::string_view text, int columns);

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_COLUMNS_H
