// SPDX-License-Identifier: Apache-2.0
// What is told of pictures that are decoded although part of them is lost.
#include <gtest/gtest.h>

#include <cstring>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"

namespace {

const std::string kDamaged = "part of the picture is missing or damaged (";

struct FreeDib {
  void operator()(FIBITMAP* bitmap) const { FreeImage_Unload(bitmap); }
};
using Dib = std::unique_ptr<FIBITMAP, FreeDib>;

// What is told of the damage of a file's first page.
std::string damage_of(const std::string& path) {
  return cli::DocumentPages(path, {}, "").prepare(0).damage;
}

std::string damage_of_bytes(const std::string& bytes) {
  const ScratchFolder folder;
  write_file(folder.path("a"), bytes);
  return damage_of(folder.path("a"));
}

// A picture with much to encode in every row, in a file.
std::string encoded(FREE_IMAGE_FORMAT format, int flags, int bits = 24) {
  const ScratchFolder folder;
  const Dib colours(make_bitmap(200, 300));
  const Dib picture(bits == 1   ? FreeImage_Dither(colours.get(), FID_FS)
                    : bits == 8 ? FreeImage_ConvertToGreyscale(colours.get())
                                : FreeImage_Clone(colours.get()));
  EXPECT_TRUE(FreeImage_Save(format, picture.get(), folder.path("a").c_str(), flags));
  return read_file(folder.path("a"));
}

std::string half(const std::string& bytes) {
  return bytes.substr(0, bytes.size() / 2);
}

// The number of a field in place, in a file in the order of this machine.
std::uint32_t& tiff_field(std::string& tiff, unsigned tag) {
  std::uint32_t directory = 0;
  std::memcpy(&directory, &tiff[4], 4);
  for (char* field = &tiff[directory + 2];; field += 12) {
    std::uint16_t number = 0;
    std::memcpy(&number, field, 2);
    if (number == tag) return *reinterpret_cast<std::uint32_t*>(field + 8);
  }
}

TEST(PictureDamage, OfJpegCutInItsDataIsTold) {
  for (const int flags : {75, 75 | JPEG_PROGRESSIVE}) {
    const std::string jpeg = encoded(FIF_JPEG, flags);
    EXPECT_EQ(damage_of_bytes(jpeg), "");
    EXPECT_EQ(damage_of_bytes(half(jpeg)), kDamaged + "Premature end of JPEG file)") << flags;
  }
}

TEST(PictureDamage, OfJpegDataThatEndsWithinThePictureIsTold) {
  std::string jpeg = encoded(FIF_JPEG, 75);
  jpeg.replace(jpeg.size() / 2, 2, "\xFF\xD9");
  EXPECT_EQ(damage_of_bytes(jpeg), kDamaged + "Corrupt JPEG data: premature end of data segment)");
}

TEST(PictureDamage, PaddingAndOddMetadataOfJpegAreNone) {
  const std::string jpeg = encoded(FIF_JPEG, 75);
  EXPECT_EQ(damage_of_bytes(jpeg + "behind the end"), "");
  EXPECT_EQ(damage_of_bytes(jpeg.substr(0, 2) + std::string(3, '\0') + jpeg.substr(2)), "");
  EXPECT_EQ(damage_of_bytes(jpeg.substr(0, jpeg.size() - 2) + std::string(9, '\0') +
                            jpeg.substr(jpeg.size() - 2)),
            "");
  const std::string bad_exif(
      "\xFF\xE1\0\x0C"
      "Exif\0\0XX**",
      14);
  EXPECT_EQ(damage_of_bytes(jpeg.substr(0, 2) + bad_exif + jpeg.substr(2)), "");
  const std::string bad_profile("\xFF\xE2\0\x12ICC_PROFILE\0\1\1ab", 20);
  EXPECT_EQ(damage_of_bytes(jpeg.substr(0, 2) + bad_profile + jpeg.substr(2)), "");
}

TEST(PictureDamage, OfJpegIsToldBesidesPadding) {
  const std::string jpeg = encoded(FIF_JPEG, 75);
  EXPECT_NE(damage_of_bytes(jpeg.substr(0, 2) + std::string(3, '\0') + half(jpeg).substr(2)), "");
}

TEST(PictureDamage, OfPlainPixelsCutShortIsTold) {
  const std::string cut = "part of the picture is missing (the file ends too early)";
  for (const FREE_IMAGE_FORMAT format : {FIF_BMP, FIF_PPMRAW}) {
    const std::string whole = encoded(format, 0);
    EXPECT_EQ(damage_of_bytes(whole), "") << format;
    EXPECT_EQ(damage_of_bytes(whole + "behind the end"), "") << format;
    EXPECT_EQ(damage_of_bytes(half(whole)), cut) << format;
    EXPECT_EQ(damage_of_bytes(whole.substr(0, whole.size() - 1)), cut) << format;
  }
  EXPECT_EQ(damage_of_bytes(half(encoded(FIF_PGMRAW, 0, 8))), cut);
  EXPECT_EQ(damage_of_bytes(half(encoded(FIF_PBMRAW, 0, 1))), cut);
}

TEST(PictureDamage, OfTiffStripsBehindTheEndIsTold) {
  const ScratchFolder folder;
  TiffPage page;
  page.width = 40;
  page.height = 40;
  page.pixels = std::string(4800, '\x55');
  write_tiff_pages(folder.path("a.tif"), {page});
  std::string tiff = read_file(folder.path("a.tif"));
  EXPECT_EQ(damage_of_bytes(tiff), "");
  tiff_field(tiff, 273) = 1'000'000;
  EXPECT_TRUE(damage_of_bytes(tiff).starts_with(kDamaged + "Read error")) << damage_of_bytes(tiff);
}

struct Compression {
  const char* name;
  int flags;
  int bits;
};

TEST(PictureDamage, OfCompressedTiffIsTold) {
  for (const auto& [name, flags, bits] : {Compression{"LZW", TIFF_LZW, 24},
                                          {"Deflate", TIFF_ADOBE_DEFLATE, 24},
                                          {"PackBits", TIFF_PACKBITS, 24},
                                          {"JPEG", TIFF_JPEG, 24},
                                          {"fax 3", TIFF_CCITTFAX3, 1},
                                          {"fax 4", TIFF_CCITTFAX4, 1}}) {
    std::string tiff = encoded(FIF_TIFF, flags, bits);
    EXPECT_EQ(damage_of_bytes(tiff), "") << name;
    // The pixels lie in the first half: most of them are gone.
    std::fill(tiff.begin() + 1000, tiff.begin() + static_cast<long>(tiff.size() / 2), '\0');
    EXPECT_TRUE(damage_of_bytes(tiff).starts_with(kDamaged)) << name << damage_of_bytes(tiff);
  }
}

TEST(PictureDamage, UnknownTagsOfTiffAreNone) {
  const ScratchFolder folder;
  TiffPage page;
  page.pixels = "abc";
  page.dots_per_inch = 100;
  write_tiff_pages(folder.path("a.tif"), {page});
  std::string tiff = read_file(folder.path("a.tif"));
  tiff.replace(tiff.find(std::string("\x28\x01\x03\0", 4)), 2, "\x01\xFF");
  EXPECT_EQ(damage_of_bytes(tiff), "");
}

}  // namespace
