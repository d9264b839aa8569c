// SPDX-License-Identifier: Apache-2.0
#include "language_choice.h"

#include <allheaders.h>

#include <algorithm>
#include <iterator>
#include <memory>

#include "page_reader.h"
#include "script.h"

namespace tesseract_engine {
namespace {

constexpr float kLeastConfidence = 90;  // letters misread in a foreign script stay below
constexpr int kFewLetters = 6;          // too few to decide on

struct Look {
  std::size_t lines;
  int heights;
};
constexpr Look kShortLook = {3, 3};
constexpr Look kLongLook = {5, 12};

struct Letters {
  int all = 0;
  int foreign = 0;
  double share() const { return all == 0 ? 0 : static_cast<double>(foreign) / all; }
};

void count_letters(tesseract::TessBaseAPI& api, const tesseract::TessBaseAPI& first,
                   Letters& letters) {
  if (api.Recognize(nullptr) != 0) return;
  const std::unique_ptr<tesseract::ResultIterator> it(api.GetIterator());
  if (!it || it->Empty(tesseract::RIL_SYMBOL)) return;
  do {
    const std::u32string text = character_at(*it);
    if (text.empty() || !is_letter(text.front())) continue;
    if (it->Confidence(tesseract::RIL_SYMBOL) < kLeastConfidence) continue;
    ++letters.all;
    if (!first.IsValidCharacter(to_utf8(text).c_str())) ++letters.foreign;
  } while (it->Next(tesseract::RIL_SYMBOL));
}

// Makes the box, with a margin for what layout analysis has cut too close, the part to read.
// Tesseract ends the process when that is larger than it can hold, so it must not reach beyond the
// page.
void select(tesseract::TessBaseAPI& api, const Box& box) {
  Pix* page = api.GetInputImage();
  const int margin = (box.bottom - box.top) / 8;
  const int left = std::max(0, box.left - margin);
  const int top = std::max(0, box.top - margin);
  const int right = std::min(pixGetWidth(page), box.right + margin);
  const int bottom = std::min(pixGetHeight(page), box.bottom + margin);
  api.SetRectangle(left, top, right - left, bottom - top);
}

Letters look_at(tesseract::TessBaseAPI& api, const std::vector<Box>& lines, const Look& look,
                const tesseract::TessBaseAPI& first) {
  Letters letters;
  for (const Box& box : sample_lines(lines, look.lines, look.heights)) {
    select(api, box);
    count_letters(api, first, letters);
  }
  return letters;
}

bool is_clear(const Letters& letters) {
  return letters.all >= kFewLetters && (letters.share() < 0.1 || letters.share() > 0.6);
}

}  // namespace

std::vector<Box> sample_lines(const std::vector<Box>& lines, std::size_t count, int heights) {
  const auto width = [](const Box& box) { return box.right - box.left; };
  std::vector<int> widths;
  widths.reserve(lines.size());
  for (const Box& line : lines) widths.push_back(width(line));
  if (widths.empty()) return {};
  std::sort(widths.begin(), widths.end());
  const int median = widths[widths.size() / 2];

  std::vector<Box> full;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(full),
               [&](const Box& line) { return width(line) >= median; });
  std::vector<Box> samples;
  count = std::min(count, full.size());
  for (std::size_t i = 0; i < count; ++i) {
    Box sample = full[(2 * i + 1) * full.size() / (2 * count)];
    const int height = sample.bottom - sample.top;
    sample.right = std::min(sample.right, sample.left + heights * height);
    samples.push_back(sample);
  }
  return samples;
}

double foreign_share(tesseract::TessBaseAPI& api, const std::vector<Box>& lines,
                     const tesseract::TessBaseAPI& first) {
  const Letters letters = look_at(api, lines, kShortLook, first);
  return is_clear(letters) ? letters.share() : look_at(api, lines, kLongLook, first).share();
}

}  // namespace tesseract_engine
