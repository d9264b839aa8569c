// SPDX-License-Identifier: Apache-2.0
#include "worker/sandbox.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include "worker/file_rules.h"
#include "worker/system_call_filter.h"

namespace cli {
namespace {

constexpr rlim_t kLargestFile = rlim_t{16} << 30;

void set_limit(__rlimit_resource resource, rlim_t most) {
  const struct rlimit limit = {most, most};
  setrlimit(resource, &limit);
}

}  // namespace

std::string enter_sandbox(const std::vector<std::string>& readable) {
  set_limit(RLIMIT_CORE, 0);
  set_limit(RLIMIT_FSIZE, kLargestFile);
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  std::string missing;
  if (!restrict_files(readable)) missing = "Landlock, so that files are open to workers";
  if (!filter_system_calls()) {
    missing += missing.empty() ? "" : "; ";
    missing += "seccomp, so that all system calls are";
  }
  return missing;
}

}  // namespace cli
