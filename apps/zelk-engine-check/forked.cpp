// SPDX-License-Identifier: Apache-2.0
#include "forked.h"

#include <fmt/format.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

#include "runner.h"

namespace engine_check {

bool wait_until(int process, std::chrono::steady_clock::time_point deadline, int& status) {
  while (waitpid(process, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() >= deadline) {
      kill(-process, SIGKILL);
      kill(process, SIGKILL);
      waitpid(process, &status, 0);
      return false;
    }
    usleep(1000);
  }
  return true;
}

ForkedEnd run_forked(std::chrono::milliseconds limit, const std::function<void()>& function) {
  const auto deadline = std::chrono::steady_clock::now() + limit;
  const pid_t process = fork();
  if (process < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (process == 0) {
    try {
      function();
    } catch (...) {
      _exit(EXIT_FAILURE);
    }
    _exit(EXIT_SUCCESS);
  }
  int status = 0;
  if (!wait_until(process, deadline, status)) {
    return {fmt::format("it had no end within {} s", static_cast<double>(limit.count()) / 1000)};
  }
  return {status == 0 ? "" : "it " + end_in_words(status)};
}

}  // namespace engine_check
