// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_FORKED_H
#define ZELK_ENGINE_CHECK_FORKED_H

#include <chrono>
#include <functional>
#include <string>

namespace engine_check {

// How a forked copy of this process ended.
struct ForkedEnd {
  std::string words;  // empty for exit code 0

  bool clean() const { return words.empty(); }
};

// Runs `function` in a copy of this process; the copy ends with exit code 0 when it returns, with 1
// when it throws, and is killed after `limit`.
ForkedEnd run_forked(std::chrono::milliseconds limit, const std::function<void()>& function);

// Waits for a process until the deadline, then ends it with all of its group if it leads one. False
// when that was needed.
bool wait_until(int process, std::chrono::steady_clock::time_point deadline, int& status);

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_FORKED_H
