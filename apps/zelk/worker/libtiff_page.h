// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_LIBTIFF_PAGE_H
#define ZELK_APPS_WORKER_LIBTIFF_PAGE_H

#include <cstdint>
#include <optional>
#include <string>

#include "worker/document_pages.h"
#include "worker/picture_header.h"

namespace cli {

// Pages of TIFF files that FreeImage does not decode and libtiff does: samples of 2 or 4 bits,
// tiles of separate colours, and tiles of which some are damaged. `place` is that of the page's
// directory.

// Nothing when libtiff cannot decode the page either. Orientation and meaning of samples are left
// out.
std::optional<PictureHeader> libtiff_header(const std::string& path, std::uint64_t place);

// 24 bits a pixel, on white, not turned. Null when it cannot be decoded.
PageBitmap libtiff_bitmap(const std::string& path, std::uint64_t place);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_LIBTIFF_PAGE_H
