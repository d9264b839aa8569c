// SPDX-License-Identifier: Apache-2.0
#include "language_choice.h"

#include <gtest/gtest.h>

namespace {

using namespace tesseract_engine;

std::vector<Box> text_block(int lines) {
  std::vector<Box> boxes;
  for (int i = 0; i < lines; ++i) boxes.push_back({100, 40 * i, 1500, 40 * i + 30});
  return boxes;
}

TEST(SampleLines, AreSpreadOverThePageAndAsLongAsAskedFor) {
  const std::vector<Box> samples = sample_lines(text_block(30), 3, 12);
  ASSERT_EQ(samples.size(), 3U);
  EXPECT_EQ(samples[0].top, 40 * 5);
  EXPECT_EQ(samples[1].top, 40 * 15);
  EXPECT_EQ(samples[2].top, 40 * 25);
  for (const Box& sample : samples) EXPECT_EQ(sample.right - sample.left, 12 * 30);
}

TEST(SampleLines, ShortLinesAreNotSampledWhereFullOnesAre) {
  std::vector<Box> lines = text_block(9);
  for (std::size_t i = 1; i < lines.size(); i += 3) lines[i].right = 130;
  for (const Box& sample : sample_lines(lines, 3, 12)) EXPECT_GT(sample.right, 130);
}

TEST(SampleLines, FewLinesGiveFewSamples) {
  EXPECT_TRUE(sample_lines({}, 3, 12).empty());
  EXPECT_EQ(sample_lines(text_block(1), 3, 12).size(), 1U);
  EXPECT_EQ(sample_lines(text_block(2), 3, 12).size(), 2U);
}

}  // namespace
