// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_EXIT_CODES_H
#define ZELK_APPS_SUPERVISOR_EXIT_CODES_H

#include <set>

#include "exchange/error.h"
#include "options/options.h"
#include "supervisor/events.h"

namespace cli {

// What a run ends with when this ended it.
ExitCode exit_code_of(const Error& error);

// What a document adds to a run's exit code; kAllDone when nothing.
ExitCode exit_code_of(DocumentState state);

// The one of several that the run ends with, kAllDone without any.
ExitCode first_of(const std::set<ExitCode>& codes);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_EXIT_CODES_H
