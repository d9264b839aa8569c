// SPDX-License-Identifier: Apache-2.0
// page_rasters DOCUMENT RESOLUTION FOLDER: saves each page as the reader hands it out,
// FOLDER/NNNN.ppm.
#include <FreeImage.h>

#include <cstdio>
#include <string>

#include "process/MainProcess.h"

int main(int argc, char** argv) {
  if (argc != 4) return 64;
  ofd::MainProcess process{};
  const int pages = process.load_image_document(argv[1], std::stoi(argv[2]));
  for (int page = 0; page < pages; ++page) {
    FIBITMAP* const dib = process._reader->get_cur_image(page);
    if (dib == nullptr) continue;
    char path[4096];
    std::snprintf(path, sizeof path, "%s/%04d.ppm", argv[3], page);
    FreeImage_Save(FIF_PPMRAW, dib, path, 0);
    FreeImage_Unload(dib);
  }
  process.free_image_document();
  return pages < 1 ? 2 : 0;
}
