// SPDX-License-Identifier: Apache-2.0
#include "supervisor/source_file.h"

#include <fcntl.h>

#include <cerrno>
#include <utility>

#include "exchange/error.h"

namespace cli {
namespace {

// A pipe in the place of a document is not waited for; the worker refuses it.
Descriptor open_for_reading(const std::string& path) {
  return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

// What is set for the copy of one worker must not reach the others, as it would with dup.
Descriptor open_anew(int descriptor) {
  Descriptor copy = open_for_reading("/proc/self/fd/" + std::to_string(descriptor));
  return copy.is_open() ? std::move(copy) : Descriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
}

}  // namespace

void SourceFile::replace(const std::string& path) {
  _path = path;
  _kept = Descriptor();
}

Descriptor SourceFile::open() {
  if (!_kept.is_open()) {
    Descriptor opened = open_for_reading(_path);
    if (!opened.is_open()) throw Error(ErrorKind::kInput, errno, _path);
    if (!_keep) return opened;
    _kept = std::move(opened);
  }
  Descriptor copy = open_anew(_kept.number());
  if (!copy.is_open()) throw Error(ErrorKind::kInput, errno, _path);
  return copy;
}

}  // namespace cli
