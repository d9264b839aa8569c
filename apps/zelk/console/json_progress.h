// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_JSON_PROGRESS_H
#define ZELK_APPS_CONSOLE_JSON_PROGRESS_H

#include <memory>

#include "supervisor/events.h"

namespace cli {

// --progress json: one object a line, as docs/progress-json.schema.json describes.
std::unique_ptr<RunListener> make_json_progress(int descriptor);

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_JSON_PROGRESS_H
