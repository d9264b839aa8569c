// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PDF_PAGE_PICTURES_H
#define ZELK_READERS_PDF_PAGE_PICTURES_H

struct fpdf_document_t__;

// What PDFium could not show of a page's pictures; it says nothing of that itself.
struct PdfPictureLosses {
  bool has_unreadable = false;  // a picture that cannot be decoded
  bool has_cut = false;         // a JPEG whose data has no end
};

// Looks at the pictures of page `index` of pdfiumreader's open document, those in forms included.
// Whether they can be decoded is only looked at when the page, rendered, `is_white`: that takes as
// long as rendering. A picture that is white counts as read unless its fax or JBIG2 data, for which
// PDFium gives white on errors, holds more than white takes.
PdfPictureLosses pdf_picture_losses(fpdf_document_t__* document, int index, bool is_white);

#endif  // ZELK_READERS_PDF_PAGE_PICTURES_H
