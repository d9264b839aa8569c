// SPDX-License-Identifier: Apache-2.0
#include "readers/tiff_directories.h"

#include <gtest/gtest.h>

#include "support/Documents.h"
#include "support/MadeTiff.h"

namespace {

using Pages = std::vector<bool>;

class TiffDirectoriesOf : public testing::Test {
 protected:
  Pages decodable(const std::vector<MadePage>& pages) const {
    write_file(path, made_tiff(pages));
    return TiffDirectories(path).decodable_pages();
  }
  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
};

TEST_F(TiffDirectoriesOf, PicturesUpToTheLimitMayBeDecoded) {
  EXPECT_EQ(decodable({{4}, {46340}, {46341}, {5}}), Pages({true, true, false, true}));
}

TEST_F(TiffDirectoriesOf, ThumbnailsCountAsWell) {
  EXPECT_EQ(decodable({{4, {4}}, {4, {60000}}, {4, {4, 4, 60000}}, {4, {4, 4}}}),
            Pages({true, false, false, true}));
}

TEST_F(TiffDirectoriesOf, ThumbnailsOfThumbnailsComeToAnEnd) {
  EXPECT_EQ(decodable({{4, std::vector<std::uint32_t>(1000, 4)}, {4}}), Pages({false, true}));
}

TEST_F(TiffDirectoriesOf, FilesThatAreNoTiffHaveNone) {
  for (const char* bytes : {"", "This is plain text.", "II*"}) {
    write_file(path, bytes);
    EXPECT_EQ(TiffDirectories(path).decodable_pages(), Pages()) << bytes;
  }
  EXPECT_EQ(TiffDirectories(folder.path("missing.tif")).decodable_pages(), Pages());
}

TEST_F(TiffDirectoriesOf, ReadsTheFileThatWasOpened) {
  write_file(path, made_tiff({{4}, {4}}));
  const TiffDirectories opened(path);
  EXPECT_TRUE(opened.is_file_at(path));
  write_file(folder.path("b.tif"), made_tiff({{60000}}));
  std::filesystem::rename(folder.path("b.tif"), path);
  EXPECT_FALSE(opened.is_file_at(path));
  EXPECT_EQ(opened.decodable_pages(), Pages({true, true}));
}

}  // namespace
