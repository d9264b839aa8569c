// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_WRITERS_PDFWRITER_H
#define ZELK_WRITERS_PDFWRITER_H

#include "writers/basewriter.h"
#include "writers/pdflib.h"

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

  // Finishes the document.
  void close_document() override;

  // Opens the output file; -1 when the library cannot.
  int creat_pdf_file(const char* filepath);

  PDFlib _pdflib;
  int _m_rt_font;  // set by every add_page before it is read

 private:
  void show_characters(const std::vector<OCR_CHAR>& char_info, int imgHeight, double scale);
  int place_image(FIBITMAP* dib);
};

#endif  // ZELK_WRITERS_PDFWRITER_H
