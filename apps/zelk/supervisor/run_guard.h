// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_RUN_GUARD_H
#define ZELK_APPS_SUPERVISOR_RUN_GUARD_H

#include <sys/types.h>

#include "exchange/descriptor.h"
#include "supervisor/run_folder.h"

namespace cli {

// A process that waits for the end of this one. When it comes without warning, by SIGKILL or a
// crash, the guard ends what engines have started and removes the run's folder. Workers need no
// guard: they die with their supervisor.
class RunGuard {
 public:
  // Without a process to be had there is no guard, and the next run removes the folder.
  explicit RunGuard(const RunFolder& folder);
  // Calls the guard off.
  ~RunGuard();
  RunGuard(const RunGuard&) = delete;
  RunGuard& operator=(const RunGuard&) = delete;

 private:
  Descriptor _line;
  pid_t _guard = -1;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_RUN_GUARD_H
