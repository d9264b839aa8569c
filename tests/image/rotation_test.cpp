// SPDX-License-Identifier: Apache-2.0
// The turns of rasters of all small sizes, of sizes round the blocks that pixels are moved in, and
// of slim ones, compared byte by byte, padding included, with pixels moved one at a time.
#include "image/rotation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <utility>
#include <vector>

#include "image/MDIB.h"

namespace {

using zelk::MDIB;
using Bytes = std::vector<unsigned char>;

enum Turn : unsigned { kClockwise = 1, kHalf = 2, kAnticlockwise = 3 };

struct Point {
  int x;
  int y;
};

Point mapped(Turn turn, Point from, int width, int height) {
  switch (turn) {
    case kClockwise:
      return {height - 1 - from.y, from.x};
    case kHalf:
      return {width - 1 - from.x, height - 1 - from.y};
    case kAnticlockwise:
      return {from.y, width - 1 - from.x};
  }
  return from;
}

Bytes contents(const MDIB& dib) {
  const auto size =
      static_cast<std::size_t>(dib.m_nLineLength) * static_cast<std::size_t>(dib.m_nHeight);
  return {dib.m_lpBuf, dib.m_lpBuf + size};
}

void copyPixel(const MDIB& from, Point source, const MDIB& layout, Bytes& to, Point target) {
  const unsigned char* const row = from.m_lpLine[source.y];
  unsigned char* const out = to.data() + static_cast<std::size_t>(target.y) *
                                             static_cast<std::size_t>(layout.m_nLineLength);
  if (from.m_nBitCount == 1) {
    const int bit = row[source.x / 8] >> (7 - source.x % 8) & 1;
    out[target.x / 8] = static_cast<unsigned char>(out[target.x / 8] | bit << (7 - target.x % 8));
    return;
  }
  const int bytes = from.m_nBitCount / 8;
  for (int k = 0; k < bytes; ++k) out[bytes * target.x + k] = row[bytes * source.x + k];
}

Bytes expected(const MDIB& source, const MDIB& turned, Turn turn) {
  Bytes result(contents(turned).size());
  const int width = source.m_nWidth;
  const bool dropsRest = turn == kHalf && source.m_nBitCount == 1;
  for (int y = 0; y < source.m_nHeight; ++y) {
    for (int x = 0; x < (dropsRest ? width / 8 * 8 : width); ++x) {
      copyPixel(source, {x, y}, turned, result, mapped(turn, {x, y}, width, source.m_nHeight));
    }
  }
  return result;
}

class Rotation : public ::testing::TestWithParam<int> {
 protected:
  // Every byte is random, the padding behind the rows too: it must never show in the result.
  void fill(MDIB& dib, int width, int height) {
    ASSERT_EQ(dib.Init(width, height, GetParam(), 300), 1);
    const std::size_t size = contents(dib).size();
    for (std::size_t i = 0; i < size; ++i) dib.m_lpBuf[i] = static_cast<unsigned char>(random_());
  }

  void checkTurns(int width, int height) {
    MDIB source;
    fill(source, width, height);
    const Bytes before = contents(source);
    for (const Turn turn : {kClockwise, kHalf, kAnticlockwise}) {
      MDIB turned;
      ASSERT_EQ(source.Rotate(&turned, turn, 0), 1);
      ASSERT_EQ(turned.m_nWidth, turn == kHalf ? width : height);
      ASSERT_EQ(turned.m_nHeight, turn == kHalf ? height : width);
      ASSERT_EQ(contents(turned), expected(source, turned, turn))
          << width << " x " << height << ", turn " << turn;
    }
    ASSERT_EQ(contents(source), before);
  }

 private:
  std::mt19937 random_{1};
};

INSTANTIATE_TEST_SUITE_P(Bits, Rotation, ::testing::Values(1, 8, 24));

constexpr std::pair<int, int> kOtherSizes[] = {{127, 129}, {128, 64}, {200, 137}, {1, 300},
                                               {300, 1},   {9, 500},  {500, 9},   {513, 73}};

}  // namespace

TEST_P(Rotation, EverySmallSizeMatchesPixelByPixel) {
  for (int width = 1; width <= 70; ++width) {
    for (int height = 1; height <= 70; ++height) checkTurns(width, height);
  }
}

TEST_P(Rotation, SizesRoundTheBlocksMatchPixelByPixel) {
  for (const auto& [width, height] : kOtherSizes) checkTurns(width, height);
}

TEST_P(Rotation, ClockwiseThenAnticlockwiseRestores) {
  for (int width = 1; width <= 70; ++width) {
    for (int height = 1; height <= 70; ++height) {
      MDIB source;
      fill(source, width, height);
      MDIB turned;
      MDIB restored;
      ASSERT_EQ(source.Rotate(&turned, kClockwise, 0), 1);
      ASSERT_EQ(turned.Rotate(&restored, kAnticlockwise, 0), 1);
      Bytes pixels(contents(source).size());
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) copyPixel(source, {x, y}, restored, pixels, {x, y});
      }
      ASSERT_EQ(contents(restored), pixels) << width << " x " << height;
    }
  }
}

TEST_P(Rotation, InPlaceEqualsTurningIntoAnotherRaster) {
  for (const auto& [width, height] : kOtherSizes) {
    for (const Turn turn : {kClockwise, kHalf, kAnticlockwise}) {
      MDIB source;
      fill(source, width, height);
      MDIB turned;
      ASSERT_EQ(source.Rotate(&turned, turn, 0), 1);
      ASSERT_EQ(source.Rotate(nullptr, turn, 0), 1);
      EXPECT_EQ(contents(source), contents(turned));
    }
  }
}
