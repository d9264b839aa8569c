// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_TIFFREADER_H
#define ZELK_READERS_TIFFREADER_H

#include "readers/basereader.h"

struct FIMULTIBITMAP;

// A TIFF file of any number of pages; each page is decoded when it is asked for, from the file that
// was opened. Pages that may not be decoded (tiff_directories.h) are missing; that is looked at
// once, when the file is opened. FreeImage walks the chain of directories from its start for each
// page: about a microsecond for every page before it, against the milliseconds that a scan takes.
class tiffreader : public basereader {
 public:
  tiffreader() = default;
  virtual ~tiffreader() = default;  // does not close the file: free_image does

  // Returns the page count, 0 when the content is not that of a readable file with pages.
  int load_image(const char* image_tif_file, int resulotion) override;

  // A new bitmap on every call, independent of the open file.
  FIBITMAP* get_cur_image(int id) override;

  void free_image() override;

  FIMULTIBITMAP* _tiff_handle = nullptr;
};

#endif  // ZELK_READERS_TIFFREADER_H
