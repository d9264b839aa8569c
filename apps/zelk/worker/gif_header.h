// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_GIF_HEADER_H
#define ZELK_APPS_WORKER_GIF_HEADER_H

#include <optional>
#include <string>

namespace cli {

struct GifSize {
  unsigned width = 0;   // pixels
  unsigned height = 0;  // pixels
};

// Size of the first picture of a GIF file, the one that FreeImage decodes; it need not be that of
// the screen at the start of the file. Nothing when the file ends before it.
std::optional<GifSize> first_picture_size(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_GIF_HEADER_H
