// SPDX-License-Identifier: Apache-2.0
#include "worker/document_pages.h"

#include <gtest/gtest.h>

#include "cli/worker/Pictures.h"
#include "readers/imgreader.h"
#include "readers/pdfiumreader.h"
#include "readers/tiffreader.h"
#include "support/Documents.h"

namespace {

using cli::DocumentPages;
using cli::PageBitmap;
using cli::PageSettings;
using cli::UnreadableDocument;
using cli::UnreadablePage;

const std::string kData = ZELK_TEST_DATA;

// Why a document is not opened; empty when it is.
std::string refusal(const std::string& path) {
  try {
    DocumentPages(path, {}, "");
    return "";
  } catch (const UnreadableDocument& error) {
    return error.what();
  }
}

// Why a page is not prepared; empty when it is.
std::string page_refusal(const std::string& path, int index = 0,
                         const PageSettings& settings = {}) {
  DocumentPages pages(path, settings, "");
  try {
    pages.prepare(index);
    return "";
  } catch (const UnreadablePage& error) {
    return error.what();
  }
}

// The page that one of the library's readers gives, at the resolution of the command line.
template <class Reader>
PageBitmap page_of_library(const std::string& path, int index) {
  auto* const reader = new Reader;
  reader->load_image(path.c_str(), 200);
  PageBitmap page(reader->get_cur_image(index));
  reader->free_image();
  delete_reader(reader);
  return page;
}

template <class Reader>
bool equals_library(const std::string& path, int index) {
  const PageBitmap library = page_of_library<Reader>(path, index);
  DocumentPages pages(path, {}, "");
  return are_equal(pages.prepare(index).bitmap.get(), library.get());
}

TEST(DocumentPages, PlainPagesAreThoseOfTheLibrary) {
  for (const char* name : {"chinese.png", "zh-landscape-200-palette.png", "zh-mixed-serif-200.jpg",
                           "hostile/truncated-third.jpg"}) {
    EXPECT_TRUE(equals_library<imgreader>(kData + "/" + name, 0)) << name;
  }
  EXPECT_TRUE(equals_library<tiffreader>(kData + "/english.tif", 0));
  EXPECT_TRUE(equals_library<tiffreader>(kData + "/hostile/truncated-40percent.tif", 0));
  for (const int page : {0, 1}) {
    EXPECT_TRUE(equals_library<pdfiumreader>(kData + "/scan.pdf", page)) << page;
  }
}

TEST(DocumentPages, KindsOfPicturesAreKnownByTheirContent) {
  const ScratchFolder folder;
  for (const FREE_IMAGE_FORMAT format : {FIF_BMP, FIF_PNG, FIF_PPM, FIF_PPMRAW, FIF_TIFF}) {
    const std::string path = folder.path("page.pdf");
    write_image(path, 33, 20, 7, format);
    DocumentPages pages(path, {}, "");
    EXPECT_FALSE(pages.is_pdf()) << format;
    EXPECT_EQ(pages.page_count(), 1) << format;
    EXPECT_TRUE(is_made_bitmap(pages.prepare(0).bitmap.get(), 33, 20)) << format;
    EXPECT_FALSE(pages.text(0, 200)) << format;
  }
  for (const FREE_IMAGE_FORMAT format : {FIF_JPEG, FIF_WEBP}) {
    const std::string path = folder.path("page");
    write_image(path, 33, 20, 7, format);
    EXPECT_EQ(prepared_colours(path).size(), 20U) << format;
  }
}

TEST(DocumentPages, PdfIsKnownByItsContent) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.tif"), {PdfPage(), PdfPage()});
  DocumentPages pages(folder.path("a.tif"), {}, "");
  EXPECT_TRUE(pages.is_pdf());
  EXPECT_EQ(pages.page_count(), 2);
}

TEST(DocumentPages, PdfHeaderMayLieAnywhereInTheFirstKilobyte) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  const std::string pdf = read_file(folder.path("a.pdf"));
  write_file(folder.path("late.pdf"), std::string(1019, '\n') + pdf);
  EXPECT_EQ(refusal(folder.path("late.pdf")), "");
  write_file(folder.path("later.pdf"), std::string(1020, '\n') + pdf);
  EXPECT_EQ(refusal(folder.path("later.pdf")),
            "the content is neither a picture of a known kind nor a PDF, it is a text");
}

