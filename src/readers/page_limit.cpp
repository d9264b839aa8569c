// SPDX-License-Identifier: Apache-2.0
#include "readers/page_limit.h"

#include <FreeImage.h>

#include <cstdint>

bool may_be_decoded(FIBITMAP* header) {
  constexpr std::uint64_t kMaxPixels = 0x7FFFFFFF;
  if (header == nullptr) return true;  // decoding will tell why
  return std::uint64_t{FreeImage_GetWidth(header)} * FreeImage_GetHeight(header) <= kMaxPixels;
}
