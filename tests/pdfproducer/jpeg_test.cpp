// SPDX-License-Identifier: Apache-2.0
// Page images: what is taken, what is read from it, and that it stays as it is.
#include <FreeImage.h>
#include <gtest/gtest.h>

#include <array>

#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "pdfproducer/error.h"
#include "pdfproducer/jpeg_header.h"
#include "support/Documents.h"

namespace {

using zelk::pdf::Error;
using zelk::pdf::JpegHeader;
using zelk::pdf::read_jpeg_header;

std::string word(int value) {
  return {static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
}

std::string segment(int marker, const std::string& body) {
  return word(0xFF00 | marker) + word(static_cast<int>(body.size()) + 2) + body;
}

std::string jfif(int unit, int x, int y) {
  return segment(0xE0, std::string("JFIF\0\1\1", 7) + static_cast<char>(unit) + word(x) + word(y) +
                           std::string(2, '\0'));
}

std::string frame(int marker, int width, int height, int components, int bits = 8) {
  const auto n = static_cast<char>(components);
  return segment(marker, std::string(1, static_cast<char>(bits)) + word(height) + word(width) + n +
                             std::string(static_cast<std::size_t>(3 * components), '\1'));
}

const std::string kStart = word(0xFFD8);
const std::string kScan = segment(0xDA, std::string("\1\1\0\0\x3F\0", 6));
const std::string kAdobe = segment(0xEE, std::string("Adobe\0\x64\0\0\0\0\0", 12));

std::string reason(const std::string& jpeg) {
  try {
    read_jpeg_header(jpeg);
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), zelk::pdf::ErrorNumber::kImage);
    const std::string text = error.what();
    return text.substr(text.find(": ") + 2);
  }
  return "taken";
}

TEST(JpegHeader, GivesSizeAndComponents) {
  for (const int components : {1, 3, 4}) {
    const JpegHeader header =
        read_jpeg_header(kStart + frame(0xC0, 3508, 65535, components) + kScan);
    EXPECT_EQ(header.width, 3508);
    EXPECT_EQ(header.height, 65535);
    EXPECT_EQ(header.components, components);
    EXPECT_FALSE(header.inverted);
  }
}

TEST(JpegHeader, DensityIsPerInchOrPerCentimetreAndElse72) {
  const auto density = [](const std::string& segments) {
    const JpegHeader header = read_jpeg_header(kStart + segments + frame(0xC0, 9, 9, 3) + kScan);
    return std::pair(header.dots_per_inch_x, header.dots_per_inch_y);
  };
  using Density = std::pair<double, double>;
  EXPECT_EQ(density(jfif(1, 300, 200)), Density(300, 200));
  EXPECT_EQ(density(jfif(2, 100, 50)), Density(254, 127));
  EXPECT_EQ(density(jfif(0, 300, 300)), Density(72, 72)) << "a ratio only";
  EXPECT_EQ(density(jfif(3, 300, 300)), Density(72, 72)) << "no such unit";
  EXPECT_EQ(density(jfif(1, 0, 0)), Density(72, 72));
  EXPECT_EQ(density(jfif(1, 300, 0)), Density(72, 72));
  EXPECT_EQ(density(""), Density(72, 72)) << "none given";
  EXPECT_EQ(density(segment(0xE0, "JFIF")), Density(72, 72)) << "cut short";
  EXPECT_EQ(density(segment(0xE0, std::string("JFXX\0\1\1\1\1\1\1\1", 12))), Density(72, 72));
}

TEST(JpegHeader, FillBytesAndOtherSegmentsArePassedOver) {
  const std::string jpeg = kStart + segment(0xE1, "Exif") + "\xFF\xFF" + segment(0xFE, "") +
                           word(0xFF01) + segment(0xC4, "table") + frame(0xC2, 7, 5, 1) + kScan;
  EXPECT_EQ(read_jpeg_header(jpeg).width, 7);
}

TEST(JpegHeader, InkIsInvertedInAdobesFilesOfFourComponents) {
  EXPECT_TRUE(read_jpeg_header(kStart + kAdobe + frame(0xC0, 9, 9, 4) + kScan).inverted);
  EXPECT_FALSE(read_jpeg_header(kStart + kAdobe + frame(0xC0, 9, 9, 3) + kScan).inverted);
}

