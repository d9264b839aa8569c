// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_IMGREADER_H
#define ZELK_READERS_IMGREADER_H

#include "readers/basereader.h"

// A document of one image, in any format that FreeImage can read; decoded when it is opened.
class imgreader : public basereader {
 public:
  imgreader() = default;
  virtual ~imgreader() = default;

  // Returns 1, or 0 when the file cannot be read. The format is found by content, else by name.
  int load_image(const char* image_file, int resulotion) override;

  // Hands out the reader's own bitmap, the same on every call. The caller unloads it once; the
  // reader never does, and must then be made to forget it (forget_image) or not be asked again.
  FIBITMAP* get_cur_image(int id) override;

  // Holds nothing that it must release.
  void free_image() override;

  // Called by whoever unloaded the bitmap: page 0 is missing from now on.
  void forget_image();

  FIBITMAP* _dib = nullptr;  // set by a successful load_image
};

#endif  // ZELK_READERS_IMGREADER_H
