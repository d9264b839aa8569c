// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_JPEG_MESSAGES_H
#define ZELK_APPS_WORKER_JPEG_MESSAGES_H

#include <string>

namespace cli {

// Decodes a JPEG file, without a result, for what the decoder has to say of it: FreeImage passes on
// the first message only, and one of padding may hide one of lost data. The DamageWatch hears all.
void repeat_jpeg_messages(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_JPEG_MESSAGES_H
