// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <cmath>
#include <stdexcept>

#include "exchange/error.h"
#include "outputs/outputs.h"
#include "process/page_raster.h"
#include "writers/pdfwriter.h"

namespace cli {
namespace {

constexpr double kA4Width = 595;  // points
constexpr double kA4Height = 842;
constexpr int kOutputErrors = 1016;  // the PDF library's number of a file that it cannot write

[[noreturn]] void fail(const std::string& path, int number, const std::string& message) {
  const std::string text = fmt::format("{}: {}", path, message);
  if (number == kOutputErrors) throw Error(ErrorKind::kOutput, text);
  throw std::runtime_error(text);
}

bool is_length(double points) {
  return std::isfinite(points) && points > 0;
}

void add_blank_page(pdfwriter& writer, const PageRecord& record) {
  const bool known = is_length(record.page_width) && is_length(record.page_height);
  writer.add_blank_page(known ? record.page_width : kA4Width,
                        known ? record.page_height : kA4Height);
}

// Every record becomes one page, so that page numbers stay those of the document: a page without a
// picture that can be placed is blank. Text goes under pictures only, it would show on a blank
// page.
void add_page(pdfwriter& writer, const PageRecord& record) {
  if (record.jpeg.empty()) {
    add_blank_page(writer, record);
    return;
  }
  const PagePicture picture = {record.jpeg, record.width, record.height,
                               ofd::dots_per_meter(record.dots_per_inch)};
  const bool recognised = record.failure.empty();
  const int result =
      writer.add_encoded_page(picture, recognised ? record.characters : std::vector<OCR_CHAR>());
  if (result == -1) throw std::runtime_error("the PDF library has no font for the text");
  if (result != 0) add_blank_page(writer, record);
}

}  // namespace

void write_pdf(const OutputOrder& order, const std::string& path, const Progress& progress) {
  if (order.pages.empty()) throw std::runtime_error(path + ": a PDF needs at least one page");
  try {
    pdfwriter writer;
    if (writer.create_document(path.c_str()) != 0) {
      fail(path, writer._pdflib.get_errnum(), writer._pdflib.get_errmsg());
    }
    for_each_page(order, [&](const PageRecord& record) {
      add_page(writer, record);
      if (progress) progress();
    });
    writer.close_document();
  } catch (const PDFlib::Exception& error) {
    fail(path, error.get_errnum(), error.get_errmsg());
  }
}

}  // namespace cli
