// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_RUNNER_H
#define ZELK_ENGINE_CHECK_RUNNER_H

#include <chrono>
#include <string>

#include "check.h"

namespace engine_check {

struct Finding {
  std::string check;
  Severity severity = Severity::kPass;
  std::string expected;
  std::string seen;
  long milliseconds = 0;
};

// Runs one check in a process of its own, which is killed with all that it started when the
// subject's limit has passed. A crash, an exit, an exception or no end is a failure of that check.
// Standard output of that process is a file in the subject's scratch folder; its standard error is
// dropped unless `verbose`.
Finding run_check(const Check& check, const Subject& subject, bool verbose);

// How a process ended, in words: "ended by signal 11 (Segmentation fault)", "exit code 3".
std::string end_in_words(int wait_status);

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_RUNNER_H
