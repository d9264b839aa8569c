// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_UNRULY_ENGINE_H
#define ZELK_FUZZ_UNRULY_ENGINE_H

#include <memory>
#include <string>
#include <vector>

#include "engine/QVOcrEngine.h"
#include "fuzz_input.h"

// An engine that takes every answer from an input: counts of any sign and size, second counts that
// differ from the first, boxes anywhere in 64 bits, texts that end with the last byte of their
// memory, JSON without an end. It never writes outside of what it was given: nobody could defend
// himself against that.
struct UnrulyEngine {
  FuzzInput* input = nullptr;

  // What a caller should make of the answers, page by page.
  std::vector<std::vector<OCR_CHAR>> believed;
  std::string texts;
  std::wstring wides;
  std::vector<std::string> jsons;

  int lines = 0;        // told for the page at hand
  int line_count = 0;   // first answer for the line at hand
  bool is_due = false;  // it has characters that have yet to be asked for
  std::unique_ptr<char[]> text;
  std::unique_ptr<wchar_t[]> wide;
};

// The engine that plug_in puts into the slots.
UnrulyEngine& unruly_engine();

void plug_in(QVOcrEngine& engine);

#endif  // ZELK_FUZZ_UNRULY_ENGINE_H
