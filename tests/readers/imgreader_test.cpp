// SPDX-License-Identifier: Apache-2.0
#include "readers/imgreader.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "support/Documents.h"
#include "support/HeapGrowth.h"
#include "support/MadeTiff.h"

namespace {

TEST(imgreader, ReadsASingleImageAs24Bits) {
  const ScratchFolder folder;
  for (const char* name : {"a.png", "a.bmp", "a.tif", "a.ppm"}) {
    write_image(folder.path(name), 33, 20);
    imgreader reader;
    EXPECT_EQ(reader.load_image(folder.path(name).c_str(), 200), 1) << name;
    EXPECT_EQ(reader._page_num, 1);
    EXPECT_EQ(reader._image_document, "");
    FIBITMAP* const page = reader.get_cur_image(0);
    EXPECT_TRUE(is_made_bitmap(page, 33, 20)) << name;
    FreeImage_Unload(page);
  }
}

TEST(imgreader, Converts8BitPicturesTo24Bits) {
  const ScratchFolder folder;
  FIBITMAP* const grey = FreeImage_Allocate(5, 4, 8, 0, 0, 0);
  FreeImage_Save(FIF_PNG, grey, folder.path("grey.png").c_str(), 0);
  FreeImage_Unload(grey);
  imgreader reader;
  ASSERT_EQ(reader.load_image(folder.path("grey.png").c_str(), 200), 1);
  FIBITMAP* const page = reader.get_cur_image(0);
  EXPECT_EQ(FreeImage_GetBPP(page), 24U);
  FreeImage_Unload(page);
}

TEST(imgreader, HandsOutTheVerySameBitmapEachTime) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 3, 2);
  imgreader reader;
  ASSERT_EQ(reader.load_image(folder.path("a.png").c_str(), 200), 1);
  FIBITMAP* const page = reader.get_cur_image(0);
  EXPECT_EQ(reader.get_cur_image(0), page);
  EXPECT_EQ(reader.get_cur_image(1), nullptr);
  EXPECT_EQ(reader.get_cur_image(-1), nullptr);
  reader.free_image();
  EXPECT_TRUE(is_made_bitmap(page, 3, 2)) << "free_image leaves the bitmap to the caller";
  FreeImage_Unload(page);
}

TEST(imgreader, ForgottenBitmapIsAMissingPage) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 3, 2);
  imgreader reader;
  ASSERT_EQ(reader.load_image(folder.path("a.png").c_str(), 200), 1);
  FreeImage_Unload(reader.get_cur_image(0));
  reader.forget_image();
  EXPECT_EQ(reader.get_cur_image(0), nullptr);
}

TEST(imgreader, TakesTheFormatFromTheContentBeforeTheName) {
  const ScratchFolder folder;
  write_image(folder.path("png.bmp"), 3, 2, 7, FIF_PNG);
  imgreader reader;
  ASSERT_EQ(reader.load_image(folder.path("png.bmp").c_str(), 200), 1);
  FreeImage_Unload(reader.get_cur_image(0));
}

TEST(imgreader, TriesTheFormatOfTheNameWhenTheContentSaysNothing) {
  // A WBMP file begins with nothing that could be told from other data.
  const ScratchFolder folder;
  const std::string path = folder.path("a.wbmp");
  write_file(path, std::string("\x00\x00\x08\x02\xAA\x55", 6));
  ASSERT_EQ(FreeImage_GetFileType(path.c_str(), 0), FIF_UNKNOWN) << "the test needs such a format";
  imgreader reader;
  ASSERT_EQ(reader.load_image(path.c_str(), 200), 1);
  FIBITMAP* const page = reader.get_cur_image(0);
  EXPECT_EQ(FreeImage_GetWidth(page), 8U);
  EXPECT_EQ(FreeImage_GetHeight(page), 2U);
  FreeImage_Unload(page);
}

