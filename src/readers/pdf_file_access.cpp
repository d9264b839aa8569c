// SPDX-License-Identifier: Apache-2.0
#include "readers/pdf_file_access.h"

#include "readers/pdfium_api.h"
#include "readers/pdfiumreader.h"

namespace {

int read_block(void* source, unsigned long position, unsigned char* buffer, unsigned long size) {
  FILE* const file = static_cast<FILE*>(source);
  return fseeko(file, static_cast<off_t>(position), SEEK_SET) == 0 &&
                 std::fread(buffer, 1, size, file) == size
             ? 1
             : 0;
}

unsigned long length_of(FILE* file) {
  if (fseeko(file, 0, SEEK_END) != 0) return 0;
  const off_t length = ftello(file);
  return length < 0 ? 0 : static_cast<unsigned long>(length);
}

}  // namespace

PdfFileAccess::PdfFileAccess(FILE* file)
    : _access(new FPDF_FILEACCESS{length_of(file), read_block, file}) {}

PdfFileAccess::~PdfFileAccess() = default;

int PdfFileAccess::load_image(pdfiumreader& reader, int resolution) {
  reader._pdf_doc = FPDF_LoadCustomDocument(_access.get(), "");
  reader._pdf_resolution = resolution;
  if (reader._pdf_doc == nullptr) return 0;
  reader._page_num = FPDF_GetPageCount(reader._pdf_doc);
  return reader._page_num;
}
