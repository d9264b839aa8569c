// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_FILE_RULES_H
#define ZELK_APPS_WORKER_FILE_RULES_H

#include <string>
#include <vector>

namespace cli {

// Restricts the process to reading `readable` and to the working directory, with Landlock; needs
// PR_SET_NO_NEW_PRIVS. Files that are open already stay usable. False when the kernel has no
// Landlock.
bool restrict_files(const std::vector<std::string>& readable);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_FILE_RULES_H
