// SPDX-License-Identifier: Apache-2.0
#include "worker/bmp_header.h"

#include <gtest/gtest.h>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"

namespace {

using Masks = std::array<std::uint32_t, 4>;
using Rows = std::vector<std::vector<Colour>>;

constexpr std::uint32_t kNoCompression = 0;
constexpr std::uint32_t kBitFields = 3;
constexpr Masks kUsualMasks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
constexpr std::uint32_t kNewerHeaders[] = {52, 56, 108, 124};

struct Bmp {
  std::uint32_t header_size = 124;
  std::int32_t width = 2;
  std::int32_t height = 2;  // negative: the top row first
  std::uint16_t bits = 24;
  std::uint32_t compression = kNoCompression;
  Masks masks = {};
  std::string palette = {};
  std::string pixels = {};
};

void write_bmp(const std::string& path, const Bmp& bmp) {
  std::string header =
      bytes_of<std::uint32_t>({bmp.header_size}) + bytes_of<std::int32_t>({bmp.width, bmp.height}) +
      bytes_of<std::uint16_t>({1, bmp.bits}) +
      bytes_of<std::uint32_t>({bmp.compression, 0, 3937, 3937}) +
      bytes_of<std::uint32_t>({static_cast<std::uint32_t>(bmp.palette.size() / 4), 0});
  header += bytes_of<std::uint32_t>({bmp.masks[0], bmp.masks[1], bmp.masks[2], bmp.masks[3]});
  // A header of 40 bytes has its three masks behind it.
  header.resize(bmp.header_size == 40 ? 52 : bmp.header_size, '\0');
  header += bmp.palette;
  const auto start = static_cast<std::uint32_t>(14 + header.size());
  const auto size = static_cast<std::uint32_t>(start + bmp.pixels.size());
  write_file(path, "BM" + bytes_of<std::uint32_t>({size, 0, start}) + header + bmp.pixels);
}

Rows colours(const Bmp& bmp) {
  const ScratchFolder folder;
  write_bmp(folder.path("a.bmp"), bmp);
  return prepared_colours(folder.path("a.bmp"));
}

// Red, green; blue, black: the top row first.
const Rows kPicture = {{{255, 0, 0}, {0, 255, 0}}, {{0, 0, 255}, {0, 0, 0}}};
const std::string kTopRow24("\x00\x00\xFF\x00\xFF\x00\0\0", 8);
const std::string kBottomRow24("\xFF\x00\x00\x00\x00\x00\0\0", 8);

TEST(BmpHeader, PicturesOf24BitsAreReadWithEveryHeader) {
  for (const std::uint32_t size : kNewerHeaders) {
    Bmp bmp;
    bmp.header_size = size;
    bmp.pixels = kBottomRow24 + kTopRow24;
    EXPECT_EQ(colours(bmp), kPicture) << size;
    bmp.height = -2;
    bmp.pixels = kTopRow24 + kBottomRow24;
    EXPECT_EQ(colours(bmp), kPicture) << size << ", the top row first";
  }
}

TEST(BmpHeader, PicturesOf32BitsWithoutAlphaMaskAreOpaque) {
  for (const std::uint32_t size : {40U, 52U, 56U, 108U, 124U}) {
    Bmp bmp;
    bmp.header_size = size;
    bmp.bits = 32;
    bmp.compression = kBitFields;
    bmp.masks = {0xFF0000, 0xFF00, 0xFF, 0};
    bmp.pixels = bytes_of<std::uint32_t>({0x010000FF, 0xFF000000, 0x00FF0000, 0x7000FF00});
    EXPECT_EQ(colours(bmp), kPicture) << size;
  }
}

TEST(BmpHeader, AlphaLiesOnWhite) {
  for (const std::uint32_t size : {56U, 108U, 124U}) {
    Bmp bmp;
    bmp.header_size = size;
    bmp.height = 1;
    bmp.bits = 32;
    bmp.compression = kBitFields;
    bmp.masks = kUsualMasks;
    bmp.pixels = bytes_of<std::uint32_t>({0x00FF0000, 0xFFFF0000});
    EXPECT_EQ(colours(bmp), Rows({{{255, 255, 255}, {255, 0, 0}}})) << size;
  }
}

TEST(BmpHeader, MasksTellWhereTheColoursLie) {
  Bmp bmp;
  bmp.bits = 32;
  bmp.compression = kBitFields;
  bmp.masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
  bmp.pixels = bytes_of<std::uint32_t>({0xFFFF0000, 0xFF000000, 0xFF0000FF, 0xFF00FF00});
  EXPECT_EQ(colours(bmp), kPicture);
  bmp.masks = {0x3FF00000, 0xFFC00, 0x3FF, 0};
  bmp.pixels = bytes_of<std::uint32_t>({0x3FF, 0, 0x3FF00000, 0xFFC00});
  EXPECT_EQ(colours(bmp), kPicture) << "ten bits each";
}

TEST(BmpHeader, PicturesOf16BitsAreReadByTheirMasks) {
  for (const std::uint32_t size : kNewerHeaders) {
    Bmp bmp;
    bmp.header_size = size;
    bmp.bits = 16;
    bmp.compression = kBitFields;
    bmp.masks = {0xF800, 0x7E0, 0x1F, 0};
    bmp.pixels = bytes_of<std::uint16_t>({0x1F, 0, 0xF800, 0x7E0});
    EXPECT_EQ(colours(bmp), kPicture) << size;
  }
}

TEST(BmpHeader, PalettesFollowEveryHeader) {
  const std::string palette = bytes_of<std::uint32_t>({0, 0xFF0000, 0xFF00, 0xFF});
  for (const std::uint32_t size : kNewerHeaders) {
    Bmp bmp;
    bmp.header_size = size;
    bmp.palette = palette;
    bmp.bits = 8;
    bmp.pixels = std::string("\3\0\0\0\1\2\0\0", 8);
    EXPECT_EQ(colours(bmp), kPicture) << size;
    bmp.bits = 4;
    bmp.pixels = std::string("\x30\0\0\0\x12\0\0\0", 8);
    EXPECT_EQ(colours(bmp), kPicture) << size;
    bmp.bits = 1;
    bmp.palette = palette.substr(0, 8);
    bmp.pixels = std::string("\x40\0\0\0\x80\0\0\0", 8);
    EXPECT_EQ(colours(bmp), Rows({{{255, 0, 0}, {0, 0, 0}}, {{0, 0, 0}, {255, 0, 0}}})) << size;
  }
}

TEST(BmpHeader, ResolutionIsKept) {
  const ScratchFolder folder;
  Bmp bmp;
  bmp.pixels = kBottomRow24 + kTopRow24;
  write_bmp(folder.path("a.bmp"), bmp);
  EXPECT_EQ(cli::DocumentPages(folder.path("a.bmp"), {}, "").prepare(0).dots_per_inch, 100);
}

TEST(BmpHeader, OfAFileCutAnywhereDoesNoHarm) {
  const ScratchFolder folder;
  Bmp bmp;
  bmp.bits = 8;
  bmp.palette = bytes_of<std::uint32_t>({0, 0xFF0000, 0xFF00, 0xFF});
  bmp.pixels = std::string("\3\0\0\0\1\2\0\0", 8);
  write_bmp(folder.path("a.bmp"), bmp);
  const std::string whole = read_file(folder.path("a.bmp"));
  for (std::size_t length = 2; length < whole.size(); ++length) {
    write_file(folder.path("a.bmp"), whole.substr(0, length));
    cli::DocumentPages pages(folder.path("a.bmp"), {}, "");
    try {
      EXPECT_NE(pages.prepare(0).damage, "") << length;
    } catch (const cli::UnreadablePage&) {
      continue;
    }
  }
}

}  // namespace
