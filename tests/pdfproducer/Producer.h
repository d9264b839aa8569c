// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_PDFPRODUCER_PRODUCER_H
#define ZELK_TESTS_PDFPRODUCER_PRODUCER_H

#include <string>
#include <vector>

#include "pdfproducer/pdf_api.h"

struct FIBITMAP;

// A context of the producer, driven as the binding drives it: the buffer is armed before each call
// and the outcome asked for after it.
class Producer {
 public:
  Producer() : p(api.PDF_new2(nullptr, nullptr, nullptr, nullptr, nullptr)) {}
  ~Producer() { api.PDF_delete(p); }
  Producer(const Producer&) = delete;
  Producer& operator=(const Producer&) = delete;

  // Makes a call that captures references only; false when it raised an error.
  template <typename Call>
  bool runs(const Call& call) {
    if (setjmp(pdf_jbuf(p)->jbuf) == 0) call();
    return pdf_catch(p) == 0;
  }
  // Makes a call; its result, or -1000 when it raised.
  template <typename Call>
  int result(const Call& call) {
    volatile int value = -1000;
    runs([&] { value = call(); });
    return value;
  }

  int number() const { return PDF_get_errnum(p); }
  std::string function() const { return PDF_get_apiname(p); }
  std::string text() const { return PDF_get_errmsg(p); }

  int begin(const std::string& path) {
    return result([&] { return api.PDF_begin_document(p, path.c_str(), 0, ""); });
  }
  bool end() {
    return runs([&] { api.PDF_end_document(p, ""); });
  }
  bool begin_page() {
    return runs([&] { api.PDF_begin_page_ext(p, 0, 0, ""); });
  }
  bool end_page() {
    return runs([&] { api.PDF_end_page_ext(p, ""); });
  }
  int load_font() {
    return result([&] { return api.PDF_load_font(p, "STSong-Light", 0, "GB-EUC-H", ""); });
  }
  bool set_font(double size) {
    return runs([&] { api.PDF_setfont(p, 0, size); });
  }
  // `text` in GBK.
  bool show(const std::string& text, double x, double y) {
    return runs([&] { api.PDF_show_xy2(p, text.c_str(), static_cast<int>(text.size()), x, y); });
  }
  int open_image(const std::string& jpeg) {
    return result([&] {
      return api.PDF_open_image(p, "jpeg", "memory", jpeg.data(), static_cast<long>(jpeg.size()), 1,
                                1, 3, 8, "");
    });
  }
  bool fit_image(int image, double x = 0, double y = 0) {
    return runs([&] { api.PDF_fit_image(p, image, x, y, "adjustpage"); });
  }
  bool close_image(int image) {
    return runs([&] { api.PDF_close_image(p, image); });
  }

  const PDFlib_api& api = *PDF_get_api();
  PDF* const p;
};

// One call of show_xy, in the order in which the writer makes them.
struct Shown {
  std::string utf8;
  double x = 0;
  double y = 0;
  double size = 12;
};

// Adds a page as the writer does: text, then the image over it. False when anything failed.
bool add_page(Producer& producer, const std::vector<Shown>& text, const std::string& jpeg);
// The same as a whole document.
bool write_document(const std::string& path, const std::vector<Shown>& text,
                    const std::string& jpeg);

// A line of text, each character shown by a call of its own where the one before it ends.
std::vector<Shown> line_of(const std::string& utf8, double x, double y, double size);

std::string to_gbk(const std::string& utf8);
std::string to_utf8(char32_t code);
// The characters of UTF-8 text, one string each.
std::vector<std::string> characters_of(const std::string& utf8);

// The bitmap as FreeImage encodes it as JPEG; the bitmap is unloaded.
std::string encoded(FIBITMAP* dib);
// A small JPEG of FreeImage's, 24 bits or grey, whose header gives the density.
std::string make_jpeg(unsigned width, unsigned height, unsigned dots_per_inch = 72,
                      bool grey = false);

#endif  // ZELK_TESTS_PDFPRODUCER_PRODUCER_H
