// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_FUZZ_FILE_IN_MEMORY_H
#define ZELK_FUZZ_FILE_IN_MEMORY_H

#include <sys/mman.h>

#include <string>

#include "fuzz_input.h"

// The path of a file with these bytes; no disk is touched. The file of the call before is gone.
inline std::string file_in_memory(std::string_view bytes) {
  static const int descriptor = memfd_create("input", MFD_CLOEXEC);
  const auto size = static_cast<ssize_t>(bytes.size());
  require(
      ftruncate(descriptor, 0) == 0 && pwrite(descriptor, bytes.data(), bytes.size(), 0) == size,
      "memory can be written");
  return "/proc/self/fd/" + std::to_string(descriptor);
}

#endif  // ZELK_FUZZ_FILE_IN_MEMORY_H
