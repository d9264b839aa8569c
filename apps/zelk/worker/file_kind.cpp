// SPDX-License-Identifier: Apache-2.0
#include "worker/file_kind.h"

#include <FreeImage.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <string_view>

#include "worker/document_pages.h"
#include "worker/foreign_content.h"
#include "worker/input_file.h"

namespace cli {
namespace {

// FreeImage knows more formats. Each one more is a decoder more that hostile files can reach.
constexpr FREE_IMAGE_FORMAT kPictures[] = {
    FIF_BMP, FIF_GIF,    FIF_JPEG, FIF_PBM,    FIF_PBMRAW, FIF_PGM,
    FIF_PNG, FIF_PGMRAW, FIF_PPM,  FIF_PPMRAW, FIF_TIFF,   FIF_WEBP,
};

// Why a file cannot be opened for reading; empty when it can. Pipes are refused here: reading one
// would wait for a writer that may never come.
std::string unreadable_reason(const std::string& path) {
  struct stat info = {};
  if (stat(path.c_str(), &info) != 0) return std::strerror(errno);
  if (S_ISDIR(info.st_mode)) return "is a directory";
  if (!S_ISREG(info.st_mode)) return "is not a regular file";
  if (info.st_size == 0) return "the file is empty";
  return "";
}

bool has_pdf_header(FILE* file) {
  char start[1024];
  std::rewind(file);
  const std::string_view text(start, std::fread(start, 1, sizeof start, file));
  return text.find("%PDF-") != std::string_view::npos;
}

}  // namespace

FileKind kind_of_file(const std::string& path) {
  const std::string reason = unreadable_reason(path);
  if (!reason.empty()) throw UnreadableDocument(reason, false);
  const InputFile file = open_input(path);
  if (file == nullptr) throw UnreadableDocument(std::strerror(errno), false);
  const FREE_IMAGE_FORMAT format =
      FreeImage_GetFileTypeFromHandle(input_functions(), file.get(), 0);
  if (std::find(std::begin(kPictures), std::end(kPictures), format) != std::end(kPictures)) {
    return {false, format};
  }
  if (has_pdf_header(file.get())) return {true, -1};
  if (holds_only_zeros(path)) {
    throw UnreadableDocument("the file holds nothing but zero bytes, it was not copied to its end",
                             false);
  }
  const std::string found = foreign_content(path);
  throw UnreadableDocument("the content is neither a picture of a known kind nor a PDF" +
                               (found.empty() ? "" : ", it is " + found),
                           false);
}

}  // namespace cli
