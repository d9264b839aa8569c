// SPDX-License-Identifier: Apache-2.0
#include "worker/tiff_tags.h"

#include <gtest/gtest.h>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"

namespace {

TiffPage page_with(unsigned orientation, unsigned dots_per_inch) {
  TiffPage page;
  page.orientation = orientation;
  page.dots_per_inch = dots_per_inch;
  page.pixels = "abc";
  return page;
}

TEST(TiffTags, AreReadOfEachPageInBothByteOrders) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
  for (const TiffLayout layout : {TiffLayout::kLittleEndian, TiffLayout::kBigEndian}) {
    write_tiff_pages(path, {page_with(6, 0), page_with(0, 300), page_with(8, 96)}, layout);
    const auto tags = cli::read_tiff_tags(path);
    ASSERT_EQ(tags.size(), 3U);
    EXPECT_EQ(tags[0].orientation, 6);
    EXPECT_EQ(tags[1].orientation, 1);
    EXPECT_EQ(tags[2].orientation, 8);
    EXPECT_FALSE(tags[0].has_resolution);
    EXPECT_TRUE(tags[1].has_resolution);
    EXPECT_EQ(tags[0].photometric, 2);
  }
}

TEST(TiffTags, AreReadOfBigTiff) {
  const ScratchFolder folder;
  std::string bytes("II\x2B\0\x08\0\0\0\x10\0\0\0\0\0\0\0", 16);
  bytes += std::string("\x04\0\0\0\0\0\0\0", 8);
  bytes += std::string("\0\x01\x04\0\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0", 20);
  bytes += std::string("\x01\x01\x04\0\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0", 20);
  bytes += std::string("\x06\x01\x03\0\x01\0\0\0\0\0\0\0\x05\0\0\0\0\0\0\0", 20);
  bytes += std::string("\x12\x01\x03\0\x01\0\0\0\0\0\0\0\x07\0\0\0\0\0\0\0", 20);
  write_file(folder.path("a.tif"), bytes + std::string(8, '\0'));
  const auto tags = cli::read_tiff_tags(folder.path("a.tif"));
  ASSERT_EQ(tags.size(), 1U);
  EXPECT_EQ(tags[0].photometric, 5);
  EXPECT_EQ(tags[0].orientation, 7);
}

TEST(TiffTags, OfAFileCutAnywhereAreThoseBefore) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
  write_tiff_pages(path, {page_with(6, 300), page_with(3, 96)});
  const std::string bytes = read_file(path);
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    write_file(path, bytes.substr(0, length));
    EXPECT_LE(cli::read_tiff_tags(path).size(), 2U);
  }
  write_file(path, "");
  EXPECT_TRUE(cli::read_tiff_tags(path).empty());
}

TEST(TiffTags, OfDirectoriesInACircleEndWhereItCloses) {
  const std::string hostile = std::string(ZELK_TEST_DATA) + "/hostile/";
  EXPECT_EQ(cli::read_tiff_tags(hostile + "ifd-points-to-itself.tif").size(), 1U);
}

TEST(TiffTags, EndAtADirectoryThatIsNoPicture) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
  write_tiff_pages(path, {page_with(0, 0), page_with(0, 0), page_with(0, 0)});
  std::string bytes = read_file(path);
  const std::string width("\0\1\4\0\1\0\0\0", 8);
  const std::size_t second = bytes.find(width, bytes.find(width) + 1);
  bytes[second] = '\x05';
  write_file(path, bytes);
  EXPECT_EQ(cli::read_tiff_tags(path).size(), 1U);
}

}  // namespace
