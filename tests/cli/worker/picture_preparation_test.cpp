// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_preparation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"

namespace {

using Row = std::vector<Colour>;
using Rows = std::vector<Row>;

Row grey_row(std::initializer_list<int> levels) {
  Row row;
  for (const int level : levels) row.push_back({level, level, level});
  return row;
}

// A row of one sample a pixel, black is zero, in the format of the numbers.
template <class Number>
TiffPage grey_page(std::initializer_list<Number> levels) {
  TiffPage page;
  page.width = static_cast<unsigned>(levels.size());
  page.bits = 8 * sizeof(Number);
  page.samples = 1;
  page.photometric = 1;
  page.format = std::is_floating_point_v<Number> ? 3 : std::is_signed_v<Number> ? 2 : 1;
  page.pixels = bytes_of(levels);
  return page;
}

// The first row of a one-page TIFF.
Row first_row(const TiffPage& page) {
  const ScratchFolder folder;
  write_tiff_pages(folder.path("a.tif"), {page});
  return prepared_colours(folder.path("a.tif")).at(0);
}

// Letters of a picture of 2 x 3 pixels, row by row.
std::string letters(const Rows& rows) {
  std::string text;
  for (const Row& row : rows) {
    for (const Colour& colour : row) text += static_cast<char>('A' + (colour[0] + 10) / 40);
    text += ' ';
  }
  return text;
}

TiffPage lettered_page(unsigned orientation, unsigned photometric) {
  TiffPage page;
  page.width = 3;
  page.height = 2;
  page.orientation = orientation;
  page.photometric = photometric;
  for (int letter = 0; letter < 6; ++letter) {
    const char level = static_cast<char>(40 * letter);
    page.pixels += level;
    page.pixels += photometric == 6 ? "\x80\x80" : std::string(2, level);
  }
  return page;
}

const char* const kUpright[] = {"ABC DEF ",  "CBA FED ",  "FED CBA ",  "DEF ABC ",
                                "AD BE CF ", "DA EB FC ", "FC EB DA ", "CF BE AD "};

TEST(PicturePreparation, EveryOrientationOfATiffIsTurnedUpright) {
  const ScratchFolder folder;
  for (unsigned orientation = 1; orientation <= 8; ++orientation) {
    for (const TiffLayout layout : {TiffLayout::kLittleEndian, TiffLayout::kBigEndian}) {
      write_tiff_pages(folder.path("a.tif"), {lettered_page(orientation, 2)}, layout);
      EXPECT_EQ(letters(prepared_colours(folder.path("a.tif"))), kUpright[orientation - 1]);
    }
  }
}

TEST(PicturePreparation, OrientationOfLuminanceAndChrominanceIsAppliedOnce) {
  const ScratchFolder folder;
  for (unsigned orientation = 1; orientation <= 8; ++orientation) {
    write_tiff_pages(folder.path("a.tif"), {lettered_page(orientation, 6)});
    EXPECT_EQ(letters(prepared_colours(folder.path("a.tif"))), kUpright[orientation - 1])
        << orientation;
  }
}

TEST(PicturePreparation, OrientationIsThatOfEachPage) {
  const ScratchFolder folder;
  write_tiff_pages(folder.path("a.tif"), {lettered_page(3, 2), lettered_page(0, 2),
                                          lettered_page(6, 2), lettered_page(9, 2)});
  EXPECT_EQ(letters(prepared_colours(folder.path("a.tif"), 0)), kUpright[2]);
  EXPECT_EQ(letters(prepared_colours(folder.path("a.tif"), 1)), kUpright[0]);
  EXPECT_EQ(letters(prepared_colours(folder.path("a.tif"), 2)), kUpright[5]);
  EXPECT_EQ(letters(prepared_colours(folder.path("a.tif"), 3)), kUpright[0]) << "no such one";
}

TEST(PicturePreparation, EveryOrientationOfAJpegIsTurnedUpright) {
  // Green falls from top to bottom and blue from left to right in the corners that are asked for.
  const ScratchFolder folder;
  for (int orientation = 1; orientation <= 9; ++orientation) {
    write_jpeg_with_orientation(folder.path("a.jpg"), 240, 160, orientation);
    const Rows rows = prepared_colours(folder.path("a.jpg"));
    const bool turned = orientation >= 5 && orientation <= 8;
    ASSERT_EQ(rows.size(), turned ? 240U : 160U) << orientation;
    // Where the stored top left corner (dark blue, dark green) has gone.
    const bool at_right =
        orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7;
    const bool at_bottom =
        orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8;
    const Row& row = at_bottom ? rows.back() : rows.front();
    const Colour& corner = at_right ? row.back() : row.front();
    EXPECT_LT(corner[1], 40) << orientation;
    EXPECT_LT(corner[2], 40) << orientation;
  }
}

TEST(PicturePreparation, HighByteOf16BitGreyCounts) {
  TiffPage page = grey_page<std::uint16_t>({0x00FF, 0x8001, 0xFFFF});
  EXPECT_EQ(first_row(page), grey_row({0, 0x80, 0xFF}));
  page.photometric = 0;
  EXPECT_EQ(first_row(page), grey_row({0xFF, 0x7F, 0})) << "white is zero";
}

TEST(PicturePreparation, SixteenBitPngBecomesGrey) {
  const ScratchFolder folder;
  FIBITMAP* const grey = FreeImage_AllocateT(FIT_UINT16, 2, 1, 16, 0, 0, 0);
  auto* const pixels = reinterpret_cast<std::uint16_t*>(FreeImage_GetBits(grey));
  pixels[0] = 0x1234;
  pixels[1] = 0xFEDC;
  EXPECT_TRUE(FreeImage_Save(FIF_PNG, grey, folder.path("a.png").c_str(), 0));
  FreeImage_Unload(grey);
  EXPECT_EQ(prepared_colours(folder.path("a.png")), Rows{grey_row({0x12, 0xFE})});
}

TEST(PicturePreparation, FloatsFromZeroToOneAreBlackToWhite) {
  EXPECT_EQ(first_row(grey_page({0.25F, 0.5F, 0.75F, NAN})), grey_row({64, 128, 191, 0}));
}

TEST(PicturePreparation, FloatsBeyondOneAreScaledToTheirRange) {
  const Row scaled = first_row(grey_page({-100.0F, 0.0F, 300.0F, INFINITY}));
  EXPECT_EQ(scaled, grey_row({0, 64, 255, 255}));
  EXPECT_EQ(first_row(grey_page({7.0F, 7.0F, 7.0F, 7.0F})), grey_row({255, 255, 255, 255}));
}

// Saved as TIFF, which keeps floating point colours.
Row first_row_of_floats(FREE_IMAGE_TYPE type, std::initializer_list<float> samples) {
  const ScratchFolder folder;
  FIBITMAP* const picture = FreeImage_AllocateT(type, 1, 1, 0, 0, 0, 0);
  std::copy(samples.begin(), samples.end(), reinterpret_cast<float*>(FreeImage_GetBits(picture)));
  EXPECT_TRUE(FreeImage_Save(FIF_TIFF, picture, folder.path("a.tif").c_str(), TIFF_NONE));
  FreeImage_Unload(picture);
  return prepared_colours(folder.path("a.tif")).at(0);
}

TEST(PicturePreparation, FloatColoursKeepTheirOrder) {
  EXPECT_EQ(first_row_of_floats(FIT_RGBF, {0.0F, 0.5F, 1.0F}), Row({{0, 128, 255}}));
}

TEST(PicturePreparation, TransparentFloatsLieOnWhite) {
  const Colour colour = first_row_of_floats(FIT_RGBAF, {0.0F, 0.5F, 1.0F, 0.5F}).at(0);
  EXPECT_NEAR(colour[0], 127, 2);
  EXPECT_NEAR(colour[1], 191, 2);
  EXPECT_NEAR(colour[2], 255, 2);
}

TEST(PicturePreparation, OtherWholeNumbersAreScaledToTheirRange) {
  EXPECT_EQ(first_row(grey_page<std::int16_t>({-100, 0, 100})), grey_row({0, 127, 255}));
}

TEST(PicturePreparation, CmykTiffHasItsColours) {
  TiffPage page;
  page.width = 6;
  page.samples = 4;
  page.photometric = 5;
  page.pixels = bytes_of<std::uint8_t>({255, 0, 0, 0,   0, 255, 0, 0, 0, 0, 255, 0,  //
                                        0,   0, 0, 255, 0, 0,   0, 0, 0, 0, 0,   128});
  const Row colours = {{0, 255, 255}, {255, 0, 255},   {255, 255, 0},
                       {0, 0, 0},     {255, 255, 255}, {127, 127, 127}};
  EXPECT_EQ(first_row(page), colours);
  page.bits = 16;
  std::string doubled;
  for (const char byte : page.pixels) doubled += std::string(2, byte);
  page.pixels = doubled;
  EXPECT_EQ(first_row(page), colours);
}

TEST(PicturePreparation, TransparentPixelsLieOnWhite) {
  TiffPage page;
  page.width = 3;
  page.samples = 4;
  page.alpha = true;
  page.pixels = bytes_of<std::uint8_t>({9, 9, 9, 0, 10, 20, 30, 255, 0, 0, 0, 128});
  const Row row = first_row(page);
  EXPECT_EQ(row.at(0), Colour({255, 255, 255}));
  EXPECT_EQ(row.at(1), Colour({10, 20, 30}));
  EXPECT_NEAR(row.at(2)[0], 127, 2);
}

TEST(PicturePreparation, Transparent16BitPixelsLieOnWhite) {
  TiffPage page;
  page.width = 2;
  page.bits = 16;
  page.samples = 4;
  page.alpha = true;
  page.pixels = bytes_of<std::uint16_t>({0, 0, 0, 0, 0, 0x8000, 0xFFFF, 0xFFFF});
  EXPECT_EQ(first_row(page), Row({{255, 255, 255}, {0, 0x80, 255}}));
}

TEST(PicturePreparation, TransparentPaletteEntriesLieOnWhite) {
  const ScratchFolder folder;
  FIBITMAP* const picture = FreeImage_Allocate(3, 1, 8, 0, 0, 0);
  FreeImage_GetPalette(picture)[1] = RGBQUAD{0, 0, 200, 0};
  BYTE opacity[] = {0, 255, 128};
  FreeImage_SetTransparencyTable(picture, opacity, 3);
  for (BYTE x = 0; x < 3; ++x) FreeImage_GetBits(picture)[x] = x;
  EXPECT_TRUE(FreeImage_Save(FIF_PNG, picture, folder.path("a.png").c_str(), 0));
  FreeImage_Unload(picture);
  const Row row = prepared_colours(folder.path("a.png")).at(0);
  EXPECT_EQ(row.at(0), Colour({255, 255, 255}));
  EXPECT_EQ(row.at(1), Colour({200, 0, 0}));
  EXPECT_NEAR(row.at(2)[0], 128, 3);
}

TEST(PicturePreparation, FourthByteThatIsZeroEverywhereIsNoTransparency) {
  const ScratchFolder folder;
  FIBITMAP* const picture = FreeImage_Allocate(1, 1, 32, 0, 0, 0);
  RGBQUAD colour = {30, 20, 10, 0};
  FreeImage_SetPixelColor(picture, 0, 0, &colour);
  EXPECT_TRUE(FreeImage_Save(FIF_BMP, picture, folder.path("a.bmp").c_str(), 0));
  FreeImage_Unload(picture);
  EXPECT_EQ(prepared_colours(folder.path("a.bmp")), Rows({{{10, 20, 30}}}));
}

TEST(PicturePreparation, GreyThatDoesNotTellItsSamplesIsOpaque) {
  TiffPage page = grey_page<unsigned char>({0, 200, 0, 255, 30});
  page.names_samples = false;
  EXPECT_EQ(first_row(page), grey_row({0, 200, 0, 255, 30}));
}

TEST(PicturePreparation, TilesOfSmallSamplesAreDecoded) {
  TiffPage page = grey_page<unsigned char>({});
  page.width = 5;
  page.tile = 64;
  page.bits = 4;
  page.pixels = "\x0F\x5A\x30" + std::string(2045, '\0');
  EXPECT_EQ(first_row(page), grey_row({0, 255, 85, 170, 51}));
  page.bits = 2;
  page.pixels = "\x1B\x80" + std::string(1022, '\0');
  EXPECT_EQ(first_row(page), grey_row({0, 85, 170, 255, 170}));
  page.photometric = 0;
  EXPECT_EQ(first_row(page), grey_row({255, 170, 85, 0, 85}));
}

TEST(PicturePreparation, SmallSamplesAreTurned) {
  TiffPage page = grey_page<unsigned char>({});
  page.width = 4;
  page.bits = 2;
  page.pixels = "\x1B";
  EXPECT_EQ(first_row(page), grey_row({0, 85, 170, 255}));
  page.orientation = 2;
  EXPECT_EQ(first_row(page), grey_row({255, 170, 85, 0}));
  page.orientation = 6;
  EXPECT_EQ(first_row(page), grey_row({0}));
}

}  // namespace
