// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_TIFF_TAGS_H
#define ZELK_APPS_WORKER_TIFF_TAGS_H

#include <cstdint>
#include <string>
#include <vector>

#include "worker/picture_stream.h"

namespace cli {

// What a page of a TIFF file says of itself that FreeImage does not pass on.
struct TiffTags {
  static constexpr int kWhiteIsZero = 0;

  std::uint64_t place = 0;  // of the page's directory, bytes from the start of the file
  int photometric = -1;     // what samples mean; -1 when missing
  int samples = 1;          // of a pixel
  int orientation = 1;      // as in EXIF: 1 is upright, up to 8
  bool has_resolution = false;
};

// Tags of all pages. They end where the chain of directories breaks, comes back to one of its own
// or meets a directory without a width and a height. Never fails: what cannot be read is as if
// missing.
std::vector<TiffTags> read_tiff_tags(const std::string& path);

// Makes the page whose directory lies at `place` the first of its file: FreeImage and libtiff find
// a page by walking through all before it. Nothing is replaced where the file cannot be read.
ReplacedStart start_at_directory(const std::string& path, std::uint64_t place);

// What is left to apply to the bitmap that FreeImage decodes. It turns most pictures not at all,
// but pictures in colour spaces other than RGB come mirrored as their orientation asks, though
// never with rows and columns exchanged.
int orientation_left_to_apply(const TiffTags& tags);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_TIFF_TAGS_H
