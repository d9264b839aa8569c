// SPDX-License-Identifier: Apache-2.0
//
// Which of several language lists reads a page best: decided from a few of its lines, before the
// page is read.
#ifndef ZELK_TESSERACT_LANGUAGE_CHOICE_H
#define ZELK_TESSERACT_LANGUAGE_CHOICE_H

#include <tesseract/baseapi.h>

#include <vector>

#include "page.h"

namespace tesseract_engine {

// Above this share of letters that the first list cannot write, another list reads the page.
// Measured: English pages stay below 0.1, Chinese ones full of English words above 0.3.
constexpr double kForeignShare = 0.2;

// The first pieces of at most `count` lines, spread over the page, each piece at most `heights`
// times as long as its line is high. Lines shorter than most are passed over.
std::vector<Box> sample_lines(const std::vector<Box>& lines, std::size_t count, int heights);

// The share (0 to 1) of letters of the page that `first` does not know, by reading samples of
// `lines` with `api`, which holds the page and reads single lines. A short look decides where the
// samples agree, a longer one where they do not.
double foreign_share(tesseract::TessBaseAPI& api, const std::vector<Box>& lines,
                     const tesseract::TessBaseAPI& first);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_LANGUAGE_CHOICE_H
