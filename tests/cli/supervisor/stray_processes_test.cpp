// SPDX-License-Identifier: Apache-2.0
#include "supervisor/stray_processes.h"

#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <csignal>

namespace {

pid_t start_sleeper(const std::string& scratch) {
  std::string variable = "TMPDIR=" + scratch;
  std::string program = "sleep";
  std::string seconds = "600";
  char* const arguments[] = {program.data(), seconds.data(), nullptr};
  char* const environment[] = {variable.data(), nullptr};
  pid_t process = -1;
  EXPECT_EQ(posix_spawnp(&process, "sleep", nullptr, nullptr, arguments, environment), 0);
  return process;
}

int signal_that_ended(pid_t process) {
  int status = 0;
  waitpid(process, &status, 0);
  return WTERMSIG(status);
}

TEST(StrayProcesses, AreKnownByTheirScratchFolderAndBelow) {
  const std::string run = "/there/is/none/zelk-run-" + std::to_string(getpid());
  const pid_t first = start_sleeper(run + "/worker-1");
  const pid_t deeper = start_sleeper(run + "/worker-1/deeper");
  const pid_t tenth = start_sleeper(run + "/worker-10");
  cli::end_processes_of(run + "/worker-1");
  EXPECT_EQ(signal_that_ended(first), SIGKILL);
  EXPECT_EQ(signal_that_ended(deeper), SIGKILL);
  EXPECT_EQ(waitpid(tenth, nullptr, WNOHANG), 0) << "another worker's";
  cli::end_processes_of(run);
  EXPECT_EQ(signal_that_ended(tenth), SIGKILL);
}

}  // namespace
