// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_HEADER_H
#define ZELK_APPS_WORKER_PICTURE_HEADER_H

namespace cli {

// What a picture's header tells of it, before anything is decoded.
struct PictureHeader {
  unsigned width = 0;   // pixels, as stored
  unsigned height = 0;  // pixels, as stored
  // The larger of the two directions. 0, or the 72 dots per inch that FreeImage gives then, when
  // the file has none.
  unsigned dots_per_meter = 0;
  int orientation = 1;         // of the decoded bitmap, as in EXIF: 1 is upright, up to 8
  bool white_is_zero = false;  // in samples that have no palette to say so
  bool is_opaque = false;      // whatever FreeImage takes for transparency is none
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_HEADER_H