TEST(JpegHeader, WhatIsNoJpegIsRefused) {
  EXPECT_EQ(reason(""), "there is no data");
  EXPECT_EQ(reason("\xFF"), "it does not begin like one");
  EXPECT_EQ(reason("\x89PNG\r\n\x1A\n"), "it does not begin like one");
  EXPECT_EQ(reason(kStart + "text"), "a marker is missing");
  EXPECT_EQ(reason(kStart + kStart), "a marker is out of place");
  EXPECT_EQ(reason(kStart + word(0xFFD9)), "a marker is out of place");
  EXPECT_EQ(reason(kStart + word(0xFFE0) + word(1)), "a segment has no length");
  EXPECT_EQ(reason(kStart + kScan), "it has no frame");
}

TEST(JpegHeader, WhatAViewerCannotDecodeIsRefused) {
  const auto framed = [](const std::string& body) { return reason(kStart + body + kScan); };
  EXPECT_EQ(framed(frame(0xC1, 9, 9, 3)), "taken") << "extended";
  EXPECT_EQ(framed(frame(0xC2, 9, 9, 3)), "taken") << "progressive";
  EXPECT_EQ(framed(frame(0xC3, 9, 9, 3)), "its way of coding has no place in a PDF");
  EXPECT_EQ(framed(frame(0xC9, 9, 9, 3)), "its way of coding has no place in a PDF");
  EXPECT_EQ(framed(frame(0xC1, 9, 9, 3, 12)), "its samples are not 8 bits wide");
  EXPECT_EQ(framed(frame(0xC0, 0, 9, 3)), "it has no size");
  EXPECT_EQ(framed(frame(0xC0, 9, 0, 3)), "it has no size");
  EXPECT_EQ(framed(frame(0xC0, 9, 9, 2)), "it has other than 1, 3 or 4 components");
  EXPECT_EQ(framed(frame(0xC0, 9, 9, 0)), "it has other than 1, 3 or 4 components");
}

TEST(JpegHeader, HeadersThatEndEarlyAreRefusedAtEveryByte) {
  const std::string headers = kStart + jfif(1, 300, 300) + frame(0xC0, 9, 9, 3) + kScan;
  EXPECT_EQ(reason(headers), "taken");
  for (std::size_t size = 0; size < headers.size(); ++size) {
    EXPECT_NE(reason(headers.substr(0, size)), "taken") << size;
  }
  std::string short_frame = frame(0xC0, 9, 9, 3);
  short_frame[3] = 12;
  EXPECT_EQ(reason(kStart + short_frame.substr(0, 14) + kScan), "its headers end early");
}

class PageImage : public ::testing::Test {
 protected:
  void write(const std::string& jpeg) { ASSERT_TRUE(write_document(path, {}, jpeg)); }
  std::string page_size() const {
    const std::string size = pdfinfo(path, "Page size");
    return size.substr(0, size.find(" pts"));
  }

  ScratchFolder folder;
  const std::string path = folder.path("a.pdf");
};

TEST_F(PageImage, BytesStayAsTheyAre) {
  const std::string jpeg = make_jpeg(333, 222, 150);
  write(jpeg);
  EXPECT_EQ(page_image(path), jpeg);
  EXPECT_EQ(qpdf_complaint(path), "");
}

TEST_F(PageImage, GivesThePageItsSizeInPoints) {
  const std::vector<std::tuple<unsigned, unsigned, unsigned, std::string>> cases = {
      {1653, 2338, 200, "595.08 x 841.68"},
      {2480, 3508, 300, "595.2 x 841.92"},
      {100, 50, 72, "100 x 50"},
      {1000, 997, 599, "120.2 x 119.84"},
      {640, 480, 96, "480 x 360"},
      {3, 70, 1200, "0.18 x 4.2"}};
  for (const auto& [width, height, density, size] : cases) {
    write(make_jpeg(width, height, density));
    EXPECT_EQ(page_size(), size);
  }
}

TEST_F(PageImage, WithoutADensityIsOnePointAPixel) {
  std::string jpeg = make_jpeg(120, 80, 300);
  ASSERT_EQ(jpeg.substr(6, 4), "JFIF");
  jpeg[13] = 0;
  write(jpeg);
  EXPECT_EQ(page_size(), "120 x 80");
}

