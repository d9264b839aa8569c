// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_DAMAGE_H
#define ZELK_APPS_WORKER_PICTURE_DAMAGE_H

#include <string>

namespace cli {

// What is wrong with a picture file that its decoder refused, as far as the file's own lengths and
// checksums tell: "the file ends within its chunk IDAT". Empty when they are in order. `format` is
// FreeImage's number.
std::string picture_damage(const std::string& path, int format);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_DAMAGE_H
