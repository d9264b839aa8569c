// SPDX-License-Identifier: Apache-2.0
// pdfwriter with the embedded producer, its calls in any order, with any characters and small
// pictures. A file that it finishes has to pass libqpdf's own check.
#include <qpdf/qpdf-c.h>

#include <filesystem>

#include "any_page.h"
#include "fuzz_input.h"
#include "writers/pdfwriter.h"

namespace {

void check_file(const std::string& file) {
  if (!std::filesystem::exists(file)) return;
  qpdf_data qpdf = qpdf_init();
  qpdf_set_suppress_warnings(qpdf, QPDF_TRUE);
  require(qpdf_read(qpdf, file.c_str(), nullptr) == QPDF_SUCCESS, "a finished file can be read");
  require(qpdf_check_pdf(qpdf) == QPDF_SUCCESS, "a finished file passes libqpdf's check");
  qpdf_cleanup(&qpdf);
  std::filesystem::remove(file);
}

// False after an error, when nothing but the destructor may be called.
bool step(FuzzInput& input, pdfwriter& writer, const std::string& file) try {
  const OwnedBitmap dib = any_bitmap(input);
  switch (input.below(8)) {
    case 0:
      writer.create_document(input.below(8) == 0 ? nullptr : file.c_str());
      return true;
    case 1:
      writer.close_document();
      check_file(file);
      return true;
    case 2:
      writer.add_blank_page(input.number<double>(), input.number<double>());
      return true;
    case 3:
      writer.add_encoded_page(any_picture(input, dib.get()), any_characters(input));
      return true;
    default:
      writer.add_page(dib.get(), any_characters(input), true);
      return true;
  }
} catch (const PDFlib::Exception&) {
  return false;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const std::string file = scratch_path("written.pdf");
  pdfwriter writer;
  writer.create_document(file.c_str());
  int steps = 0;
  while (steps < 12 && !input.empty() && step(input, writer, file)) ++steps;
  check_file(file);
  return 0;
}
