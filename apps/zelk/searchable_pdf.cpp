// SPDX-License-Identifier: Apache-2.0
#include "searchable_pdf.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <new>

#include "writers/pdflib.h"
#include "zelkAPI.h"

namespace cli {
namespace {

struct FileState {
  explicit FileState(const std::string& path) {
    struct stat info = {};
    exists = stat(path.c_str(), &info) == 0;
    inode = info.st_ino;
    changed = info.st_ctim;
  }
  bool operator==(const FileState& other) const {
    return exists == other.exists && inode == other.inode &&
           changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
  }
  bool exists;
  ino_t inode;
  timespec changed;
};

// Why a file cannot be made where it should be; empty when the reason is another.
std::string unwritable_reason(const std::string& path) {
  std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (folder.empty()) folder = ".";
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return "is a directory";
  if (access(folder.c_str(), W_OK) != 0) return std::strerror(errno);
  if (access(path.c_str(), F_OK) == 0 && access(path.c_str(), W_OK) != 0) {
    return std::strerror(errno);
  }
  return "";
}

}  // namespace

void SearchablePdf::start() {
  if (!_path.empty()) zelk_set_double_document_filename(_path.c_str());
}

bool SearchablePdf::recognize() {
  const FileState before(_path);
  try {
    zelk_recognize();
  } catch (const PDFlib::Exception& error) {
    _reason = error.get_errmsg();
    return false;
  }
  // The library says nothing of an output that it could not open.
  if (!_path.empty() && FileState(_path) == before) {
    _reason = unwritable_reason(_path);
    if (_reason.empty()) _reason = "it could not be opened";
  }
  return true;
}

}  // namespace cli
