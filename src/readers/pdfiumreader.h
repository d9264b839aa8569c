// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PDFIUMREADER_H
#define ZELK_READERS_PDFIUMREADER_H

#include "readers/basereader.h"

struct fpdf_document_t__;

// A PDF document; each page is rendered on white when it is asked for, without its annotations.
class pdfiumreader : public basereader {
 public:
  // Initialises PDFium, every time: doing it again is harmless.
  pdfiumreader();
  // Shuts PDFium down for the whole process, so it must not run while another document is open.
  // Readers deleted with delete_reader never get here.
  virtual ~pdfiumreader();

  // Opens a document that needs no user password. Pages are rendered at `resolution` dots per inch.
  // Returns the page count, 0 when the document cannot be opened.
  int load_image(const char* pdf_filename, int resolution) override;

  // A new bitmap on every call. Null also for a page that PDFium cannot load and for one whose size
  // in pixels is 0, negative, or too large for a bitmap.
  FIBITMAP* get_cur_image(int id) override;

  void free_image() override;

  fpdf_document_t__* _pdf_doc = nullptr;
  int _pdf_resolution;
};

#endif  // ZELK_READERS_PDFIUMREADER_H
