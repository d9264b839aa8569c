// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_RESOLUTION_H
#define ZELK_APPS_WORKER_PICTURE_RESOLUTION_H

#include "worker/picture_header.h"

namespace cli {

// Dots per inch of a picture whose resolution the user does not tell: the file's own, when it lies
// within 36 to 2400 and is not 72, which programs write for "unknown"; else 300 when both sides are
// within 3 % of a sheet scanned at 300 (A5, A4, A3, letter, legal, tabloid, upright or across);
// else 200. A4 at 200 dots per inch is 5 % smaller than A5 at 300, hence the narrow margin.
int picture_resolution(const PictureHeader& header);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_RESOLUTION_H
