// SPDX-License-Identifier: Apache-2.0
#include "readers/tiffreader.h"

#include <gtest/gtest.h>

#include "support/Documents.h"
#include "support/MadeTiff.h"

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

TEST(tiffreader, PageThatCannotBeDecodedIsMissing) {
  const ScratchFolder folder;
  const std::string path = folder.path("gap.tif");
  write_file(path, made_tiff({{4}, {60000}, {4}}));
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

TEST(tiffreader, GifInAFileOfThatNameIsRead) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
  FIBITMAP* const grey = FreeImage_Allocate(5, 4, 8, 0, 0, 0);
  ASSERT_TRUE(FreeImage_Save(FIF_GIF, grey, path.c_str(), 0));
  FreeImage_Unload(grey);
  tiffreader reader;
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 1);
  FIBITMAP* const page = reader.get_cur_image(0);
  EXPECT_EQ(FreeImage_GetWidth(page), 5U);
  FreeImage_Unload(page);
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
