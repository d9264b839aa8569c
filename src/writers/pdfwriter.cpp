// SPDX-License-Identifier: Apache-2.0
#include "writers/pdfwriter.h"

#include <FreeImage.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <string>

#include "text/StringFormat.h"
#include "writers/page_jpeg.h"

namespace {

struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};

// Points to the pixel. Resolutions are whole dots per inch, rounded down: 300 read back from whole
// dots per metre are 299, which text and image of older documents agree on. Without a resolution a
// pixel is a point.
double points_per_pixel(unsigned dots_per_meter) {
  const double dots_per_inch = dots_per_meter * 25.4 / 1000.0;
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
  if (gbk == nullptr) throw std::bad_alloc();
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
  PagePicture picture;
  picture.width = static_cast<int>(FreeImage_GetWidth(dib));
  picture.height = static_cast<int>(FreeImage_GetHeight(dib));
  picture.dots_per_meter = FreeImage_GetDotsPerMeterY(dib);
  const int ret = begin_page(char_info, picture);
  if (ret != 0) return ret;
  // A bitmap that cannot become a JPEG leaves no bytes: the library judges that.
  picture.jpeg = encode_page_jpeg(dib);
  return place_picture(picture);
}

int pdfwriter::add_encoded_page(const PagePicture& picture,
                                const std::vector<OCR_CHAR>& char_info) {
  const int ret = begin_page(char_info, picture);
  return ret != 0 ? ret : place_picture(picture);
}

void pdfwriter::add_blank_page(double width, double height) {
  _pdflib.begin_page_ext(width, height, "");
  _pdflib.end_page_ext("");
}

// Starts a page with its text.
int pdfwriter::begin_page(const std::vector<OCR_CHAR>& char_info, const PagePicture& picture) {
  // The first font of a document has handle 0 and keeps it; any other handle is a failure.
  _m_rt_font = _pdflib.load_font("STSong-Light", "GB-EUC-H", "");
  if (_m_rt_font != 0) return -1;
  // A page without a size: it takes that of the image.
  _pdflib.begin_page_ext(0.0, 0.0, "");
  _pdflib.setcolor("fill", "rgb", 0.0, 0.0, 0.0, 0.0);
  show_characters(char_info, picture.height, points_per_pixel(picture.dots_per_meter));
  return 0;
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
int pdfwriter::place_picture(const PagePicture& picture) {
  const char* const bytes = picture.jpeg.empty() ? nullptr : picture.jpeg.data();
  const int nImage =
      _pdflib.open_image("jpeg", "memory", bytes, static_cast<long>(picture.jpeg.size()),
                         picture.width, picture.height, 3, 8, "");
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
