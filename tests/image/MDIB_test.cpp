// SPDX-License-Identifier: Apache-2.0
#include "image/MDIB.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <vector>

using zelk::MDIB;
using Bytes = std::vector<unsigned char>;

// Rasters that cannot be had are asked for below; under the sanitizer that is null, too, not the
// end.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}

namespace {

enum Turn : unsigned { kClockwise = 1, kHalf = 2, kAnticlockwise = 3 };

std::size_t sizeOf(const MDIB& dib) {
  return static_cast<std::size_t>(dib.m_nLineLength) * static_cast<std::size_t>(dib.m_nHeight);
}

Bytes contents(const MDIB& dib) {
  return {dib.m_lpBuf, dib.m_lpBuf + sizeOf(dib)};
}

bool isAllZero(const MDIB& dib) {
  return std::all_of(dib.m_lpBuf, dib.m_lpBuf + sizeOf(dib), [](int byte) { return byte == 0; });
}

// A raster that counts its bytes up from 1.
void make(MDIB& dib, int width, int height, int bitCount) {
  ASSERT_EQ(dib.Init(width, height, bitCount, 300), 1);
  for (std::size_t i = 0; i < sizeOf(dib); ++i) dib.m_lpBuf[i] = static_cast<unsigned char>(i + 1);
}

void expectResolutions(const MDIB& dib, int horizontal, int vertical) {
  EXPECT_EQ(dib.m_nResolutionX, horizontal);
  EXPECT_EQ(dib.m_nResolutionY, vertical);
}

void expectFailedInit(MDIB& dib, int width, int height, int bitCount) {
  SCOPED_TRACE(testing::Message() << width << " x " << height << ", " << bitCount << " bits");
  EXPECT_EQ(dib.Init(width, height, bitCount, 300), 0);
  EXPECT_EQ(dib.m_lpBuf, nullptr);
  EXPECT_EQ(dib.m_lpLine, nullptr);
  EXPECT_EQ(dib.m_nWidth, width);
  EXPECT_EQ(dib.m_nHeight, height);
  EXPECT_EQ(dib.m_nBitCount, bitCount);
}

}  // namespace

TEST(MDIB, StartsEmptyAt300DotsPerInch) {
  const MDIB dib;
  EXPECT_TRUE(dib.IsEmpty());
  EXPECT_EQ(dib.m_nWidth, 0);
  EXPECT_EQ(dib.m_nHeight, 0);
  EXPECT_EQ(dib.m_nBitCount, 0);
  EXPECT_EQ(dib.m_nLineLength, 0);
  expectResolutions(dib, 300, 300);
}

TEST(MDIB, InitUnclearedKeepsThePixelsOfTheSameSizeAndFailsAsInitDoes) {
  MDIB dib;
  make(dib, 5, 4, 8);
  const Bytes before = contents(dib);
  EXPECT_EQ(dib.InitUncleared(5, 4, 8, 150), 1);
  EXPECT_EQ(contents(dib), before);
  expectResolutions(dib, 300, 300);
  EXPECT_EQ(dib.InitUncleared(5, 4, 32, 300), 0);
  EXPECT_TRUE(dib.IsEmpty());
}

TEST(MDIB, RowsArePaddedToFourBytes) {
  const struct {
    int width, bitCount, lineLength;
  } cases[] = {{10, 24, 32}, {10, 8, 12}, {10, 1, 4}, {33, 1, 8},
               {32, 1, 4},   {12, 8, 12}, {4, 24, 12}};
  for (const auto& [width, bitCount, lineLength] : cases) {
    MDIB dib;
    ASSERT_EQ(dib.Init(width, 5, bitCount, 300), 1);
    EXPECT_EQ(dib.m_nLineLength, lineLength);
  }
}

TEST(MDIB, InitMakesZeroPixelsWithTheTopRowFirst) {
  MDIB dib;
  ASSERT_EQ(dib.Init(10, 5, 24, 200), 1);
  EXPECT_FALSE(dib.IsEmpty());
  EXPECT_TRUE(isAllZero(dib));
  for (int row = 0; row < 5; ++row) EXPECT_EQ(dib.m_lpLine[row], dib.m_lpBuf + 32 * row);
  expectResolutions(dib, 200, 200);
}

TEST(MDIB, InitRefusesOtherBitCounts) {
  for (const int bitCount : {32, 16, 4, 0, -8}) {
    MDIB dib;
    expectFailedInit(dib, 10, 5, bitCount);
    EXPECT_EQ(dib.m_nLineLength, 0);
    expectResolutions(dib, 300, 300);
  }
}

