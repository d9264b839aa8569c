// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_PROGRESS_H
#define ZELK_APPS_CONSOLE_PROGRESS_H

#include <unistd.h>

#include <functional>
#include <memory>

#include "options/options.h"
#include "supervisor/events.h"

namespace cli {

struct ProgressSettings {
  ProgressStyle style = ProgressStyle::kAutomatic;
  bool verbose = false;
  int descriptor = STDERR_FILENO;
  // Results go to the same terminal: a bar would be drawn into them, so there is none.
  bool results_on_terminal = false;
};

// Seconds of a clock that only goes forward.
using Clock = std::function<double()>;
double monotonic_seconds();

// What people see of a run. On a terminal a bar, redrawn at most 10 times a second; elsewhere a
// line every 10 seconds. Complaints as "zelk: NAME: REASON" in every style but JSON, which is one
// object a line as docs/progress-json.schema.json describes. A summary at the end, unless quiet;
// off a terminal only when there was more than one document or something failed. Messages that
// cannot be written are dropped.
std::unique_ptr<RunListener> make_progress(const ProgressSettings& settings,
                                           Clock clock = monotonic_seconds);

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_PROGRESS_H
