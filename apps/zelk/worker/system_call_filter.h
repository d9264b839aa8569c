// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_SYSTEM_CALL_FILTER_H
#define ZELK_APPS_WORKER_SYSTEM_CALL_FILTER_H

namespace cli {

// From here on system calls that reach beyond the process fail with EPERM: sockets, programs,
// tracing, mounts, signals to others, kernel settings. False when the kernel cannot filter.
bool filter_system_calls();

}  // namespace cli

#endif  // ZELK_APPS_WORKER_SYSTEM_CALL_FILTER_H
