// SPDX-License-Identifier: Apache-2.0
#include "exchange/files.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <nettle/sha2.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "exchange/descriptor.h"
#include "exchange/error.h"

namespace cli {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;

[[noreturn]] void fail(ErrorKind kind, const std::string& path) {
  throw Error(kind, errno, path);
}

// Files lie in folders that others may write to as well. A pipe under an expected name, which would
// keep its reader and its writer waiting, is an error like any other.
Descriptor open_to_read(const std::string& path) {
  Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  struct stat info = {};
  if (!file.is_open() || fstat(file.number(), &info) != 0) {
    fail(ErrorKind::kInput, path);
  }
  if (!S_ISREG(info.st_mode)) {
    errno = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
    fail(ErrorKind::kInput, path);
  }
  return file;
}

Descriptor create(const std::string& path) {
  unlink(path.c_str());
  Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (!file.is_open()) fail(ErrorKind::kOutput, path);
  return file;
}

void finish(Descriptor file, const std::string& path) {
  if (file.close() != 0) fail(ErrorKind::kOutput, path);
}

std::size_t read_some(int descriptor, char* buffer, std::size_t size, const std::string& path) {
  for (;;) {
    const ssize_t count = read(descriptor, buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) fail(ErrorKind::kInput, path);
  }
}

void write_all(int descriptor, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail(ErrorKind::kOutput, path);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

// Hands the content to `use`, a block at a time.
template <typename Use>
void read_blocks(int descriptor, const std::string& path, Use use) {
  std::string block(kBlock, '\0');
  while (const std::size_t count = read_some(descriptor, block.data(), block.size(), path)) {
    use(std::string_view(block.data(), count));
  }
}

void copy_file(const std::string& from, const std::string& to) {
  const Descriptor source = open_to_read(from);
  spool_to_file(source.number(), from, to);
}

class Sha256 {
 public:
  Sha256() { sha256_init(&_state); }
  void add(std::string_view bytes) {
    sha256_update(&_state, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  }
  std::string hexadecimal() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest = {};
    sha256_digest(&_state, digest.size(), digest.data());
    std::string text;
    for (const std::uint8_t byte : digest) text += fmt::format("{:02x}", byte);
    return text;
  }

 private:
  sha256_ctx _state;
};

}  // namespace

void write_file(const std::string& path, std::string_view bytes) {
  Descriptor file = create(path);
  try {
    write_all(file.number(), bytes, path);
    finish(std::move(file), path);
  } catch (const Error&) {
    unlink(path.c_str());
    throw;
  }
}

std::optional<std::string> read_file(const std::string& path) {
  try {
    const Descriptor file = open_to_read(path);
    std::string bytes;
    read_blocks(file.number(), path, [&](std::string_view block) { bytes += block; });
    return bytes;
  } catch (const Error&) {
    return {};
  }
}

void move_file(const std::string& from, const std::string& to) {
  struct stat info = {};
  if (lstat(from.c_str(), &info) != 0) fail(ErrorKind::kInput, from);
  if (!S_ISREG(info.st_mode)) {
    errno = EINVAL;
    fail(ErrorKind::kInput, from);
  }
  if (std::rename(from.c_str(), to.c_str()) == 0) return;
  if (errno != EXDEV) fail(ErrorKind::kOutput, to);
  copy_file(from, to);
  unlink(from.c_str());
}

void link_or_copy_file(const std::string& from, const std::string& to) {
  unlink(to.c_str());
  if (linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0) return;
  copy_file(from, to);  // another file system, or a file that may be read but not linked
}

void spool_to_file(int descriptor, const std::string& source, const std::string& path) {
  Descriptor file = create(path);
  read_blocks(descriptor, source,
              [&](std::string_view block) { write_all(file.number(), block, path); });
  finish(std::move(file), path);
}

std::string digest_of_file(const std::string& path) {
  return digest_of_descriptor(open_to_read(path).number(), path);
}

std::string digest_of_descriptor(int descriptor, const std::string& name) {
  if (lseek(descriptor, 0, SEEK_SET) != 0) fail(ErrorKind::kInput, name);
  Sha256 digest;
  read_blocks(descriptor, name, [&](std::string_view block) { digest.add(block); });
  return digest.hexadecimal();
}

std::string digest_of_text(std::string_view text) {
  Sha256 digest;
  digest.add(text);
  return digest.hexadecimal();
}

}  // namespace cli