TEST_F(PageImage, PerCentimetreIsUnderstood) {
  std::string jpeg = make_jpeg(120, 80, 100);
  jpeg[13] = 2;
  write(jpeg);
  EXPECT_EQ(page_size(), "34.0157 x 22.6772");
}

TEST_F(PageImage, InGreyIsPlacedAsGrey) {
  const std::string jpeg = make_jpeg(64, 48, 72, true);
  ASSERT_EQ(read_jpeg_header(jpeg).components, 1);
  write(jpeg);
  EXPECT_NE(run("pdfimages -list '" + path + "'").output.find("gray"), std::string::npos);
  EXPECT_EQ(page_image(path), jpeg);
}

TEST_F(PageImage, OfAdobesInksIsInverted) {
  write(kStart + kAdobe + frame(0xC0, 9, 9, 4) + kScan);
  const std::string file = read_file(path);
  EXPECT_NE(file.find("/ColorSpace /DeviceCMYK /Decode [ 1 0 1 0 1 0 1 0 ]"), std::string::npos);
  write(kStart + frame(0xC0, 9, 9, 4) + kScan);
  EXPECT_EQ(read_file(path).find("/Decode "), std::string::npos);
}

// Stripes of pure cyan, magenta, yellow and black, 16 pixels wide each, as FreeImage writes CMYK:
// inverted, with Adobe's marker, which comes first.
std::string ink_jpeg(bool complement) {
  FIBITMAP* const dib = FreeImage_Allocate(64, 16, 32, 0, 0, 0);
  FreeImage_GetICCProfile(dib)->flags |= FIICC_COLOR_IS_CMYK;
  for (int y = 0; y < 16; ++y) {
    BYTE* const row = FreeImage_GetScanLine(dib, y);
    for (int i = 0; i < 4 * 64; ++i) {
      const bool ink = i % 4 == i / 4 / 16;
      row[i] = ink != complement ? 255 : 0;
    }
  }
  return encoded(dib);
}

using Colour = std::array<int, 3>;  // red, green, blue

std::vector<Colour> shown_stripes(const std::string& path) {
  const std::vector<unsigned char> pixels = pdfium_pixels(path, 64, 16);
  std::vector<Colour> colours;
  for (std::size_t stripe = 0; stripe < 4; ++stripe) {
    const unsigned char* const pixel = &pixels[4 * (8 * 64 + 16 * stripe + 8)];
    colours.push_back({pixel[2], pixel[1], pixel[0]});
  }
  return colours;
}

void expect_pure_inks(const std::vector<Colour>& stripes) {
  constexpr int kDark = 110;  // of the printing inks that viewers have in mind, none is pure
  constexpr int kBright = 130;
  const bool bright[4][3] = {{false, true, true}, {true, false, true}, {true, true, false}, {}};
  for (std::size_t stripe = 0; stripe < 4; ++stripe) {
    for (std::size_t i = 0; i < 3; ++i) {
      if (bright[stripe][i]) {
        EXPECT_GT(stripes[stripe][i], kBright) << stripe << " " << i;
      } else {
        EXPECT_LT(stripes[stripe][i], kDark) << stripe << " " << i;
      }
    }
  }
}

TEST_F(PageImage, OfAdobesInksShowsItsColours) {
  const std::string jpeg = ink_jpeg(false);
  ASSERT_EQ(jpeg.substr(6, 5), "Adobe");
  ASSERT_EQ(read_jpeg_header(jpeg).components, 4);
  write(jpeg);
  EXPECT_EQ(page_image(path), jpeg);
  expect_pure_inks(shown_stripes(path));
}

TEST_F(PageImage, OfInksWithoutAMarkerShowsItsColours) {
  const std::string jpeg = ink_jpeg(true).erase(2, 16);
  ASSERT_EQ(jpeg.find("Adobe"), std::string::npos);
  ASSERT_EQ(read_jpeg_header(jpeg).components, 4);
  write(jpeg);
  EXPECT_EQ(page_image(path), jpeg);
  expect_pure_inks(shown_stripes(path));
}

