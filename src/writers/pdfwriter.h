// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_WRITERS_PDFWRITER_H
#define ZELK_WRITERS_PDFWRITER_H

#include <string>
#include <vector>

#include "writers/basewriter.h"
#include "writers/pdflib.h"

// A page's picture as encode_page_jpeg (writers/page_jpeg.h) made it of a bitmap.
struct PagePicture {
  std::string jpeg;
  int width = 0;                // pixels
  int height = 0;               // pixels
  unsigned dots_per_meter = 0;  // the bitmap's, vertically; 0 when it has none
};

// Writes searchable PDFs: on every page the recognised characters are drawn first, as black text,
// and the page image is placed over them, so that the page looks like the scan and can be searched
// and selected.
//
// Errors of the PDF library pass to the caller as PDFlib::Exception; nothing is caught or logged
// here. The order create_document, add_page for each page, close_document is the caller's to keep;
// one writer may go through it any number of times.
class pdfwriter : public basewriter {
 public:
  pdfwriter();
  // Deletes the library's context. A document that is still open is not finished.
  ~pdfwriter() override = default;

  // Starts the document at a path. 0, or -1 for a null path, or -2 when the output cannot be
  // opened.
  int create_document(const char* double_pdf_filename) override;

  // Adds a page. `dib` is a 24-bit bitmap whose dots per metre give the page its size; it is only
  // read. `char_info` is in pixels of that bitmap. `dpi_flag` has no meaning. Returns 0, or -1 when
  // the font of the text layer has another handle than 0 (no page was begun), or -3 when the image
  // has: the page then stays open, and the library answers later calls as it sees fit.
  int add_page(FIBITMAP* dib, const std::vector<OCR_CHAR>& char_info, bool dpi_flag) override;

  // Adds the page that add_page makes of the picture's bitmap, without a bitmap: the same calls,
  // the same results. The JPEG's bytes are placed unchanged.
  int add_encoded_page(const PagePicture& picture, const std::vector<OCR_CHAR>& char_info);

  // Adds an empty page of a size in points, both sides above 0. A page that add_page or
  // add_encoded_page left open goes.
  void add_blank_page(double width, double height);

  // Finishes the document.
  void close_document() override;

  // Opens the output file; -1 when the library cannot.
  int creat_pdf_file(const char* filepath);

  PDFlib _pdflib;
  int _m_rt_font;  // set by every add_page before it is read

 private:
  int begin_page(const std::vector<OCR_CHAR>& char_info, const PagePicture& picture);
  void show_characters(const std::vector<OCR_CHAR>& char_info, int imgHeight, double scale);
  int place_picture(const PagePicture& picture);
};

#endif  // ZELK_WRITERS_PDFWRITER_H
