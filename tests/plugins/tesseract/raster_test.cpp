// SPDX-License-Identifier: Apache-2.0
#include "raster.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace tesseract_engine;

unsigned pixel(const PixPtr& pix, int x, int y) {
  l_uint32 value = 0;
  pixGetPixel(pix.get(), x, y, &value);
  return value;
}

TEST(Raster, ColourBecomesBrightness) {
  const std::vector<unsigned char> rows = {255, 0,   0,   0, 255, 0, 0, 0, 255, 0xAA, 0xAA, 0xAA,
                                           255, 255, 255, 0, 0,   0, 9, 9, 9,   0xAA, 0xAA, 0xAA};
  const PixPtr pix = to_pix({rows.data(), 3, 2, 24, 12});
  ASSERT_TRUE(pix);
  EXPECT_EQ(pixGetDepth(pix.get()), 8);
  EXPECT_EQ(pixel(pix, 0, 0), 29U);   // blue
  EXPECT_EQ(pixel(pix, 1, 0), 149U);  // green
  EXPECT_EQ(pixel(pix, 2, 0), 77U);   // red
  EXPECT_EQ(pixel(pix, 0, 1), 255U);
  EXPECT_EQ(pixel(pix, 1, 1), 0U);
  EXPECT_EQ(pixel(pix, 2, 1), 9U);
}

TEST(Raster, EveryWidthOfAColourRasterComesOutWhole) {
  for (int width = 1; width <= 9; ++width) {
    const int line_bytes = (width * 3 + 3) / 4 * 4;
    std::vector<unsigned char> rows(static_cast<std::size_t>(2 * line_bytes), 0);
    for (int x = 0; x < 3 * width; ++x) {
      rows[static_cast<std::size_t>(line_bytes + x)] = static_cast<unsigned char>(20 * (x / 3 + 1));
    }
    const PixPtr pix = to_pix({rows.data(), width, 2, 24, line_bytes});
    for (int x = 0; x < width; ++x) {
      EXPECT_EQ(pixel(pix, x, 0), 0U);
      EXPECT_EQ(pixel(pix, x, 1), 20U * static_cast<unsigned>(x + 1)) << width << " wide";
    }
  }
}

TEST(Raster, GreyIsKept) {
  const std::vector<unsigned char> rows = {1, 2, 3, 4, 5, 0, 0, 0, 6, 7, 8, 9, 10, 0, 0, 0};
  const PixPtr pix = to_pix({rows.data(), 5, 2, 8, 8});
  ASSERT_TRUE(pix);
  for (unsigned i = 0; i < 10; ++i) {
    EXPECT_EQ(pixel(pix, static_cast<int>(i % 5), static_cast<int>(i / 5)), i + 1);
  }
}

TEST(Raster, ASetBitIsBlackAndTheHighestBitIsLeftmost) {
  const std::vector<unsigned char> rows = {0x80, 0x00, 0x00, 0x00, 0x40, 0x01, 0xFF, 0xFF};
  const PixPtr pix = to_pix({rows.data(), 16, 2, 1, 4});
  ASSERT_TRUE(pix);
  EXPECT_EQ(pixGetDepth(pix.get()), 1);
  for (int x = 0; x < 16; ++x) {
    EXPECT_EQ(pixel(pix, x, 0), x == 0 ? 1U : 0U);
    EXPECT_EQ(pixel(pix, x, 1), x == 1 || x == 15 ? 1U : 0U);
  }
}

TEST(Raster, SizesAndFormatsThatCannotBeReadAreMalformed) {
  const unsigned char row[12] = {};
  EXPECT_TRUE(is_well_formed({row, 4, 1, 24, 12}));
  EXPECT_FALSE(is_well_formed({nullptr, 4, 1, 24, 12}));
  EXPECT_FALSE(is_well_formed({row, 0, 1, 24, 12}));
  EXPECT_FALSE(is_well_formed({row, 4, 0, 24, 12}));
  EXPECT_FALSE(is_well_formed({row, -4, 1, 24, 12}));
  EXPECT_FALSE(is_well_formed({row, 4, 1, 24, 11}));
  EXPECT_FALSE(is_well_formed({row, 4, 1, 24, -12}));
  EXPECT_FALSE(is_well_formed({row, 4, 1, 32, 16}));
  EXPECT_FALSE(is_well_formed({row, 4, 1, 0, 12}));
}

TEST(Raster, LongSidesAndManyPixelsAreTooLarge) {
  EXPECT_FALSE(is_too_large(32767, 6103)) << "199,977,001 pixels";
  EXPECT_FALSE(is_too_large(20000, 10000));
  EXPECT_FALSE(is_too_large(9933, 14043)) << "A0 at 300 dots per inch";
  EXPECT_FALSE(is_too_large(-4, 1));
  EXPECT_TRUE(is_too_large(20000, 10001));
  EXPECT_TRUE(is_too_large(30000, 30000));
  EXPECT_TRUE(is_too_large(32768, 1));
  EXPECT_TRUE(is_too_large(4, 40000));
  EXPECT_TRUE(is_too_large(2147483647, 2147483647));
}

TEST(Raster, ResolutionIsEstimatedFromThePageSize) {
  const auto estimate = [](int width, int height) {
    return estimated_resolution(PixPtr(pixCreateNoInit(width, height, 1)).get());
  };
  EXPECT_EQ(estimate(1654, 2339), 200);
  EXPECT_EQ(estimate(3508, 2480), 300);
  EXPECT_EQ(estimate(10, 10), 150);
  EXPECT_EQ(estimate(20000, 100), 600);
}

}  // namespace
