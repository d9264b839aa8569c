// SPDX-License-Identifier: Apache-2.0
#include "runner.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <system_error>

#include "forked.h"

namespace engine_check {
namespace {

using Clock = std::chrono::steady_clock;

void redirect(int descriptor, const std::string& path) {
  const int file = open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
  if (file >= 0) dup2(file, descriptor);
  close(file);
}

void prepare_process(const Subject& subject, bool verbose) {
  setpgid(0, 0);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit none = {0, 0};
  setrlimit(RLIMIT_CORE, &none);
  redirect(STDIN_FILENO, "/dev/null");
  redirect(STDOUT_FILENO, subject.scratch / "standard-output");
  if (!verbose) redirect(STDERR_FILENO, "/dev/null");
}

Verdict verdict_of(const Check& check, const Subject& subject) {
  Verdict verdict;
  try {
    check.run(subject, verdict);
  } catch (const std::exception& error) {
    verdict.fail(error.what());
  } catch (...) {
    verdict.fail("an exception of unknown type left the engine");
  }
  return verdict;
}

[[noreturn]] void run_and_leave(const Check& check, const Subject& subject, int pipe) {
  const Verdict verdict = verdict_of(check, subject);
  // The severity as a digit, then the words; the end of the message is a zero byte.
  std::string message = std::to_string(static_cast<int>(verdict.severity())) + verdict.seen();
  message.erase(std::remove(message.begin(), message.end(), '\0'), message.end());
  message.push_back('\0');
  if (write(pipe, message.data(), message.size()) < 0) _exit(EXIT_FAILURE);
  _exit(EXIT_SUCCESS);
}

// Reads until a zero byte, the end or the time limit.
void receive(int pipe, Clock::time_point deadline, std::string& message) {
  for (;;) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd waiting = {pipe, POLLIN, 0};
    if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) == 0) return;
    char bytes[4096];
    const ssize_t count = read(pipe, bytes, sizeof bytes);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    message.append(bytes, static_cast<std::size_t>(count));
    if (message.back() == '\0') return;
  }
}

void judge(Finding& finding, bool in_time, const std::string& message, int status,
           std::chrono::milliseconds limit) {
  if (!message.empty() && message.back() == '\0') {
    finding.severity = static_cast<Severity>(message.front() - '0');
    finding.seen = message.substr(1, message.size() - 2);
    return;
  }
  finding.severity = Severity::kFail;
  finding.seen = in_time
                     ? "the engine's process " + end_in_words(status)
                     : fmt::format("no end within {} s", static_cast<double>(limit.count()) / 1000);
}

}  // namespace

std::string end_in_words(int wait_status) {
  if (!WIFSIGNALED(wait_status)) {
    return fmt::format("ended with exit code {}", WEXITSTATUS(wait_status));
  }
  const int signal = WTERMSIG(wait_status);
  return fmt::format("was ended by signal {} ({})", signal, strsignal(signal));
}

Finding run_check(const Check& check, const Subject& subject, bool verbose) {
  const auto start = Clock::now();
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
  const pid_t process = fork();
  if (process < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (process == 0) {
    close(ends[0]);
    prepare_process(subject, verbose);
    run_and_leave(check, subject, ends[1]);
  }
  setpgid(process, process);
  close(ends[1]);
  const auto deadline = start + subject.limit;
  std::string message;
  receive(ends[0], deadline, message);
  close(ends[0]);
  int status = 0;
  const bool in_time = wait_until(process, deadline, status);
  kill(-process, SIGKILL);  // what it left behind

  Finding finding{check.name, Severity::kPass, check.expected, {}, 0};
  judge(finding, in_time, message, status, subject.limit);
  const auto took = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
  finding.milliseconds = took.count();
  return finding;
}

}  // namespace engine_check
