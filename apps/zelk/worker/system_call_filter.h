// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_SYSTEM_CALL_FILTER_H
#define ZELK_APPS_WORKER_SYSTEM_CALL_FILTER_H

namespace cli {

// From here on only those system calls work that computing, threads and files take; all others,
// those that do not exist yet included, fail with EPERM or ENOSYS. False when the kernel cannot
// filter.
bool filter_system_calls();

}  // namespace cli

#endif  // ZELK_APPS_WORKER_SYSTEM_CALL_FILTER_H
