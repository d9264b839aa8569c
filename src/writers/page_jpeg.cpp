// SPDX-License-Identifier: Apache-2.0
#include "writers/page_jpeg.h"

#include <FreeImage.h>

#include <memory>

namespace {

struct CloseStream {
  void operator()(FIMEMORY* stream) const { FreeImage_CloseMemory(stream); }
};

}  // namespace

std::string encode_page_jpeg(FIBITMAP* dib) {
  const std::unique_ptr<FIMEMORY, CloseStream> stream(FreeImage_OpenMemory(nullptr, 0));
  // A failed encoder may leave the start of a file behind.
  if (!FreeImage_SaveToMemory(FIF_JPEG, dib, stream.get(), 0)) return {};
  BYTE* bytes = nullptr;
  DWORD size = 0;
  if (!FreeImage_AcquireMemory(stream.get(), &bytes, &size) || bytes == nullptr) return {};
  return {reinterpret_cast<const char*>(bytes), size};
}
