// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PROCESS_STATE_H
#define ZELK_APPS_WORKER_PROCESS_STATE_H

#include <sys/resource.h>
#include <sys/types.h>

#include <array>
#include <clocale>
#include <string>
#include <vector>

namespace cli {

// What one page's recognition could change for all later pages and documents of the process: the
// working directory, the mask of new files, the locale, the environment, limits, descriptors.
class ProcessState {
 public:
  // Notes the state; `folder` is to be the working directory from here on.
  explicit ProcessState(std::string folder);

  // Puts back what was changed. Throws std::runtime_error when that cannot be done, or when
  // descriptors have run short: then the process is of no further use.
  void restore() const;

 private:
  void restore_limits() const;

  std::string _folder;
  mode_t _mask;
  std::string _locale;
  locale_t _thread_locale;
  std::vector<std::string> _environment;
  std::array<struct rlimit, RLIM_NLIMITS> _limits = {};
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PROCESS_STATE_H
