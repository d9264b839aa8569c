// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_resolution.h"

#include <gtest/gtest.h>

namespace {

int resolution(unsigned width, unsigned height, unsigned dots_per_meter = 0) {
  cli::PictureHeader header;
  header.width = width;
  header.height = height;
  header.dots_per_meter = dots_per_meter;
  return cli::picture_resolution(header);
}

TEST(PictureResolution, IsTheFilesOwnWhereItHasOne) {
  EXPECT_EQ(resolution(2480, 3508, 3937), 100);
  EXPECT_EQ(resolution(10, 10, 11811), 300);
  EXPECT_EQ(resolution(10, 10, 23622), 600);
}

TEST(PictureResolution, OfNoSenseIsNone) {
  EXPECT_EQ(resolution(10, 10, 1), 200);
  EXPECT_EQ(resolution(10, 10, 1378), 200) << "35 dots per inch";
  EXPECT_EQ(resolution(10, 10, 1417), 36);
  EXPECT_EQ(resolution(10, 10, 94488), 2400);
  EXPECT_EQ(resolution(10, 10, 94528), 200) << "2401 dots per inch";
  EXPECT_EQ(resolution(10, 10, 4294967295U), 200);
}

TEST(PictureResolution, Of72DotsPerInchIsNone) {
  EXPECT_EQ(resolution(10, 10, 2835), 200);
  EXPECT_EQ(resolution(2480, 3508, 2835), 300);
}

TEST(PictureResolution, OfPicturesLikeSheetsIs300) {
  EXPECT_EQ(resolution(2480, 3508), 300) << "A4";
  EXPECT_EQ(resolution(3508, 2480), 300) << "A4 across";
  EXPECT_EQ(resolution(1748, 2480), 300) << "A5";
  EXPECT_EQ(resolution(3508, 4961), 300) << "A3";
  EXPECT_EQ(resolution(2550, 3300), 300) << "letter";
  EXPECT_EQ(resolution(2550, 4200), 300) << "legal";
  EXPECT_EQ(resolution(5100, 3300), 300) << "tabloid";
  EXPECT_EQ(resolution(2410, 3600), 300) << "A4, nearly";
}

TEST(PictureResolution, OfOtherPicturesIs200) {
  EXPECT_EQ(resolution(1654, 2339), 200) << "A4 at 200";
  EXPECT_EQ(resolution(1700, 2200), 200) << "letter at 200";
  EXPECT_EQ(resolution(2339, 3307), 200) << "A3 at 200";
  EXPECT_EQ(resolution(1920, 1080), 200) << "a screen";
  EXPECT_EQ(resolution(2480, 2480), 200);
  EXPECT_EQ(resolution(1, 1), 200);
}

}  // namespace
