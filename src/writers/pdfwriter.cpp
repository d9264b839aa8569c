// SPDX-License-Identifier: Apache-2.0
#include "writers/pdfwriter.h"

#include <FreeImage.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>

#include "text/StringFormat.h"

namespace {

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
  void operator()(FIMEMORY* stream) const { FreeImage_CloseMemory(stream); }
};

// Points to the pixel. Resolutions are whole dots per inch, rounded down: 300 read back from whole
// dots per metre are 299, which text and image of older documents agree on. Without a resolution a
// pixel is a point.
double points_per_pixel(FIBITMAP* dib) {
  const double dots_per_inch = FreeImage_GetDotsPerMeterY(dib) * 25.4 / 1000.0;
  const int imageDpi = static_cast<int>(dots_per_inch);
  return imageDpi > 0 ? 72.0 / imageDpi : 1.0;
}

// Engines may report any edges: differences beyond 64 bits saturate.
double difference(std::int64_t minuend, std::int64_t subtrahend) {
  std::int64_t result = 0;
  if (__builtin_sub_overflow(minuend, subtrahend, &result)) {
    result = minuend < 0 ? std::numeric_limits<std::int64_t>::min()
                         : std::numeric_limits<std::int64_t>::max();
  }
  return static_cast<double>(result);
}

double font_size(const OCR_CHAR& character, double scale) {
  const double ocr_size = difference(character.bottom, character.top) * scale;
  if (ocr_size < 0) return -ocr_size;
  return ocr_size == 0.0 ? 1.0 : ocr_size;
}

double baseline(const OCR_CHAR& character, int imgHeight, double scale) {
  const double ocr_heiget = difference(imgHeight, character.bottom) * scale;
  if (ocr_heiget < 0) return 0.0;
  // The bound is the height in pixels, a number that heights in points pass only below 72 dots per
  // inch or above the page.
  return std::min(static_cast<double>(imgHeight), ocr_heiget);
}

// The text layer's bytes for one UTF-16 code unit; empty for what GBK cannot hold.
std::string gbk_text(std::uint16_t code) {
  wchar_t szWord[100] = {};
  szWord[0] = code;
  char utf8[255] = {};
  qv::StringFormat::wchartoutf8(utf8, szWord, sizeof utf8);
  const std::unique_ptr<char, FreeMemory> gbk(UTF8toANSI(utf8));
  return gbk.get();
}

}  // namespace

// cppcheck-suppress uninitMemberVar ; add_page sets the font
pdfwriter::pdfwriter() : _pdflib(nullptr, nullptr, nullptr, nullptr) {}

int pdfwriter::create_document(const char* double_pdf_filename) {
  if (double_pdf_filename == nullptr) return -1;
  return creat_pdf_file(double_pdf_filename) != 0 ? -2 : 0;
}

int pdfwriter::creat_pdf_file(const char* filepath) {
  _pdflib.set_parameter("hypertextencoding", "host");
  const int ret = _pdflib.begin_document(filepath, "");
  return ret == -1 ? -1 : 0;
}

int pdfwriter::add_page(FIBITMAP* dib, const std::vector<OCR_CHAR>& char_info, bool) {
  const int imgHeight = static_cast<int>(FreeImage_GetHeight(dib));
  const double scale = points_per_pixel(dib);
  // The first font of a document has handle 0 and keeps it; any other handle is a failure.
  _m_rt_font = _pdflib.load_font("STSong-Light", "GB-EUC-H", "");
  if (_m_rt_font != 0) return -1;
  // A page without a size: it takes that of the image.
  _pdflib.begin_page_ext(0.0, 0.0, "");
  _pdflib.setcolor("fill", "rgb", 0.0, 0.0, 0.0, 0.0);
  show_characters(char_info, imgHeight, scale);
  return place_image(dib);
}

void pdfwriter::show_characters(const std::vector<OCR_CHAR>& char_info, int imgHeight,
                                double scale) {
  for (const OCR_CHAR& character : char_info) {
    const std::string gbk = gbk_text(character.code);
    _pdflib.setfont(_m_rt_font, font_size(character, scale));
    const double x = static_cast<double>(character.left) * scale;
    _pdflib.show_xy(gbk, x, baseline(character, imgHeight, scale));
  }
}

// Covers the text with the page's picture and ends the page.
int pdfwriter::place_image(FIBITMAP* dib) {
  std::unique_ptr<FIMEMORY, FreeMemory> hmem(FreeImage_OpenMemory(nullptr, 0));
  // A bitmap that cannot become a JPEG leaves the stream empty: the library judges that.
  FreeImage_SaveToMemory(FIF_JPEG, dib, hmem.get(), 0);
  BYTE* mem_buffer = nullptr;
  DWORD size_in_bytes = 0;
  FreeImage_AcquireMemory(hmem.get(), &mem_buffer, &size_in_bytes);
  const int dib_width = static_cast<int>(FreeImage_GetWidth(dib));
  const int dib_height = static_cast<int>(FreeImage_GetHeight(dib));
  const int nImage = _pdflib.open_image("jpeg", "memory", reinterpret_cast<const char*>(mem_buffer),
                                        size_in_bytes, dib_width, dib_height, 3, 8, "");
  hmem.reset();
  // The only open image of a document has handle 0.
  if (nImage != 0) return -3;
  _pdflib.fit_image(0, 0.0, 0.0, "adjustpage");
  _pdflib.close_image(0);
  _pdflib.end_page_ext("");
  return 0;
}

void pdfwriter::close_document() {
  _pdflib.end_document("");
}
