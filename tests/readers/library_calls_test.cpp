// SPDX-License-Identifier: Apache-2.0
// What the readers ask of the image library and of PDFium. A program of its own, since it stands
// between the readers and the two.
#include <FreeImage.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "readers/imgreader.h"
#include "readers/pdfiumreader.h"
#include "readers/tiffreader.h"
#include "support/Documents.h"

namespace {

bool format_can_be_read = true;
std::vector<FREE_IMAGE_FORMAT> formats_asked_for;
int conversions = 0;

struct Rendering {
  int x, y, width, height, rotation, flags;
  bool operator==(const Rendering&) const = default;
};
std::vector<Rendering> renderings;

template <typename Function>
Function* library_function(const char* name, Function*) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

BOOL FreeImage_FIFSupportsReading(FREE_IMAGE_FORMAT format) {
  formats_asked_for.push_back(format);
  return format_can_be_read ? TRUE : FALSE;
}

FIBITMAP* FreeImage_ConvertTo24Bits(FIBITMAP* dib) {
  ++conversions;
  return library_function("FreeImage_ConvertTo24Bits", FreeImage_ConvertTo24Bits)(dib);
}

void FPDF_RenderPageBitmap(void* bitmap, void* page, int x, int y, int width, int height,
                           int rotation, int flags) {
  renderings.push_back({x, y, width, height, rotation, flags});
  library_function("FPDF_RenderPageBitmap", FPDF_RenderPageBitmap)(bitmap, page, x, y, width,
                                                                   height, rotation, flags);
}
}

namespace {

class LibraryCalls : public testing::Test {
 protected:
  LibraryCalls() {
    format_can_be_read = true;
    formats_asked_for.clear();
    conversions = 0;
    renderings.clear();
  }

  ScratchFolder folder;
};

TEST_F(LibraryCalls, FormatThatCannotBeReadGivesNoPages) {
  write_image(folder.path("a.png"), 5, 4);
  imgreader reader;
  format_can_be_read = false;
  EXPECT_EQ(reader.load_image(folder.path("a.png").c_str(), 200), 0);
  EXPECT_EQ(formats_asked_for, std::vector<FREE_IMAGE_FORMAT>{FIF_PNG});
  EXPECT_EQ(reader.get_cur_image(0), nullptr);
}

TEST_F(LibraryCalls, EachPageIsConverted) {
  write_image(folder.path("a.png"), 5, 4);
  write_tiff(folder.path("a.tif"), 5, 4, 2);
  imgreader image;
  ASSERT_EQ(image.load_image(folder.path("a.png").c_str(), 200), 1);
  FreeImage_Unload(image.get_cur_image(0));
  EXPECT_EQ(conversions, 1);
  tiffreader tiff;
  ASSERT_EQ(tiff.load_image(folder.path("a.tif").c_str(), 200), 2);
  FreeImage_Unload(tiff.get_cur_image(1));
  tiff.free_image();
  EXPECT_EQ(conversions, 2);
}

TEST_F(LibraryCalls, PdfPagesAreRenderedAsForPrintingAndNothingElse) {
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}});
  auto* const reader = new pdfiumreader;
  ASSERT_EQ(reader->load_image(folder.path("a.pdf").c_str(), 144), 1);
  FreeImage_Unload(reader->get_cur_image(0));
  EXPECT_EQ(renderings, std::vector<Rendering>({{0, 0, 60, 40, 0, 0x800}}));
  reader->free_image();
  delete_reader(reader);
}

}  // namespace
