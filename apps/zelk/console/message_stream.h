// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_MESSAGE_STREAM_H
#define ZELK_APPS_CONSOLE_MESSAGE_STREAM_H

#include <string_view>

namespace cli {

// Writes for people: what cannot be written is dropped, the exit code still tells.
void write_message(int descriptor, std::string_view text);

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_MESSAGE_STREAM_H
