// SPDX-License-Identifier: Apache-2.0
#include "document.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <new>
#include <nlohmann/json.hpp>
#include <string_view>

#include "searchable_pdf.h"
#include "zelkAPI.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;

enum class Kind { kUnknown, kPicture, kPdf };

// The library goes by the text after the last dot, in any case.
Kind kind_by_extension(const std::string& file) {
  std::string extension = file.substr(file.rfind('.') + 1);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (file.find('.') == std::string::npos) return Kind::kUnknown;
  if (extension == "pdf") return Kind::kPdf;
  for (const char* picture : {"bmp", "jpg", "jpeg", "png", "tif", "tiff"}) {
    if (extension == picture) return Kind::kPicture;
  }
  return Kind::kUnknown;
}

// Why a file cannot be opened for reading; empty when it can. Pipes are refused here: reading one
// would wait for a writer that may never come.
std::string unreadable_reason(const std::string& file) {
  struct stat info = {};
  if (stat(file.c_str(), &info) != 0) return std::strerror(errno);
  if (S_ISDIR(info.st_mode)) return "is a directory";
  if (!S_ISREG(info.st_mode)) return "is not a regular file";
  if (info.st_size == 0) return "the file is empty";
  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::strerror(errno);
  close(descriptor);
  return "";
}

bool has_pdf_header(const std::string& file) {
  char start[1024];  // readers accept the header within the first kilobyte
  std::ifstream stream(file, std::ios::binary);
  stream.read(start, sizeof start);
  const std::string_view text(start, static_cast<size_t>(stream.gcount()));
  return text.find("%PDF-") != std::string_view::npos;
}

// Why the library did not open a file that can be read.
std::string refused_reason(const std::string& file) {
  switch (kind_by_extension(file)) {
    case Kind::kUnknown:
      return "unknown extension (known: bmp, jpg, jpeg, png, tif, tiff, pdf)";
    case Kind::kPdf:
      return has_pdf_header(file) ? "the PDF is damaged, protected by a password or has no pages"
                                  : "the content is not a PDF";
    case Kind::kPicture:
      break;
  }
  return "the content is not a picture that can be decoded";
}

// Only pages that reached the engine have a JSON entry, so the number of entries tells how many
// pages were lost, though not which. Engines that give no JSON at all leave only the text to judge
// by.
int count_pages_read(int page_count) {
  int entries = 0;
  for (int page = 0; page < page_count; ++page) entries += *zelk_get_ocr_json_string(page) != '\0';
  const bool engine_gives_no_json = entries == 0 && *zelk_get_ocr_string() != '\0';
  return engine_gives_no_json ? page_count : entries;
}

// Text that JSON can hold: bytes that are not UTF-8 become U+FFFD.
std::string to_json_text(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// One line for the whole document, a page at a time: page texts can be megabytes.
void write_json(const std::string& file, int page_count, Output& output) {
  output.write(
      fmt::format("{{\"file\":{},\"page_count\":{},\"pages\":[", to_json_text(file), page_count));
  int last = page_count;
  while (last > 0 && *zelk_get_ocr_json_string(last - 1) == '\0') --last;
  for (int page = 0; page < last; ++page) {
    const Json json = Json::parse(zelk_get_ocr_json_string(page), nullptr, false);
    if (page > 0) output.write(",");
    output.write(json.is_discarded() ? "null" : to_json_text(json));
  }
  output.write("]}\n");
}

std::string write_result(const std::string& file, int page_count, Format format, Output& output) {
  const int pages_read = count_pages_read(page_count);
  if (pages_read == 0) {
    return page_count == 1 ? "the page could not be read"
                           : fmt::format("none of its {} pages could be read", page_count);
  }
  if (format == Format::kJson) {
    write_json(file, page_count, output);
  } else {
    output.write(zelk_get_ocr_string());
  }
  if (pages_read == page_count) return "";
  return fmt::format("{} of {} pages could not be read", page_count - pages_read, page_count);
}

std::string recognize_document(const std::string& file, const Options& options, Output& output,
                               SearchablePdf& pdf) {
  int page_count = zelk_load_image_document(file.c_str(), options.dpi);
  if (page_count < 1) return refused_reason(file);
  pdf.start();
  if (!pdf.recognize()) {
    // The PDF failed half way: the text is read again, without it.
    zelk_free_image_document();
    page_count = zelk_load_image_document(file.c_str(), options.dpi);
    zelk_recognize();
  }
  return write_result(file, page_count, options.format, output);
}

}  // namespace

Shortfall recognize_file(const std::string& file, const Options& options, Output& output) {
  const std::string reason = unreadable_reason(file);
  if (!reason.empty()) return {reason, ""};
  SearchablePdf pdf(options.pdf);
  std::string lost;
  try {
    lost = recognize_document(file, options, output, pdf);
  } catch (const std::bad_alloc&) {
    lost = "there is not enough memory for it";
  }
  zelk_free_image_document();  // a document that was refused may be held too
  return {lost, lost.empty() || !pdf.reason().empty() ? pdf.reason() : ""};
}

}  // namespace cli
