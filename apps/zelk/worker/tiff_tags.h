// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_TIFF_TAGS_H
#define ZELK_APPS_WORKER_TIFF_TAGS_H

#include <string>
#include <vector>

namespace cli {

// What a page of a TIFF file says of itself that FreeImage does not pass on.
struct TiffTags {
  static constexpr int kWhiteIsZero = 0;

  int photometric = -1;  // what samples mean; -1 when missing
  int orientation = 1;   // as in EXIF: 1 is upright, up to 8
  bool has_resolution = false;
};

// Tags of the first `page_count` pages, fewer where the chain of directories breaks before. Never
// fails: what cannot be read is as if missing.
std::vector<TiffTags> read_tiff_tags(const std::string& path, int page_count);

// What is left to apply to the bitmap that FreeImage decodes. It turns most pictures not at all,
// but pictures in colour spaces other than RGB come mirrored as their orientation asks, though
// never with rows and columns exchanged.
int orientation_left_to_apply(const TiffTags& tags);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_TIFF_TAGS_H
