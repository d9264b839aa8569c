// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_WORKER_H
#define ZELK_APPS_WORKER_WORKER_H

namespace cli {

// The first argument that makes the program a worker; the descriptors for orders and events follow.
inline constexpr const char* kWorkerArgument = "--worker";

// Does orders until told to quit, in the working directory, which is its scratch folder. Returns
// the exit code, which says nothing: a worker has ended well only when it said Bye.
int run_worker(int orders, int events);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_WORKER_H
