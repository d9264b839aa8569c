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

// Above this share of characters that the first list cannot write, another list reads the page.
constexpr double kForeignShare = 0.1;

// The pieces of lines to look at: of at most three lines, spread over the page, the first dozen
// characters or so. Depends on `lines` alone.
std::vector<Box> sample_lines(const std::vector<Box>& lines);

// Reads the samples with `api`, which holds the page and reads single lines; returns the share (0
// to 1) of the characters read with some confidence that `first` does not know.
double foreign_share(tesseract::TessBaseAPI& api, const std::vector<Box>& samples,
                     const tesseract::TessBaseAPI& first);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_LANGUAGE_CHOICE_H
