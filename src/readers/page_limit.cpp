// SPDX-License-Identifier: Apache-2.0
#include "readers/page_limit.h"

#include <FreeImage.h>

bool may_be_decoded(std::uint64_t width, std::uint64_t height) {
  constexpr std::uint64_t kMaxPixels = 0x7FFFFFFF;
  return width == 0 || height <= kMaxPixels / width;
}

bool may_be_decoded(FIBITMAP* header) {
  if (header == nullptr) return true;  // decoding will tell why
  return may_be_decoded(FreeImage_GetWidth(header), FreeImage_GetHeight(header));
}
