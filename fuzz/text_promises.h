// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_TEXT_PROMISES_H
#define ZELK_FUZZ_TEXT_PROMISES_H

#include <string>
#include <vector>

#include "fuzz_input.h"
#include "text/plain_conversions.h"

// What the conversions to bytes, of single characters and of numbers promise. `text` is raw bytes,
// read as 16-bit units or 32-bit cells where the conversion takes those.

template <typename Text>
int size_of(const Text& text) {
  return static_cast<int>(text.size());
}

// The part of the text's units in front of the first zero.
plain::Units units_of(const std::string& text);

void units_to_bytes(const std::string& text, int capacity);
void cells_to_bytes(const std::string& text, int capacity);
void decoded_character(const std::string& text);
void encoded_character(int character);
void numbers_in_text(const std::string& text, int base);
void numbers_to_text(int number);

#endif  // ZELK_FUZZ_TEXT_PROMISES_H
