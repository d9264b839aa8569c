// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "pdfproducer/error.h"

namespace zelk::pdf {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
constexpr int kMostLinks = 40;           // as many as the kernel follows
constexpr int kMostTemporaries = 10000;  // left behind in one folder by killed runs

// The file that an ordinary open of `path` would create or change. The result is absolute: the
// process may change its working directory before the file is complete.
fs::path final_target(fs::path path) {
  path = fs::absolute(path);
  for (int links = 0; fs::is_symlink(path); ++links) {
    if (links == kMostLinks) {
      throw std::system_error(ELOOP, std::generic_category());
    }
    path = path.parent_path() / fs::read_symlink(path);
  }
  return path;
}

}  // namespace

OutputFile::OutputFile(const std::string& name) : _name(name) {
  if (name.empty()) throw Error(ErrorNumber::kOutput, "cannot create a file without a name");
  try {
    _target = final_target(name);
  } catch (const std::system_error& error) {
    fail("create", error.code().value());
  }
  struct stat earlier;
  const bool replaces = find_earlier(earlier);
  _buffer.reserve(kBufferSize);
  open_beside_target();
  if (replaces && !take_over(earlier)) {
    const int reason = errno;
    discard();
    fail("create", reason);
  }
}

OutputFile::~OutputFile() {
  discard();
}

bool OutputFile::find_earlier(struct stat& earlier) const {
  if (!_target.has_filename()) fail("create", EISDIR);
  if (stat(_target.c_str(), &earlier) != 0) {
    if (errno != ENOENT) fail("create", errno);
    return false;
  }
  if (S_ISDIR(earlier.st_mode)) fail("create", EISDIR);
  if (!S_ISREG(earlier.st_mode)) fail("create", EINVAL);
  if (faccessat(AT_FDCWD, _target.c_str(), W_OK, AT_EACCESS) != 0) fail("create", errno);
  return true;
}

void OutputFile::open_beside_target() {
  for (int number = 0; number < kMostTemporaries && _descriptor < 0; ++number) {
    _temporary = _target.parent_path() /
                 (".zelk-" + std::to_string(getpid()) + "-" + std::to_string(number) + ".tmp");
    _descriptor = open(_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (_descriptor < 0 && errno != EEXIST) fail("create", errno);
  }
  if (_descriptor < 0) fail("create", EEXIST);
}

bool OutputFile::take_over(const struct stat& earlier) const {
  // Only the superuser may give a file away; anyone else goes on owning what he wrote.
  [[maybe_unused]] const int owner = fchown(_descriptor, earlier.st_uid, earlier.st_gid);
  return fchmod(_descriptor, earlier.st_mode & 07777) == 0;
}

void OutputFile::write(std::string_view bytes) {
  if (_buffer.size() + bytes.size() > kBufferSize) flush();
  if (bytes.size() >= kBufferSize) {
    write_to_disk(bytes);
  } else {
    _buffer.append(bytes);
  }
  _size += bytes.size();
}

void OutputFile::write_to_disk(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(_descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail("write", errno);
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void OutputFile::flush() {
  write_to_disk(_buffer);
  _buffer.clear();
}

void OutputFile::commit() {
  flush();
  if (fsync(_descriptor) != 0) fail("write", errno);
  const int descriptor = _descriptor;
  _descriptor = -1;
  if (close(descriptor) != 0 || rename(_temporary.c_str(), _target.c_str()) != 0) {
    const int reason = errno;
    unlink(_temporary.c_str());
    fail("write", reason);
  }
}

void OutputFile::discard() noexcept {
  if (_descriptor < 0) return;
  close(_descriptor);
  unlink(_temporary.c_str());
  _descriptor = -1;
}

void OutputFile::fail(const char* verb, int reason) const {
  throw Error(ErrorNumber::kOutput, std::string("cannot ") + verb + " '" + _name +
                                        "': " + std::generic_category().message(reason));
}

}  // namespace zelk::pdf
