// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PDF_FILE_ACCESS_H
#define ZELK_READERS_PDF_FILE_ACCESS_H

#include <cstdio>
#include <memory>

struct FPDF_FILEACCESS;
class pdfiumreader;

// How PDFium reads from an open file. Both live until the document is closed.
class PdfFileAccess {
 public:
  explicit PdfFileAccess(FILE* file);
  ~PdfFileAccess();
  PdfFileAccess(const PdfFileAccess&) = delete;
  PdfFileAccess& operator=(const PdfFileAccess&) = delete;

  // As the reader's load_image does for a path.
  int load_image(pdfiumreader& reader, int resolution);

 private:
  std::unique_ptr<FPDF_FILEACCESS> _access;
};

#endif  // ZELK_READERS_PDF_FILE_ACCESS_H
