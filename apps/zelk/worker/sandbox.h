// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_SANDBOX_H
#define ZELK_APPS_WORKER_SANDBOX_H

#include <string>
#include <vector>

namespace cli {

// Takes away, for the life of the process, the rights that decoding a stranger's file needs not:
// - files: only `readable` and what below them is may be read, and only the working directory
//   written;
// - system calls: only what computing, threads and files take: no sockets, no programs and
//   processes, no tracing, no signals to others, no change of owners, permissions or times;
// - limits: no core file, no file above 16 GiB, no new privileges.
// Paths that do not exist are passed over. Returns what could not be had, in words, because the
// kernel lacks it; empty when the sandbox is whole.
std::string enter_sandbox(const std::vector<std::string>& readable);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_SANDBOX_H
