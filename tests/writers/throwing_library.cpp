// SPDX-License-Identifier: Apache-2.0
// A library with the binding inside and the exports of the product: errors leave it as exceptions.
#include <typeinfo>

#include "fakes/fake_pdf_library.h"
#include "writers/pdflib.h"

extern "C" {

[[gnu::visibility("default")]] void zelk_throw_pdflib_exception(void* opaque) {
  PDFlib pdf(nullptr, nullptr, nullptr, opaque);
  FakePdfLibrary& library = fake_pdf_library();
  library.raises = "end_page_ext";
  library.errnum = 42;
  library.errmsg = "raised beyond the edge";
  library.apiname = "PDF_end_page_ext";
  pdf.end_page_ext("");
}

[[gnu::visibility("default")]] const std::type_info* zelk_pdflib_exception_type() {
  return &typeid(PDFlib::Exception);
}
}
