// SPDX-License-Identifier: Apache-2.0
// A TIFF file's first pages. FreeImage decodes, which is not instrumented: only memory that it asks
// for is watched.
#include "readers/tiffreader.h"

#include "read_document.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  read_document<tiffreader>(FuzzInput(data, size).rest(), 200, 3);
  return 0;
}
