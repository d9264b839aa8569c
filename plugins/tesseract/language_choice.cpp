// SPDX-License-Identifier: Apache-2.0
#include "language_choice.h"

#include <algorithm>
#include <memory>

namespace tesseract_engine {
namespace {

constexpr std::size_t kSamples = 3;
constexpr int kSampleHeights = 12;      // longest sample, in line heights
constexpr float kLeastConfidence = 50;  // what noise is read as stays below

struct Count {
  int all = 0;
  int foreign = 0;
};

Count count_characters(tesseract::TessBaseAPI& api, const tesseract::TessBaseAPI& first) {
  Count count;
  if (api.Recognize(nullptr) != 0) return count;
  const std::unique_ptr<tesseract::ResultIterator> it(api.GetIterator());
  if (!it || it->Empty(tesseract::RIL_SYMBOL)) return count;
  do {
    const std::unique_ptr<char[]> text(it->GetUTF8Text(tesseract::RIL_SYMBOL));
    if (!text || it->Confidence(tesseract::RIL_SYMBOL) < kLeastConfidence) continue;
    ++count.all;
    if (!first.IsValidCharacter(text.get())) ++count.foreign;
  } while (it->Next(tesseract::RIL_SYMBOL));
  return count;
}

}  // namespace

std::vector<Box> sample_lines(const std::vector<Box>& lines) {
  const auto width = [](const Box& box) { return box.right - box.left; };
  std::vector<int> widths;
  for (const Box& line : lines) widths.push_back(width(line));
  if (widths.empty()) return {};
  std::sort(widths.begin(), widths.end());
  const int median = widths[widths.size() / 2];

  std::vector<Box> full;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(full),
               [&](const Box& line) { return width(line) >= median; });
  std::vector<Box> samples;
  const std::size_t count = std::min(kSamples, full.size());
  for (std::size_t i = 0; i < count; ++i) {
    Box sample = full[(2 * i + 1) * full.size() / (2 * count)];
    const int height = sample.bottom - sample.top;
    sample.right = std::min(sample.right, sample.left + kSampleHeights * height);
    samples.push_back(sample);
  }
  return samples;
}

double foreign_share(tesseract::TessBaseAPI& api, const std::vector<Box>& samples,
                     const tesseract::TessBaseAPI& first) {
  Count total;
  for (const Box& box : samples) {
    const int margin = (box.bottom - box.top) / 8;
    api.SetRectangle(box.left - margin, box.top - margin, box.right - box.left + 2 * margin,
                     box.bottom - box.top + 2 * margin);
    const Count count = count_characters(api, first);
    total.all += count.all;
    total.foreign += count.foreign;
  }
  return total.all == 0 ? 0 : static_cast<double>(total.foreign) / total.all;
}

}  // namespace tesseract_engine
