// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_STRAY_PROCESSES_H
#define ZELK_APPS_SUPERVISOR_STRAY_PROCESSES_H

#include <string>

namespace cli {

// The variable that leads a worker to its scratch folder. What its engine starts inherits it, and
// is known by it wherever it went: a process that left its parent, group and session as well.
constexpr const char* kScratchVariable = "TMPDIR";

// Ends all processes of this user whose scratch folder is `scratch` or lies below it.
void end_processes_of(const std::string& scratch);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_STRAY_PROCESSES_H
