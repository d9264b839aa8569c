// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PDF_PAGE_TEXT_H
#define ZELK_READERS_PDF_PAGE_TEXT_H

#include <vector>

struct fpdf_document_t__;

// A character that a PDF page holds, in pixels of the rendered page, y downwards.
struct PdfCharacter {
  char32_t code = 0;
  // The box of the character: its advance by the font's height where PDFium knows them, else its
  // ink. Empty (left == right) for a character that has no place, such as a line end.
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  int baseline = 0;  // where the pen stands; right for upright text only
};

// The text of page `index` of pdfiumreader's open document, counted from 0, with the page rendered
// `width` by `height` pixels, in the order in which PDFium reads it. Lines are parted by U+000D
// U+000A, words by blanks, also where the page has none. Invisible text is text; characters without
// a code are left out. Empty also for a page that is missing.
std::vector<PdfCharacter> pdf_page_text(fpdf_document_t__* document, int index, int width,
                                        int height);

#endif  // ZELK_READERS_PDF_PAGE_TEXT_H
