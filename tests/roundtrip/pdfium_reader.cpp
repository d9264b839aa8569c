// SPDX-License-Identifier: Apache-2.0
// pdfium_reader PDF [FOLDER]
// Prints what PDFium reads in a PDF as JSON: for each page its size in points, its text, and every
// character with its origin. With FOLDER, each page N is also rendered in the size of FOLDER/N.jpg
// and compared with that picture: the largest difference of a colour value and the number of values
// that differ by over 2.
#include <FreeImage.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "readers/pdfium_api.h"

extern "C" {
int FPDFText_CountChars(FPDF_TEXTPAGE text_page);
int FPDFText_GetText(FPDF_TEXTPAGE text_page, int start_index, int count, unsigned short* result);
unsigned int FPDFText_GetUnicode(FPDF_TEXTPAGE text_page, int index);
int FPDFText_GetCharOrigin(FPDF_TEXTPAGE text_page, int index, double* x, double* y);
}

namespace {

void print_text(FPDF_TEXTPAGE text_page, int count) {
  std::vector<unsigned short> units(static_cast<std::size_t>(count) + 1);
  const int written = count > 0 ? FPDFText_GetText(text_page, 0, count, units.data()) : 1;
  std::printf("\"text\": \"");
  for (int i = 0; i + 1 < written; ++i) std::printf("\\u%04x", units[static_cast<std::size_t>(i)]);
  std::printf("\", \"characters\": [");
  for (int i = 0; i < count; ++i) {
    double x = 0;
    double y = 0;
    FPDFText_GetCharOrigin(text_page, i, &x, &y);
    std::printf("%s[%u,%.3f,%.3f]", i == 0 ? "" : ",", FPDFText_GetUnicode(text_page, i), x, y);
  }
  std::printf("]");
}

void print_look(FPDF_PAGE page, const std::string& picture) {
  FIBITMAP* const loaded = FreeImage_Load(FIF_JPEG, picture.c_str(), JPEG_ACCURATE);
  if (loaded == nullptr) return;
  FIBITMAP* const dib = FreeImage_ConvertTo24Bits(loaded);
  const int width = static_cast<int>(FreeImage_GetWidth(dib));
  const int height = static_cast<int>(FreeImage_GetHeight(dib));
  FPDF_BITMAP const bitmap = FPDFBitmap_Create(width, height, 1);
  FPDFBitmap_FillRect(bitmap, 0, 0, width, height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap, page, 0, 0, width, height, 0, 0);
  const auto* const buffer = static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
  const int stride = FPDFBitmap_GetStride(bitmap);
  int largest = 0;
  long over_two = 0;
  for (int y = 0; y < height; ++y) {
    const unsigned char* const shown = buffer + static_cast<std::ptrdiff_t>(y) * stride;
    const BYTE* const scan = FreeImage_GetScanLine(dib, height - 1 - y);
    for (int x = 0; x < width; ++x) {
      for (int channel = 0; channel < 3; ++channel) {
        const int difference = std::abs(shown[4 * x + channel] - scan[3 * x + channel]);
        largest = std::max(largest, difference);
        if (difference > 2) ++over_two;
      }
    }
  }
  std::printf(", \"largest_difference\": %d, \"differing_values\": %ld", largest, over_two);
  FPDFBitmap_Destroy(bitmap);
  FreeImage_Unload(dib);
  FreeImage_Unload(loaded);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 64;
  FPDF_InitLibrary();
  FPDF_DOCUMENT const document = FPDF_LoadDocument(argv[1], "");
  if (document == nullptr) return 2;
  std::printf("[");
  for (int i = 0; i < FPDF_GetPageCount(document); ++i) {
    FPDF_PAGE const page = FPDF_LoadPage(document, i);
    FPDF_TEXTPAGE const text_page = FPDFText_LoadPage(page);
    std::printf("%s{\"width\": %.4f, \"height\": %.4f, ", i == 0 ? "" : ",\n",
                FPDF_GetPageWidth(page), FPDF_GetPageHeight(page));
    print_text(text_page, FPDFText_CountChars(text_page));
    if (argc > 2) print_look(page, std::string(argv[2]) + "/" + std::to_string(i) + ".jpg");
    std::printf("}");
    FPDFText_ClosePage(text_page);
    FPDF_ClosePage(page);
  }
  std::printf("]\n");
  FPDF_CloseDocument(document);
  FPDF_DestroyLibrary();
  return 0;
}
