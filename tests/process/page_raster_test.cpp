// SPDX-License-Identifier: Apache-2.0
#include "process/page_raster.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/Documents.h"

namespace {

TEST(PageRaster, EveryByteOfAUsedRasterIsWrittenThePaddingWithZeros) {
  FIBITMAP* const dib = make_bitmap(5, 4);
  zelk::MDIB image;
  ASSERT_EQ(image.Init(5, 4, 24, 300), 1);
  std::fill(image.m_lpBuf, image.m_lpBuf + 4 * 16, 0xAA);
  EXPECT_TRUE(ofd::page_to_raster(dib, image));
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 5; ++x) {
      EXPECT_EQ(image.m_lpLine[y][3 * x], x);
      EXPECT_EQ(image.m_lpLine[y][3 * x + 1], y);
      EXPECT_EQ(image.m_lpLine[y][3 * x + 2], 7);
    }
    EXPECT_EQ(image.m_lpLine[y][15], 0) << "padding";
  }
  FreeImage_Unload(dib);
}

}  // namespace
