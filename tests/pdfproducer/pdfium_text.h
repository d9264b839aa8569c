// SPDX-License-Identifier: Apache-2.0
// Functions of PDFium's public C interface with which the tests read documents back.
#ifndef ZELK_TESTS_PDFPRODUCER_PDFIUM_TEXT_H
#define ZELK_TESTS_PDFPRODUCER_PDFIUM_TEXT_H

#include "readers/pdfium_api.h"

extern "C" {

double FPDFText_GetFontSize(FPDF_TEXTPAGE text_page, int index);
}

#endif  // ZELK_TESTS_PDFPRODUCER_PDFIUM_TEXT_H
