// SPDX-License-Identifier: Apache-2.0
// Image files, through the library's own reader.
#include <FreeImage.h>
#include <dlfcn.h>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "grey_page.h"
#include "readers/imgreader.h"

namespace engine_check {
namespace {

using Bitmap = std::unique_ptr<FIBITMAP, decltype(&FreeImage_Unload)>;

// The TIFF library below FreeImage prints a line for each tag that it does not know.
void silence_decoder() {
  using SetHandler = void* (*)(void*);
  for (const char* symbol : {"TIFFSetErrorHandler", "TIFFSetWarningHandler"}) {
    const auto set_handler = reinterpret_cast<SetHandler>(dlsym(RTLD_DEFAULT, symbol));
    if (set_handler != nullptr) set_handler(nullptr);
  }
}

}  // namespace

GreyPage read_image_file(const std::string& path) {
  silence_decoder();
  imgreader reader;
  Bitmap dib(nullptr, FreeImage_Unload);
  if (reader.load_image(path.c_str(), 0) == 1) dib.reset(reader.get_cur_image(0));
  if (dib) dib.reset(FreeImage_ConvertToGreyscale(dib.get()));
  if (!dib) throw std::runtime_error(fmt::format("cannot read the image {}", path));
  GreyPage page = uniform_page(static_cast<int>(FreeImage_GetWidth(dib.get())),
                               static_cast<int>(FreeImage_GetHeight(dib.get())), 255);
  auto pixel = page.pixels.begin();
  for (int y = page.height - 1; y >= 0; --y) {
    const unsigned char* const row = FreeImage_GetScanLine(dib.get(), y);
    pixel = std::copy(row, row + page.width, pixel);
  }
  return page;
}

void write_bmp(const GreyPage& page, const std::string& path) {
  const Bitmap dib(FreeImage_Allocate(page.width, page.height, 24, 0, 0, 0), FreeImage_Unload);
  if (!dib) throw std::runtime_error("memory ran out");
  for (int y = 0; y < page.height; ++y) {
    unsigned char* row = FreeImage_GetScanLine(dib.get(), page.height - 1 - y);
    for (int x = 0; x < page.width; ++x, row += 3) row[0] = row[1] = row[2] = page.at(x, y);
  }
  if (!FreeImage_Save(FIF_BMP, dib.get(), path.c_str(), 0)) {
    throw std::runtime_error(fmt::format("cannot write {}", path));
  }
}

}  // namespace engine_check
