// SPDX-License-Identifier: Apache-2.0
#include "console/report.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "console/outcome_json.h"
#include "exchange/error.h"

namespace cli {
namespace {

// What a plain create would leave: the permissions of the file that is replaced, else the usual.
mode_t permissions_for(const std::string& path) {
  struct stat existing = {};
  if (stat(path.c_str(), &existing) == 0) return existing.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

}  // namespace

Report::Report(const std::string& path) : _path(path) {
  const auto fail_to_open = [&path] { throw Error(ErrorKind::kOutput, errno, path); };
  struct stat existing = {};
  const bool exists = stat(path.c_str(), &existing) == 0;
  int descriptor = -1;
  if (exists && !S_ISREG(existing.st_mode)) {
    descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  } else {
    std::error_code ignored;
    if (exists)
      _path = std::filesystem::canonical(path, ignored).string();  // a link keeps its place
    std::string temporary = (std::filesystem::path(_path).parent_path() / ".zelk-XXXXXX").string();
    descriptor = mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor >= 0) _temporary_path = temporary;
    if (descriptor >= 0) fchmod(descriptor, permissions_for(_path));
  }
  if (descriptor < 0) fail_to_open();
  _file.reset(fdopen(descriptor, "wb"));
  if (!_file) fail_to_open();
  write("{\"version\":1,\"documents\":[");
}

Report::~Report() {
  if (!_temporary_path.empty()) unlink(_temporary_path.c_str());
}

void Report::document_finished(const DocumentOutcome& document) {
  std::string start = json_line(document_json(document));
  start.pop_back();  // the closing brace: the pages follow
  write((_is_first ? "\n" : ",\n") + start + ",\"pages\":[");
  _is_first = false;
  for (size_t i = 0; i < document.pages.size(); ++i) {
    write((i == 0 ? "\n " : ",\n ") + json_line(page_json(document.pages[i])));
  }
  write("]}");
}

void Report::run_finished(const RunTotals& totals) {
  write("],\n\"totals\":" + json_line(totals_json(totals)) + "}\n");
  if (_failure.empty()) finish();
}

void Report::write(const std::string& text) {
  if (!_failure.empty() || !_file) return;
  if (std::fwrite(text.data(), 1, text.size(), _file.get()) != text.size()) fail(errno);
}

void Report::finish() {
  const bool is_file = !_temporary_path.empty();
  if (std::fflush(_file.get()) != 0 || (is_file && fsync(fileno(_file.get())) != 0)) {
    return fail(errno);
  }
  if (std::fclose(_file.release()) != 0) return fail(errno);
  if (!is_file) return;
  if (rename(_temporary_path.c_str(), _path.c_str()) != 0) return fail(errno);
  _temporary_path.clear();
}

void Report::fail(int error) {
  _failure = fmt::format("{}: {}", _path, std::strerror(error));
}

}  // namespace cli