TEST_F(PageImage, InGreyShowsItsGrey) {
  FIBITMAP* const dib = FreeImage_Allocate(64, 16, 8, 0, 0, 0);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 64; ++x) {
      FreeImage_GetScanLine(dib, y)[x] = static_cast<BYTE>(50 * (x / 16) + 30);
    }
  }
  write(encoded(dib));
  const std::vector<Colour> stripes = shown_stripes(path);
  for (std::size_t stripe = 0; stripe < 4; ++stripe) {
    for (const int value : stripes[stripe]) {
      EXPECT_NEAR(value, 50 * static_cast<int>(stripe) + 30, 2) << stripe;
    }
  }
}

TEST_F(PageImage, IsCopiedWhenOpened) {
  Producer producer;
  const std::string jpeg = make_jpeg(50, 40);
  ASSERT_EQ(producer.begin(path), 0);
  ASSERT_TRUE(producer.begin_page());
  {
    std::string lent = jpeg;
    ASSERT_EQ(producer.open_image(lent), 0);
    lent.assign(lent.size(), 'x');
  }
  ASSERT_TRUE(producer.fit_image(0) && producer.close_image(0));
  ASSERT_TRUE(producer.end_page() && producer.end());
  EXPECT_EQ(page_image(path), jpeg);
}

TEST_F(PageImage, WithoutDataIsMinus1AndTheReasonCanBeAsked) {
  Producer producer;
  ASSERT_EQ(producer.begin(path), 0);
  ASSERT_TRUE(producer.begin_page());
  EXPECT_EQ(producer.open_image(""), -1);
  EXPECT_EQ(producer.number(), 2300);
  EXPECT_EQ(producer.function(), "PDF_open_image");
  EXPECT_EQ(producer.text(), "not a JPEG image that can be placed: there is no data");
  const auto open = [&](const char* data, long length) {
    return producer.result([&] {
      return producer.api.PDF_open_image(producer.p, "jpeg", "memory", data, length, 3, 70000, 3, 8,
                                         "");
    });
  };
  EXPECT_EQ(open(nullptr, 100), -1);
  EXPECT_EQ(open(nullptr, 0), -1);
  EXPECT_EQ(open("x", -5), -1);
  EXPECT_EQ(producer.open_image("no JPEG at all"), -1);
  EXPECT_EQ(producer.open_image(make_jpeg(9, 9)), 0) << "failures take no handle";
}

TEST_F(PageImage, HandlesAreTheLowestThatAreFree) {
  Producer producer;
  const std::string jpeg = make_jpeg(9, 9);
  ASSERT_EQ(producer.begin(path), 0);
  EXPECT_EQ(producer.open_image(jpeg), 0) << "also outside a page";
  EXPECT_EQ(producer.open_image(jpeg), 1);
  EXPECT_TRUE(producer.close_image(0));
  EXPECT_FALSE(producer.close_image(0));
  EXPECT_EQ(producer.open_image(jpeg), 0);
  ASSERT_EQ(producer.begin(path), 0);
  EXPECT_EQ(producer.open_image(jpeg), 0) << "each document counts for itself";
}

TEST_F(PageImage, IsInTheFileOnceHoweverOftenItIsShown) {
  Producer producer;
  const std::string jpeg = make_jpeg(60, 60);
  ASSERT_EQ(producer.begin(path), 0);
  ASSERT_EQ(producer.open_image(jpeg), 0);
  for (int page = 0; page < 3; ++page) {
    ASSERT_TRUE(producer.begin_page() && producer.fit_image(0) && producer.end_page());
  }
  ASSERT_TRUE(producer.close_image(0) && producer.end());
  const std::string file = read_file(path);
  EXPECT_EQ(file.find(jpeg), file.rfind(jpeg));
  EXPECT_EQ(page_image(path, 3), jpeg);
  EXPECT_EQ(pdfinfo(path, "Pages"), "3");
}

TEST_F(PageImage, OffTheCornerMakesThePageReachItsFarCorner) {
  Producer producer;
  ASSERT_EQ(producer.begin(path), 0);
  ASSERT_TRUE(producer.begin_page());
  ASSERT_EQ(producer.open_image(make_jpeg(60, 40)), 0);
  ASSERT_TRUE(producer.fit_image(0, 12.5, 10));
  ASSERT_TRUE(producer.end_page() && producer.end());
  EXPECT_EQ(page_size(), "72.5 x 50");
}

}  // namespace