TEST(MDIB, InitOfTheSameSizeClearsAndKeepsMemoryAndResolution) {
  MDIB dib;
  make(dib, 10, 5, 24);
  const unsigned char* const block = dib.m_lpBuf;
  dib.m_nResolutionY = 200;
  EXPECT_EQ(dib.Init(10, 5, 24, 600), 1);
  EXPECT_EQ(dib.m_lpBuf, block);
  EXPECT_TRUE(isAllZero(dib));
  expectResolutions(dib, 300, 200);
}

TEST(MDIB, InitOfAnotherSizeTakesTheNewResolution) {
  MDIB dib;
  make(dib, 10, 5, 24);
  EXPECT_EQ(dib.Init(5, 10, 24, 600), 1);
  EXPECT_TRUE(isAllZero(dib));
  expectResolutions(dib, 600, 600);
}

TEST(MDIB, SizesThatCannotBeHadFailEachTime) {
  const struct {
    int width, height;
  } sizes[] = {{0, 0},       {0, 5},
               {5, 0},       {-5, 5},
               {5, -5},      {-5, -5},
               {INT_MIN, 1}, {-1'431'655'760, 5},
               {1, INT_MIN}, {INT_MIN, INT_MIN}};
  for (const auto& [width, height] : sizes) {
    for (const int bitCount : {1, 8, 24}) {
      MDIB dib;
      expectFailedInit(dib, width, height, bitCount);
      expectFailedInit(dib, width, height, bitCount);
    }
  }
}

TEST(MDIB, RowsBeyondTheRangeOfAnIntFail) {
  MDIB dib;
  expectFailedInit(dib, INT_MAX, 1, 8);
  expectFailedInit(dib, INT_MAX, 1, 24);
  expectFailedInit(dib, INT_MAX / 3 + 1, 1, 24);
  expectFailedInit(dib, 1'431'655'770, 1, 24);  // 16 bytes more than 32 bits can count
  expectFailedInit(dib, INT_MAX, INT_MAX, 24);
}

TEST(MDIB, BlocksBeyondMemoryFailEachTime) {
  MDIB dib;
  make(dib, 2, 2, 8);
  expectFailedInit(dib, 700'000'000, INT_MAX, 24);
  expectFailedInit(dib, 700'000'000, INT_MAX, 24);
  MDIB turned;
  EXPECT_EQ(dib.Rotate(&turned, kClockwise, 0), 0);
  EXPECT_EQ(turned.Copy(&dib), 0);
}

TEST(MDIB, AFailedInitCanBeFollowedByAGoodOne) {
  MDIB dib;
  expectFailedInit(dib, 10, 5, 32);
  EXPECT_EQ(dib.Init(10, 5, 24, 150), 1);
  EXPECT_TRUE(isAllZero(dib));
  expectResolutions(dib, 150, 150);
}

TEST(MDIB, UnloadKeepsOnlyTheResolutions) {
  MDIB dib;
  ASSERT_EQ(dib.Init(10, 5, 8, 200), 1);
  dib.Unload();
  EXPECT_TRUE(dib.IsEmpty());
  EXPECT_EQ(dib.m_nWidth, 0);
  EXPECT_EQ(dib.m_nHeight, 0);
  EXPECT_EQ(dib.m_nBitCount, 0);
  EXPECT_EQ(dib.m_nLineLength, 0);
  expectResolutions(dib, 200, 200);
  dib.Unload();
  EXPECT_TRUE(dib.IsEmpty());
}

TEST(MDIB, IsEmptyWhenEitherPointerIsNull) {
  MDIB dib;
  make(dib, 2, 2, 8);
  unsigned char** const rows = dib.m_lpLine;
  dib.m_lpLine = nullptr;
  EXPECT_TRUE(dib.IsEmpty());
  dib.m_lpLine = rows;
  unsigned char* const block = dib.m_lpBuf;
  dib.m_lpBuf = nullptr;
  EXPECT_TRUE(dib.IsEmpty());
  dib.m_lpBuf = block;
  EXPECT_FALSE(dib.IsEmpty());
}

TEST(MDIB, QueriesTellSizeAndKind) {
  MDIB dib;
  make(dib, 10, 5, 24);
  EXPECT_EQ(dib.GetWidth(), 10);
  EXPECT_EQ(dib.GetHeight(), 5);
  EXPECT_TRUE(dib.IsTrueColor() && !dib.IsGray() && !dib.IsBW());
  make(dib, 10, 5, 8);
  EXPECT_TRUE(!dib.IsTrueColor() && dib.IsGray() && !dib.IsBW());
  make(dib, 10, 5, 1);
  EXPECT_TRUE(!dib.IsTrueColor() && !dib.IsGray() && dib.IsBW());
}

TEST(MDIB, CopiesTakeTheHorizontalResolutionForBothAxes) {
  MDIB source;
  make(source, 10, 5, 24);
  source.m_nResolutionX = 150;
  source.m_nResolutionY = 75;
  MDIB constructed(source);
  MDIB copied;
  EXPECT_EQ(copied.Copy(&source), 1);
  for (const MDIB* copy : {&constructed, &copied}) {
    EXPECT_EQ(contents(*copy), contents(source));
    EXPECT_EQ(copy->m_nWidth, 10);
    EXPECT_EQ(copy->m_nHeight, 5);
    EXPECT_EQ(copy->m_nBitCount, 24);
    EXPECT_EQ(copy->m_nLineLength, 32);
    EXPECT_NE(copy->m_lpBuf, source.m_lpBuf);
    expectResolutions(*copy, 150, 150);
  }
}

TEST(MDIB, CopyingAnEmptyRasterEmpties) {
  MDIB empty;
  MDIB constructed(empty);
  EXPECT_TRUE(constructed.IsEmpty());
  MDIB dib;
  make(dib, 10, 5, 8);
  EXPECT_EQ(dib.Copy(&empty), 0);
  EXPECT_TRUE(dib.IsEmpty());
  EXPECT_EQ(dib.m_nWidth, 0);
}

TEST(MDIB, CopyThatCannotBeMadeIsEmpty) {
  MDIB source;
  ASSERT_EQ(source.Init(4, 3, 8, 200), 1);
  source.m_nBitCount = 7;
  MDIB dib;
  ASSERT_EQ(dib.Init(2, 2, 24, 100), 1);
  EXPECT_EQ(dib.Copy(&source), 0);
  EXPECT_TRUE(dib.IsEmpty());
  EXPECT_TRUE(MDIB(source).IsEmpty());
}

TEST(MDIB, CopyingARasterOntoItselfEmptiesIt) {
  MDIB dib;
  make(dib, 10, 5, 8);
  EXPECT_EQ(dib.Copy(&dib), 0);
  EXPECT_TRUE(dib.IsEmpty());
}

TEST(MDIB, CopyOfTheSameSizeStillTakesTheResolution) {
  MDIB source;
  make(source, 10, 5, 8);
  source.m_nResolutionX = 150;
  MDIB dib;
  make(dib, 10, 5, 8);
  EXPECT_EQ(dib.Copy(&source), 1);
  expectResolutions(dib, 150, 150);
}

TEST(MDIB, ClockwiseBringsTheBottomLeftPixelToTheTopLeft) {
  MDIB dib;
  make(dib, 3, 2, 24);
  MDIB turned;
  EXPECT_EQ(dib.Rotate(&turned, kClockwise, 0), 1);
  EXPECT_EQ(turned.m_nWidth, 2);
  EXPECT_EQ(turned.m_nHeight, 3);
  EXPECT_EQ(Bytes(turned.m_lpLine[0], turned.m_lpLine[0] + 8), (Bytes{13, 14, 15, 1, 2, 3, 0, 0}));
  EXPECT_EQ(Bytes(turned.m_lpLine[2], turned.m_lpLine[2] + 8), (Bytes{19, 20, 21, 7, 8, 9, 0, 0}));
}

TEST(MDIB, AnticlockwiseBringsTheTopRightPixelToTheTopLeft) {
  MDIB dib;
  make(dib, 3, 2, 8);
  MDIB turned;
  EXPECT_EQ(dib.Rotate(&turned, kAnticlockwise, 0), 1);
  EXPECT_EQ(contents(turned), (Bytes{3, 7, 0, 0, 2, 6, 0, 0, 1, 5, 0, 0}));
}

TEST(MDIB, HalfTurnAtOneBitLosesThePixelsBehindWholeBytes) {
  MDIB dib;
  ASSERT_EQ(dib.Init(10, 1, 1, 300), 1);
  dib.m_lpBuf[0] = 0b1110'0001;
  dib.m_lpBuf[1] = 0b1100'0000;  // the ninth and tenth pixel
  MDIB turned;
  EXPECT_EQ(dib.Rotate(&turned, kHalf, 0), 1);
  EXPECT_EQ(contents(turned), (Bytes{0b0010'0001, 0b1100'0000, 0, 0}));
}

TEST(MDIB, QuarterTurnsAtOneBitKeepEveryPixel) {
  MDIB dib;
  ASSERT_EQ(dib.Init(10, 1, 1, 300), 1);
  dib.m_lpBuf[0] = 0b1110'0001;
  dib.m_lpBuf[1] = 0b1100'0000;
  const Bytes before = contents(dib);
  EXPECT_EQ(dib.Rotate(nullptr, kClockwise, 0), 1);
  EXPECT_EQ(dib.m_lpLine[9][0], 0x80);
  EXPECT_EQ(dib.Rotate(nullptr, kAnticlockwise, 0), 1);
  EXPECT_EQ(contents(dib), before);
}

TEST(MDIB, TurningInPlaceByHalfKeepsSizeAndResolutions) {
  MDIB dib;
  make(dib, 4, 2, 8);
  dib.m_nResolutionY = 200;
  EXPECT_EQ(dib.Rotate(nullptr, kHalf, 0), 1);
  EXPECT_EQ(contents(dib), (Bytes{8, 7, 6, 5, 4, 3, 2, 1}));
  expectResolutions(dib, 300, 200);
}

TEST(MDIB, QuarterTurnsGiveBothAxesTheHorizontalResolution) {
  for (const Turn turn : {kClockwise, kAnticlockwise}) {
    MDIB dib;
    make(dib, 3, 2, 24);
    dib.m_nResolutionX = 150;
    dib.m_nResolutionY = 100;
    MDIB turned;
    EXPECT_EQ(dib.Rotate(&turned, turn, 0), 1);
    expectResolutions(turned, 150, 150);
    EXPECT_EQ(dib.Rotate(nullptr, turn, 0), 1);
    expectResolutions(dib, 150, 150);
  }
}

TEST(MDIB, ADestinationOfTheResultingSizeKeepsItsResolutions) {
  MDIB dib;
  make(dib, 3, 2, 24);
  MDIB turned;
  ASSERT_EQ(turned.Init(2, 3, 24, 75), 1);
  EXPECT_EQ(dib.Rotate(&turned, kClockwise, 0), 1);
  expectResolutions(turned, 75, 75);
  EXPECT_EQ(turned.m_lpLine[0][0], 13);
}

TEST(MDIB, OtherOptionsLeaveTheDestinationUntouched) {
  MDIB dib;
  make(dib, 3, 2, 24);
  MDIB other;
  make(other, 4, 4, 8);
  const Bytes source = contents(dib);
  const Bytes before = contents(other);
  for (const unsigned option : {0U, 4U, UINT_MAX}) {
    EXPECT_EQ(dib.Rotate(&other, option, 90), 0);
    EXPECT_EQ(contents(other), before);
    EXPECT_EQ(dib.Rotate(nullptr, option, 90), 0);
    EXPECT_EQ(contents(dib), source);
  }
}

TEST(MDIB, TheAngleHasNoEffect) {
  MDIB dib;
  make(dib, 4, 1, 8);
  MDIB turned;
  EXPECT_EQ(dib.Rotate(&turned, kHalf, 45.0), 1);
  EXPECT_EQ(contents(turned), (Bytes{4, 3, 2, 1}));
}

TEST(MDIB, AnEmptyRasterCannotBeTurned) {
  for (const Turn turn : {kClockwise, kHalf, kAnticlockwise}) {
    MDIB empty;
    MDIB other;
    make(other, 4, 4, 8);
    const Bytes before = contents(other);
    EXPECT_EQ(empty.Rotate(&other, turn, 0), 0);
    EXPECT_EQ(empty.Rotate(nullptr, turn, 0), 0);
    EXPECT_EQ(contents(other), before);
  }
  MDIB empty;
  MDIB other;
  EXPECT_EQ(other.RotateClockWise(empty, other), 0);
  EXPECT_EQ(other.Rotate180(empty, other), 0);
  EXPECT_EQ(other.RotateAntiClockWise(empty, other), 0);
}

TEST(MDIB, ARasterAsItsOwnDestinationIsClearedBeforeItIsRead) {
  for (const int bitCount : {1, 8, 24}) {
    for (const Turn turn : {kClockwise, kHalf, kAnticlockwise}) {
      MDIB dib;
      make(dib, 37, 500, bitCount);
      EXPECT_EQ(dib.Rotate(&dib, turn, 0), 1);
      EXPECT_EQ(dib.m_nWidth, turn == kHalf ? 37 : 500);
      EXPECT_EQ(dib.m_nHeight, turn == kHalf ? 500 : 37);
      EXPECT_TRUE(isAllZero(dib));
    }
  }
}

TEST(MDIB, TurnsReadTheSourceAndWriteTheDestinationOnly) {
  MDIB source;
  make(source, 3, 2, 8);
  MDIB turned;
  MDIB bystander;
  make(bystander, 5, 5, 24);
  const Bytes before = contents(bystander);
  EXPECT_EQ(bystander.RotateImp(source, turned, kHalf, 0), 1);
  EXPECT_EQ(contents(turned), (Bytes{7, 6, 5, 0, 3, 2, 1, 0}));
  EXPECT_EQ(contents(bystander), before);
}
