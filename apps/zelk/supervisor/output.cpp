// SPDX-License-Identifier: Apache-2.0
#include "supervisor/output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "exchange/error.h"

namespace cli {
namespace {

[[noreturn]] void fail(const std::string& what) {
  throw Error(ErrorKind::kOutput, errno, what);
}

// The permissions that a plain create would leave: those of the file that is replaced, else the
// usual.
mode_t permissions_for(bool exists, const struct stat& existing) {
  if (exists) return existing.st_mode & 07777;
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

// Only there can a file be renamed from one folder to the other.
bool on_same_file_system(const std::string& first, const std::string& second) {
  struct stat first_info = {};
  struct stat second_info = {};
  return stat(first.c_str(), &first_info) == 0 && stat(second.c_str(), &second_info) == 0 &&
         first_info.st_dev == second_info.st_dev;
}

}  // namespace

int claim_standard_output() {
  const int results = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (dup2(STDERR_FILENO, STDOUT_FILENO) < 0) {
    // Standard error is closed. Both numbers must be taken, or the next file opened would get them.
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO}) {
      const int nowhere = open("/dev/null", O_WRONLY);
      dup2(nowhere, standard);
      if (nowhere > STDERR_FILENO) close(nowhere);
    }
  }
  std::setvbuf(stdout, nullptr, _IONBF, 0);  // keeps the order among messages on standard error
  return results;
}

Output::Output(int descriptor) : _descriptor(descriptor), _path("standard output") {
  if (isatty(_descriptor) == 1) _terminal.emplace();
}

Output::Output(const std::string& path, const std::string& unfinished_folder) : _path(path) {
  struct stat existing = {};
  const bool exists = stat(path.c_str(), &existing) == 0;
  if (exists && !S_ISREG(existing.st_mode)) {
    _descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (_descriptor < 0) fail(_path);
    if (isatty(_descriptor) == 1) _terminal.emplace();
    return;
  }
  if (exists && access(path.c_str(), W_OK) != 0) fail(_path);

  // A link keeps its place; the file that it names is replaced.
  std::error_code error;
  std::filesystem::path target(path);
  if (exists) target = std::filesystem::canonical(path, error);
  if (error) throw Error(ErrorKind::kOutput, error.value(), path);
  _path = target.string();
  const std::string folder = target.has_parent_path() ? target.parent_path().string() : ".";
  const bool same = on_same_file_system(folder, unfinished_folder);
  _temporary_path = (same ? unfinished_folder : folder) + "/.zelk-XXXXXX";
  _descriptor = mkostemp(_temporary_path.data(), O_CLOEXEC);
  if (_descriptor < 0) {
    _temporary_path.clear();
    fail(_path);
  }
  if (fchmod(_descriptor, permissions_for(exists, existing)) != 0) fail(_path);
}

Output::~Output() {
  if (_descriptor >= 0) close(_descriptor);
  if (!_temporary_path.empty()) unlink(_temporary_path.c_str());
}

void Output::write(std::string_view text) {
  if (_terminal) {
    write_bytes(_terminal->take(text));
  } else {
    write_bytes(text);
  }
}

void Output::write_bytes(std::string_view bytes) {
  if (_descriptor < 0 && !bytes.empty()) throw Error(ErrorKind::kOutput, _path + " is closed");
  while (!bytes.empty()) {
    const ssize_t written = ::write(_descriptor, bytes.data(), bytes.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      if (errno == EPIPE) throw Error(ErrorKind::kReaderGone, errno, _path);
      fail(_path);
    }
    bytes.remove_prefix(static_cast<size_t>(written));
  }
}

void Output::finish() {
  if (_terminal) write_bytes(_terminal->rest());
  if (_temporary_path.empty()) {
    close_descriptor();
    return;
  }
  if (fsync(_descriptor) != 0) fail(_path);
  close_descriptor();
  if (rename(_temporary_path.c_str(), _path.c_str()) != 0) fail(_path);
  _temporary_path.clear();
}

// Some file systems report a full disk only here.
void Output::close_descriptor() {
  const int descriptor = _descriptor;
  _descriptor = -1;
  if (descriptor >= 0 && close(descriptor) != 0) fail(_path);
}

void check_writable(const std::string& path) {
  struct stat existing = {};
  if (stat(path.c_str(), &existing) == 0) {
    if (S_ISDIR(existing.st_mode)) errno = EISDIR;
    if (S_ISDIR(existing.st_mode) || access(path.c_str(), W_OK) != 0) fail(path);
    return;
  }
  const std::string folder = std::filesystem::path(path).parent_path().string();
  if (access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) != 0) fail(path);
}

}  // namespace cli
