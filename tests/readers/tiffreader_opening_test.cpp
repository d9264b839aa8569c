// SPDX-License-Identifier: Apache-2.0
// The file that is opened when a document is loaded is the file that pages come from, and the one
// that is looked at before they are decoded.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <functional>

#include "readers/tiffreader.h"
#include "support/Documents.h"
#include "support/MadeTiff.h"

namespace {

// Runs before each opening by FreeImage; gets its number, counted from 0.
std::function<void(int)> before_opening;
int openings = 0;

}  // namespace

// Stands before FreeImage's own function.
FIMULTIBITMAP* FreeImage_OpenMultiBitmap(FREE_IMAGE_FORMAT format, const char* path,
                                         BOOL create_new, BOOL read_only, BOOL memory_cache,
                                         int flags) {
  static const auto real = reinterpret_cast<decltype(&FreeImage_OpenMultiBitmap)>(
      dlsym(RTLD_NEXT, "FreeImage_OpenMultiBitmap"));
  if (before_opening) before_opening(openings);
  ++openings;
  return real(format, path, create_new, read_only, memory_cache, flags);
}

namespace {

class TiffOpening : public testing::Test {
 protected:
  void SetUp() override { openings = 0; }
  void TearDown() override {
    before_opening = nullptr;
    reader.free_image();
  }
  void replace(const std::vector<MadePage>& pages) const {
    write_file(folder.path("new"), made_tiff(pages));
    std::filesystem::rename(folder.path("new"), path);
  }
  // Sides of the pages that come back; 0 for a missing one.
  std::vector<unsigned> sides(int pages) {
    std::vector<unsigned> result;
    for (int id = 0; id < pages; ++id) {
      FIBITMAP* const page = reader.get_cur_image(id);
      result.push_back(page != nullptr ? FreeImage_GetWidth(page) : 0);
      FreeImage_Unload(page);
    }
    return result;
  }

  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
  tiffreader reader;
};
using Sides = std::vector<unsigned>;

TEST_F(TiffOpening, IsOnceForADocument) {
  write_file(path, made_tiff({{4}, {5}, {6}}));
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 3);
  EXPECT_EQ(sides(3), Sides({4, 5, 6}));
  EXPECT_EQ(openings, 1);
}

TEST_F(TiffOpening, LastsWhenTheFileIsDeleted) {
  write_file(path, made_tiff({{4}, {5}, {6}}));
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 3);
  std::filesystem::remove(path);
  EXPECT_EQ(sides(3), Sides({4, 5, 6}));
}

TEST_F(TiffOpening, LastsWhenTheWorkingDirectoryChanges) {
  write_file(path, made_tiff({{4}, {5}}));
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.path(""));
  const int pages = reader.load_image("a.tif", 200);
  std::filesystem::current_path(before);
  ASSERT_EQ(pages, 2);
  EXPECT_EQ(sides(2), Sides({4, 5}));
}

TEST_F(TiffOpening, LastsWhenAnotherFileTakesThePlace) {
  write_file(path, made_tiff({{4}, {60000}}));
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 2);
  replace({{60000}, {5}});
  EXPECT_EQ(sides(2), Sides({4, 0})) << "what was seen of the new file says nothing of the old one";
}

TEST_F(TiffOpening, FileThatIsReplacedMeanwhileIsLookedAtAgain) {
  write_file(path, made_tiff({{4}, {5}}));
  before_opening = [this](int number) {
    if (number == 0) replace({{60000}, {6}, {7}});
  };
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 3);
  EXPECT_EQ(sides(3), Sides({0, 6, 7}));
}

TEST_F(TiffOpening, FileThatIsReplacedAgainAndAgainIsNotRead) {
  write_file(path, made_tiff({{4}}));
  before_opening = [this](int) { replace({{60000}}); };
  EXPECT_EQ(reader.load_image(path.c_str(), 200), 0);
  EXPECT_EQ(sides(1), Sides({0}));
}

TEST_F(TiffOpening, DocumentsThatAreNeverClosedKeepTheirMissingPages) {
  write_file(path, made_tiff({{60000}, {4}}));
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 2);
  tiffreader other;
  ASSERT_EQ(other.load_image(path.c_str(), 200), 2);
  other.free_image();
  EXPECT_EQ(sides(2), Sides({0, 4}));
}

}  // namespace