TEST(DocumentPages, FilesThatAreNoDocumentsAreRefusedWithTheReason) {
  const ScratchFolder folder;
  write_file(folder.path("empty.pdf"), "");
  write_file(folder.path("text.png"), "This is plain text.");
  write_file(folder.path("damaged.pdf"), "%PDF-1.7\nnothing else");
  write_file(folder.path("damaged.tif"), std::string("II*\0\xFF\0\0\0", 8));
  write_pdf(folder.path("none.pdf"), {});
  write_file(folder.path("page.tif"), "<?xml version='1.0'?>\n<SVG/>");
  write_file(folder.path("noise.tif"), "\x01\x02\x03");
  write_file(folder.path("zeros.tif"), std::string(100, '\0'));
  const std::string unknown = "the content is neither a picture of a known kind nor a PDF";
  EXPECT_EQ(refusal(folder.path("")), "is a directory");
  EXPECT_EQ(refusal("/dev/null"), "is not a regular file");
  EXPECT_EQ(refusal(folder.path("missing.png")), "No such file or directory");
  EXPECT_EQ(refusal(folder.path("empty.pdf")), "the file is empty");
  EXPECT_EQ(refusal(folder.path("text.png")), unknown + ", it is a text");
  EXPECT_EQ(refusal(folder.path("page.tif")), unknown + ", it is an SVG drawing");
  EXPECT_EQ(refusal(folder.path("noise.tif")), unknown);
  EXPECT_EQ(refusal(folder.path("zeros.tif")),
            "the file holds nothing but zero bytes, it was not copied to its end");
  EXPECT_EQ(refusal(folder.path("damaged.pdf")),
            "the PDF is damaged: the file is cut off, it does not end in %%EOF");
  EXPECT_EQ(refusal(folder.path("damaged.tif")),
            "the content is not a picture that can be decoded: the file is cut off: its directory "
            "is at byte 255, it has 8 bytes");
  EXPECT_EQ(refusal(folder.path("none.pdf")), "the PDF has no pages");
}

TEST(DocumentPages, PictureKindsThatAreNotReadAreUnknown) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 33, 20, 7, FIF_TARGA);
  ASSERT_EQ(FreeImage_GetFileType(folder.path("a.png").c_str(), 0), FIF_TARGA);
  EXPECT_EQ(refusal(folder.path("a.png")),
            "the content is neither a picture of a known kind nor a PDF");
}

TEST(DocumentPages, PagesThatDoNotExistAreNoPages) {
  DocumentPages pages(kData + "/english.tif", {}, "");
  EXPECT_THROW(pages.prepare(-1), UnreadablePage);
  EXPECT_THROW(pages.prepare(1), UnreadablePage);
  EXPECT_EQ(pages.page_size(1).width, 0.0);
  EXPECT_FALSE(pages.text(1, 200));
}

TEST(DocumentPages, DamagedPictureIsAPageWithAReason) {
  const std::string reason = "the content is not a picture that can be decoded";
  for (const char* name : {"truncated-half.png", "pillow-truncated.png"}) {
    EXPECT_EQ(page_refusal(kData + "/hostile/" + name),
              reason + ": the file is cut off within its chunk IDAT")
        << name;
  }
  EXPECT_EQ(page_refusal(kData + "/hostile/pillow-crash-0e16.tif"), reason);
}

TEST(DocumentPages, DamagedPageLeavesTheOthersOfItsTiff) {
  const ScratchFolder folder;
  TiffPage good;
  good.pixels = "\x01\x02\x03";
  TiffPage bad = good;
  bad.bits = 3;  // which no decoder knows
  write_tiff_pages(folder.path("a.tif"), {good, bad, good});
  DocumentPages pages(folder.path("a.tif"), {}, "");
  ASSERT_EQ(pages.page_count(), 3);
  EXPECT_EQ(page_refusal(folder.path("a.tif"), 1),
            "the content is not a picture that can be decoded");
  EXPECT_EQ(pages.page_size(1).width, 0.0);
  EXPECT_EQ(prepared_colours(folder.path("a.tif"), 2)[0][0], Colour({1, 2, 3}));
}

