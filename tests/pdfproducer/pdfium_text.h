// SPDX-License-Identifier: Apache-2.0
// Functions of PDFium's public C interface with which the tests read documents back.
#ifndef ZELK_TESTS_PDFPRODUCER_PDFIUM_TEXT_H
#define ZELK_TESTS_PDFPRODUCER_PDFIUM_TEXT_H

#include "readers/pdfium_api.h"

extern "C" {

int FPDFText_CountChars(FPDF_TEXTPAGE text_page);
unsigned FPDFText_GetUnicode(FPDF_TEXTPAGE text_page, int index);
double FPDFText_GetFontSize(FPDF_TEXTPAGE text_page, int index);
int FPDFText_GetCharOrigin(FPDF_TEXTPAGE text_page, int index, double* x, double* y);
}

#endif  // ZELK_TESTS_PDFPRODUCER_PDFIUM_TEXT_H
