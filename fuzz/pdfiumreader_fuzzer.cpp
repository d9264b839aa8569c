// SPDX-License-Identifier: Apache-2.0
// A PDF document's first pages and their text. PDFium is not instrumented: only memory that it asks
// of the system is watched.
#include "readers/pdfiumreader.h"

#include "read_document.h"
#include "readers/pdf_page_text.h"

namespace {

void read_text(std::string_view bytes) {
  auto* const reader = new pdfiumreader;
  const int pages = reader->load_image(file_in_memory(bytes).c_str(), 36);
  for (int page = 0; page < std::min(pages, 2); ++page) {
    for (const PdfCharacter& one : pdf_page_text(reader->_pdf_doc, page, 300, 400)) {
      const bool has_place = one.left < one.right && one.top < one.bottom;
      require(has_place || (one.left == one.right && one.top == one.bottom), "a box has two sides");
    }
  }
  reader->free_image();
  delete_reader(reader);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = FuzzInput(data, size).rest();
  read_document<pdfiumreader>(bytes, 36, 2);
  read_text(bytes);
  return 0;
}
