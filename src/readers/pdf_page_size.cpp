// SPDX-License-Identifier: Apache-2.0
#include "readers/pdf_page_size.h"

#include "readers/pdfium_api.h"

PdfPageSize pdf_page_size(fpdf_document_t__* document, int index) {
  PdfPageSize size;
  if (!FPDF_GetPageSizeByIndex(document, index, &size.width, &size.height)) return {};
  return size;
}
