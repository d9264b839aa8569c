// SPDX-License-Identifier: Apache-2.0
// A picture of any format, by its content. FreeImage decodes, which is not instrumented: only
// memory that it asks for is watched.
#include "readers/imgreader.h"

#include "read_document.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  read_document<imgreader>(FuzzInput(data, size).rest(), 200, 1);
  return 0;
}
