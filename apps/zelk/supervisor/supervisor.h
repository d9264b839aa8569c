// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_SUPERVISOR_H
#define ZELK_APPS_SUPERVISOR_SUPERVISOR_H

#include "exchange/error.h"
#include "options/inputs.h"
#include "options/options.h"
#include "supervisor/engine_location.h"
#include "supervisor/events.h"
#include "supervisor/output.h"

namespace cli {

// Recognises documents with workers and delivers their outputs. Tells everything that happens to
// the listener and returns the run's exit code. Results for standard output go to `results`. A
// missing engine is told through `complaint`, which also names what else ended the run early.
ExitCode run_documents(const Options& options, EngineLocation engine, Inputs inputs,
                       Output& results, RunListener& listener, std::string& complaint);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_SUPERVISOR_H
