// SPDX-License-Identifier: Apache-2.0
#include "readers/pdfiumreader.h"

#include <FreeImage.h>

#include <climits>
#include <cstddef>

#include "image/pixel_rows.h"
#include "readers/pdf_handles.h"

namespace {

constexpr double kPointsPerInch = 72.0;
constexpr unsigned long kWhite = 0xFFFFFFFF;

// Truncates a size in pixels. 0 for one that no bitmap can have.
int whole_pixels(double size) {
  return size >= 1.0 && size <= INT_MAX ? static_cast<int>(size) : 0;
}

pdf::Bitmap render(FPDF_PAGE page, int width, int height) {
  pdf::Bitmap bitmap(FPDFBitmap_Create(width, height, 1));
  if (bitmap == nullptr) return nullptr;
  FPDFBitmap_FillRect(bitmap.get(), 0, 0, width, height, kWhite);
  FPDF_RenderPageBitmap(bitmap.get(), page, 0, 0, width, height, 0, FPDF_PRINTING);
  return bitmap;
}

FIBITMAP* copy_without_alpha(FPDF_BITMAP bitmap, int width, int height) {
  const auto* const buffer = static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
  const int line_bytes = FPDFBitmap_GetStride(bitmap);
  FIBITMAP* const dib = FreeImage_AllocateT(FIT_BITMAP, width, height, 24, 0, 0, 0);
  if (dib == nullptr) return nullptr;
  zelk::copy_flipped_without_alpha(FreeImage_GetBits(dib), FreeImage_GetPitch(dib), buffer,
                                   static_cast<std::size_t>(line_bytes), FreeImage_GetWidth(dib),
                                   FreeImage_GetHeight(dib));
  return dib;
}

}  // namespace

// cppcheck-suppress uninitMemberVar ; load_image sets the resolution
pdfiumreader::pdfiumreader() {
  FPDF_InitLibrary();
}

pdfiumreader::~pdfiumreader() {
  FPDF_DestroyLibrary();
  _pdf_doc = nullptr;
}

int pdfiumreader::load_image(const char* pdf_filename, int resolution) {
  _pdf_doc = FPDF_LoadDocument(pdf_filename, "");
  _pdf_resolution = resolution;
  if (_pdf_doc == nullptr) return 0;
  // Asked for and ignored: no permission keeps a page from being rendered.
  static_cast<void>(FPDF_GetDocPermissions(_pdf_doc));
  _page_num = FPDF_GetPageCount(_pdf_doc);
  return _page_num;
}

FIBITMAP* pdfiumreader::get_cur_image(int id) {
  if (id < 0 || id >= _page_num) return nullptr;
  const pdf::Page page(FPDF_LoadPage(_pdf_doc, id));
  if (page == nullptr) return nullptr;
  const double width = FPDF_GetPageWidth(page.get());
  const double height = FPDF_GetPageHeight(page.get());
  const pdf::TextPage text_page(FPDFText_LoadPage(page.get()));
  const double resolution = _pdf_resolution;
  const int image_width = whole_pixels(width * resolution / kPointsPerInch);
  const int image_height = whole_pixels(resolution * height / kPointsPerInch);
  if (image_width == 0 || image_height == 0) return nullptr;
  const pdf::Bitmap bitmap = render(page.get(), image_width, image_height);
  if (bitmap == nullptr) return nullptr;
  return copy_without_alpha(bitmap.get(), image_width, image_height);
}

void pdfiumreader::free_image() {
  if (_pdf_doc != nullptr) FPDF_CloseDocument(_pdf_doc);
  _pdf_doc = nullptr;
}
