// SPDX-License-Identifier: Apache-2.0
#include "readers/tiffreader.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "support/Documents.h"

namespace {

TEST(tiffreader, PagesAreIndependentBitmapsThatSurviveTheFile) {
  const ScratchFolder folder;
  const std::string path = folder.path("three.tif");
  write_tiff(path, 20, 10, 3);
  tiffreader reader;
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 3);
  EXPECT_EQ(reader._page_num, 3);
  EXPECT_EQ(reader._image_document, path);
  FIBITMAP* pages[3];
  for (int id = 0; id < 3; ++id) pages[id] = reader.get_cur_image(id);
  EXPECT_EQ(reader.get_cur_image(3), nullptr);
  EXPECT_EQ(reader.get_cur_image(-1), nullptr);
  reader.free_image();
  EXPECT_EQ(reader._tiff_handle, nullptr);
  EXPECT_EQ(reader._page_num, 3) << "free_image keeps the page count";
  for (unsigned char id = 0; id < 3; ++id) {
    EXPECT_TRUE(is_made_bitmap(pages[id], 20, 10, static_cast<unsigned char>(1 + id)));
    FreeImage_Unload(pages[id]);
  }
}

TEST(tiffreader, EachCallMakesANewBitmap) {
  const ScratchFolder folder;
  write_tiff(folder.path("one.tiff"), 4, 4, 1);
  tiffreader reader;
  ASSERT_EQ(reader.load_image(folder.path("one.tiff").c_str(), 200), 1);
  FIBITMAP* const first = reader.get_cur_image(0);
  FIBITMAP* const second = reader.get_cur_image(0);
  EXPECT_NE(first, second);
  FreeImage_Unload(first);
  EXPECT_TRUE(is_made_bitmap(second, 4, 4, 1));
  FreeImage_Unload(second);
  reader.free_image();
}

TEST(tiffreader, UnreadableFilesGiveNoPages) {
  const ScratchFolder folder;
  write_file(folder.path("text.tif"), "This is plain text.");
  write_file(folder.path("empty.tif"), "");
  for (const char* name : {"text.tif", "empty.tif", "missing.tif"}) {
    tiffreader reader;
    EXPECT_EQ(reader.load_image(folder.path(name).c_str(), 200), 0) << name;
    EXPECT_EQ(reader._page_num, 0);
    EXPECT_EQ(reader._image_document, folder.path(name));
    EXPECT_EQ(reader.get_cur_image(0), nullptr);
    reader.free_image();
  }
}

std::string little_endian(std::uint32_t value, int bytes) {
  std::string text;
  for (int shift = 0; shift < 8 * bytes; shift += 8)
    text += static_cast<char>(value >> shift & 0xFF);
  return text;
}

// The directory of an uncompressed grey page of 8 bits a pixel whose one strip lies at `strip`.
std::string directory(std::uint32_t side, std::uint32_t strip, std::uint32_t next) {
  const std::uint32_t entries[][2] = {{256, side}, {257, side}, {258, 8},
                                      {259, 1},    {262, 1},    {273, strip},
                                      {277, 1},    {278, side}, {279, side * side}};
  std::string text = little_endian(9, 2);
  for (const auto& [tag, value] : entries) {
    text +=
        little_endian(tag, 2) + little_endian(4, 2) + little_endian(1, 4) + little_endian(value, 4);
  }
  return text + little_endian(next, 4);
}

TEST(tiffreader, PageThatCannotBeDecodedIsMissing) {
  constexpr std::uint32_t kDirectory = 2 + 9 * 12 + 4;
  const std::uint32_t strip = 8 + 3 * kDirectory;
  const ScratchFolder folder;
  const std::string path = folder.path("gap.tif");
  write_file(path, "II*" + std::string(1, '\0') + little_endian(8, 4) +
                       directory(4, strip, 8 + kDirectory) +
                       directory(60000, 0xFFFFFF00U, 8 + 2 * kDirectory) + directory(4, strip, 0) +
                       std::string(16, '\x80'));
  tiffreader reader;
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 3);
  FIBITMAP* const first = reader.get_cur_image(0);
  EXPECT_EQ(FreeImage_GetWidth(first), 4U);
  EXPECT_EQ(reader.get_cur_image(1), nullptr);
  FIBITMAP* const third = reader.get_cur_image(2);
  EXPECT_EQ(FreeImage_GetWidth(third), 4U);
  FreeImage_Unload(first);
  FreeImage_Unload(third);
  reader.free_image();
}

TEST(tiffreader, FreeingTwiceIsHarmless) {
  const ScratchFolder folder;
  write_tiff(folder.path("one.tif"), 4, 4, 1);
  tiffreader reader;
  ASSERT_EQ(reader.load_image(folder.path("one.tif").c_str(), 200), 1);
  reader.free_image();
  reader.free_image();
}

}  // namespace