TEST(imgreader, FileThatCannotBeReadLeavesNoPageOfTheOneBefore) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 3, 2);
  imgreader reader;
  ASSERT_EQ(reader.load_image(folder.path("a.png").c_str(), 200), 1);
  FreeImage_Unload(reader.get_cur_image(0));
  EXPECT_EQ(reader.load_image(folder.path("missing.png").c_str(), 200), 0);
  EXPECT_EQ(reader._page_num, 0);
  EXPECT_EQ(reader.get_cur_image(0), nullptr);
}

TEST(imgreader, KeepsNothingButThePage) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.png");
  write_image(path, 64, 64);
  const auto read = [&path] {
    imgreader reader;
    EXPECT_EQ(reader.load_image(path.c_str(), 200), 1);
    FreeImage_Unload(reader.get_cur_image(0));
  };
  EXPECT_LT(heap_growth(10, read), 64 * 64 * 3) << "less than one picture";
}

TEST(imgreader, TruncatedHeaderIsTriedAndRefused) {
  const ScratchFolder folder;
  write_file(folder.path("a.png"), "\x89PN");
  imgreader reader;
  EXPECT_EQ(reader.load_image(folder.path("a.png").c_str(), 200), 0);
  EXPECT_EQ(reader._page_num, 0);
}

TEST(imgreader, UnreadableFilesGiveNoPages) {
  const ScratchFolder folder;
  write_file(folder.path("text.jpg"), "This is plain text.");
  write_file(folder.path("empty.png"), "");
  write_file(folder.path("document.pdf"), "%PDF-1.4\n");
  write_file(folder.path("unknown"), "nothing that a decoder knows");
  for (const char* name : {"text.jpg", "empty.png", "document.pdf", "unknown", "missing.png"}) {
    imgreader reader;
    EXPECT_EQ(reader.load_image(folder.path(name).c_str(), 200), 0) << name;
    EXPECT_EQ(reader._page_num, 0);
    EXPECT_EQ(reader.get_cur_image(0), nullptr);
  }
}

// A bitmap file header that declares a picture and holds no pixel.
std::string bmp_header(std::uint32_t width, std::uint32_t height) {
  std::string header("BM\x80\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0", 18);
  for (const std::uint32_t value : {width, height}) {
    for (int shift = 0; shift < 32; shift += 8) header += static_cast<char>(value >> shift & 0xFF);
  }
  header += std::string("\x01\0\x18\0", 4);
  return header + std::string(24 + 74, '\0');
}

TEST(imgreader, HeaderThatDeclaresMorePixelsThanAnyPageIsRefused) {
  const ScratchFolder folder;
  write_file(folder.path("high.bmp"), bmp_header(6, 0x7FFFFFFF));
  imgreader reader;
  EXPECT_EQ(reader.load_image(folder.path("high.bmp").c_str(), 200), 0);
}

TEST(imgreader, FailedConversionIsOnePageThatIsMissing) {
  const ScratchFolder folder;
  FIBITMAP* const complex = FreeImage_AllocateT(FIT_COMPLEX, 3, 2, 0, 0, 0, 0);
  // Only a file format of complex numbers reads back as such; TIFF keeps them.
  const bool saved = FreeImage_Save(FIF_TIFF, complex, folder.path("complex.tif").c_str(), 0);
  FreeImage_Unload(complex);
  ASSERT_TRUE(saved);
  imgreader reader;
  EXPECT_EQ(reader.load_image(folder.path("complex.tif").c_str(), 200), 1);
  EXPECT_EQ(reader.get_cur_image(0), nullptr);
}

TEST(imgreader, ThumbnailTooLargeToBeDecodedIsAFileThatCannotBeRead) {
  const ScratchFolder folder;
  write_file(folder.path("good.tif"), made_tiff({{4, {3}}}));
  write_file(folder.path("bad.tif"), made_tiff({{4, {60000}}}));
  imgreader good;
  EXPECT_EQ(good.load_image(folder.path("good.tif").c_str(), 200), 1);
  FreeImage_Unload(good.get_cur_image(0));
  imgreader bad;
  EXPECT_EQ(bad.load_image(folder.path("bad.tif").c_str(), 200), 0);
}

}  // namespace
