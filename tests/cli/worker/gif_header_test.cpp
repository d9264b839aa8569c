// SPDX-License-Identifier: Apache-2.0
#include "worker/gif_header.h"

#include <gtest/gtest.h>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"

namespace {

// A screen of 65535 x 65535, a comment, then a picture of `width` x 2 in one colour.
std::string gif_bytes(int width) {
  std::string bytes("GIF89a\xFF\xFF\xFF\xFF\x80\0\0", 13);
  bytes += std::string("\0\0\0\xFF\xFF\xFF", 6);        // two colours
  bytes += std::string("\x21\xFE\x03,,,\x02,,\0", 10);  // a comment of two blocks
  bytes += std::string("\x2C\0\0\0\0", 5);              // a picture at the left top
  bytes += static_cast<char>(width & 0xFF);
  bytes += static_cast<char>(width >> 8);
  return bytes + std::string("\x02\0\0\x02\x02\x84\x51\0\x3B", 9);
}

TEST(GifHeader, SizeIsThatOfTheFirstPicture) {
  const ScratchFolder folder;
  write_file(folder.path("a.gif"), gif_bytes(0x1234));
  const auto size = cli::first_picture_size(folder.path("a.gif"));
  ASSERT_TRUE(size);
  EXPECT_EQ(size->width, 0x1234U);
  EXPECT_EQ(size->height, 2U);
}

TEST(GifHeader, SizeIsWhatFreeImageDecodes) {
  const ScratchFolder folder;
  FIBITMAP* const picture = FreeImage_Allocate(33, 20, 8, 0, 0, 0);
  EXPECT_TRUE(FreeImage_Save(FIF_GIF, picture, folder.path("a.gif").c_str(), 0));
  FreeImage_Unload(picture);
  const auto size = cli::first_picture_size(folder.path("a.gif"));
  ASSERT_TRUE(size);
  EXPECT_EQ(size->width, 33U);
  EXPECT_EQ(size->height, 20U);
  EXPECT_EQ(prepared_colours(folder.path("a.gif")).size(), 20U);
}

TEST(GifHeader, HasNoSizeWhereTheFileEndsBefore) {
  const ScratchFolder folder;
  const std::string bytes = gif_bytes(5);
  const std::size_t picture_end = bytes.size() - 7;
  for (std::size_t length = 0; length < picture_end; ++length) {
    write_file(folder.path("a.gif"), bytes.substr(0, length));
    EXPECT_FALSE(cli::first_picture_size(folder.path("a.gif"))) << length;
  }
  write_file(folder.path("a.gif"), bytes.substr(0, picture_end));
  EXPECT_TRUE(cli::first_picture_size(folder.path("a.gif")));
}

TEST(GifHeader, PictureAboveTheLimitIsNotDecoded) {
  const ScratchFolder folder;
  write_file(folder.path("a.gif"), gif_bytes(0xFFFF));
  cli::PageSettings settings;
  settings.max_pixels = 1000;
  cli::DocumentPages pages(folder.path("a.gif"), settings, "");
  EXPECT_THROW(pages.prepare(0), cli::UnreadablePage);
}

}  // namespace
