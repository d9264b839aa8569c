// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_OUTPUT_PROMISES_H
#define ZELK_FUZZ_OUTPUT_PROMISES_H

#include <string_view>

#include "outputs/page_reading.h"

// What holds of every page and its outputs, whatever the engine said of it.

// Words and characters lie in the text and on the page.
void reading_is_sound(const cli::PageReading& page);

// The JSON of a document of one page.
void json_is_whole(std::string_view json);

// The HTML of a document of one page: nothing that was read became markup.
void html_is_sound(std::string_view html);

#endif  // ZELK_FUZZ_OUTPUT_PROMISES_H