TEST(DocumentPages, PictureAboveTheLimitIsRefusedFromItsHeader) {
  const std::string hostile = kData + "/hostile/";
  EXPECT_EQ(page_refusal(hostile + "bad-height.bmp"),
            "the picture has 6 x 2147483647 pixels, --max-pixels allows 120000000");
  EXPECT_EQ(page_refusal(hostile + "bomb-30000x30000-1bit.png"),
            "the picture has 30000 x 30000 pixels, --max-pixels allows 120000000");
  EXPECT_EQ(page_refusal(hostile + "declares-100000x100000.tif"),
            "the picture has 100000 x 100000 pixels, --max-pixels allows 120000000");
}

TEST(DocumentPages, PixelLimitIsTheLargestPictureAllowed) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 30, 20);
  PageSettings settings;
  settings.max_pixels = 600;
  EXPECT_EQ(page_refusal(folder.path("a.png"), 0, settings), "");
  settings.max_pixels = 599;
  EXPECT_EQ(page_refusal(folder.path("a.png"), 0, settings),
            "the picture has 30 x 20 pixels, --max-pixels allows 599");
}

TEST(DocumentPages, EveryPageOfATiffIsAPage) {
  const ScratchFolder folder;
  write_tiff(folder.path("a.png"), 20, 10, 3);
  DocumentPages pages(folder.path("a.png"), {}, "");
  ASSERT_EQ(pages.page_count(), 3);
  for (const int index : {2, 0, 1}) {
    EXPECT_TRUE(is_made_bitmap(pages.prepare(index).bitmap.get(), 20, 10,
                               static_cast<unsigned char>(1 + index)));
  }
}

TEST(DocumentPages, ResolutionIsThePagesOwnUnlessOneIsAsked) {
  const ScratchFolder folder;
  TiffPage page;
  page.pixels = "abc";
  std::vector<TiffPage> tiff(3, page);
  tiff[0].dots_per_inch = 150;
  tiff[1].dots_per_inch = 600;
  write_tiff_pages(folder.path("a.tif"), tiff);
  DocumentPages own(folder.path("a.tif"), {}, "");
  EXPECT_EQ(own.prepare(0).dots_per_inch, 150);
  EXPECT_EQ(own.prepare(1).dots_per_inch, 600);
  EXPECT_EQ(own.prepare(2).dots_per_inch, 200) << "FreeImage alone says 300";
  EXPECT_DOUBLE_EQ(own.page_size(1).width, 72.0 / 600);
  PageSettings settings;
  settings.dpi = 96;
  DocumentPages asked(folder.path("a.tif"), settings, "");
  EXPECT_EQ(asked.prepare(0).dots_per_inch, 96);
  EXPECT_DOUBLE_EQ(asked.page_size(1).width, 72.0 / 96);
}

TEST(DocumentPages, ResolutionIsTheLargerOfTheTwoDirections) {
  const ScratchFolder folder;
  FIBITMAP* const picture = make_bitmap(3, 2);
  FreeImage_SetDotsPerMeterX(picture, 5906);
  FreeImage_SetDotsPerMeterY(picture, 3937);
  EXPECT_TRUE(FreeImage_Save(FIF_PNG, picture, folder.path("a.png").c_str(), 0));
  FreeImage_Unload(picture);
  EXPECT_EQ(DocumentPages(folder.path("a.png"), {}, "").prepare(0).dots_per_inch, 150);
}

TEST(DocumentPages, SizeOfATurnedPictureIsUpright) {
  const ScratchFolder folder;
  write_jpeg_with_orientation(folder.path("a.jpg"), 32, 16, 6);
  DocumentPages pages(folder.path("a.jpg"), {}, "");
  EXPECT_DOUBLE_EQ(pages.page_size(0).width, 16 * 72.0 / 200);
  EXPECT_DOUBLE_EQ(pages.page_size(0).height, 32 * 72.0 / 200);
}

TEST(DocumentPages, OrientationThatThereIsNotIsUpright) {
  const ScratchFolder folder;
  write_jpeg_with_orientation(folder.path("a.jpg"), 32, 16, 9);
  EXPECT_DOUBLE_EQ(DocumentPages(folder.path("a.jpg"), {}, "").page_size(0).width, 32 * 72.0 / 200);
  TiffPage page;
  page.width = 2;
  page.orientation = 9;
  page.pixels = "abcdef";
  write_tiff_pages(folder.path("a.tif"), {page});
  EXPECT_DOUBLE_EQ(DocumentPages(folder.path("a.tif"), {}, "").page_size(0).width, 2 * 72.0 / 200);
}

}  // namespace
