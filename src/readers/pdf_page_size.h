// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PDF_PAGE_SIZE_H
#define ZELK_READERS_PDF_PAGE_SIZE_H

struct fpdf_document_t__;

// Points, after rotation and cropping.
struct PdfPageSize {
  double width = 0.0;
  double height = 0.0;
};

// The size that pdfiumreader renders page `index` of its open document by, counted from 0. 0 by 0
// for a page that is missing. The page's content is not looked at.
PdfPageSize pdf_page_size(fpdf_document_t__* document, int index);

#endif  // ZELK_READERS_PDF_PAGE_SIZE_H
