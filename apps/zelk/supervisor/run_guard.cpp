// SPDX-License-Identifier: Apache-2.0
#include "supervisor/run_guard.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <system_error>

#include "supervisor/stray_processes.h"

namespace cli {
namespace {

// Nobody waits for the end of a pipe that the guard holds as well.
void close_all_but(int first, int second) {
  const auto [low, high] = std::minmax(first, second);
  if (low > 0) close_range(0, static_cast<unsigned>(low) - 1, 0);
  if (high > low + 1) {
    close_range(static_cast<unsigned>(low) + 1, static_cast<unsigned>(high) - 1, 0);
  }
  close_range(static_cast<unsigned>(high) + 1, ~0U, 0);
}

// Runs in the child; never returns. The lock stays, so that no other run removes the folder
// meanwhile.
[[noreturn]] void stand_guard(const std::string& folder, int lock, int line) {
  setsid();
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_IGN);
  close_all_but(std::max(lock, 0), line);
  if (chdir("/") != 0) _exit(1);
  char word = 0;
  ssize_t count = 0;
  do {
    count = read(line, &word, 1);
  } while (count < 0 && errno == EINTR);
  if (count == 0) {
    end_processes_of(folder);
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }
  _exit(0);
}

}  // namespace

RunGuard::RunGuard(const RunFolder& folder) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return;
  Descriptor theirs(ends[0]);
  _line = Descriptor(ends[1]);
  _guard = fork();
  if (_guard == 0) {
    _line.close();
    stand_guard(folder.path(), folder.lock(), theirs.number());
  }
}

RunGuard::~RunGuard() {
  if (_guard < 0) return;
  static_cast<void>(!write(_line.number(), "", 1));
  while (waitpid(_guard, nullptr, 0) < 0 && errno == EINTR) continue;
}

}  // namespace cli
