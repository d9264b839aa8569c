// SPDX-License-Identifier: Apache-2.0
#include "supervisor/worker_process.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "exchange/error.h"
#include "supervisor/stray_processes.h"
#include "worker/worker.h"

namespace cli {
namespace {

// Engines that write to low descriptors by mistake do not meet the pipes.
constexpr int kLowestPipe = 200;

[[noreturn]] void fail(const char* what) {
  throw Error(ErrorKind::kSystem, errno, what);
}

struct Pipe {
  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) fail("a worker process (its pipes)");
    read_end = ends[0];
    write_end = ends[1];
  }
  int read_end;
  int write_end;
};

// Orders go one way: what the worker writes to its end is refused.
struct OrderSockets {
  OrderSockets() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) fail("a pipe to a worker");
    supervisor_end = ends[0];
    worker_end = ends[1];
    shutdown(supervisor_end, SHUT_RD);
  }
  int supervisor_end;
  int worker_end;
};

void set_nonblocking(int descriptor) {
  fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
}

void close_if_open(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

// Whatever the program that started this one has left open is none of a worker's business.
void close_at_exec() {
  constexpr unsigned kFirst = STDERR_FILENO + 1;
  if (close_range(kFirst, ~0U, CLOSE_RANGE_CLOEXEC) == 0) return;
  constexpr unsigned kLast = 65535;  // a kernel without close_range
  for (unsigned number = kFirst; number <= kLast; ++number) {
    fcntl(static_cast<int>(number), F_SETFD, FD_CLOEXEC);
  }
}

// Runs in the child; never returns.
[[noreturn]] void become_worker(const std::string& scratch, pid_t supervisor, int orders,
                                int events, int log) {
  setsid();  // no terminal: its Ctrl-C is for the supervisor, and nobody types into it
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != supervisor) _exit(1);  // it died before the line above
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
  const int nothing = open("/dev/null", O_RDONLY);
  dup2(nothing, STDIN_FILENO);
  dup2(log, STDOUT_FILENO);
  dup2(log, STDERR_FILENO);
  close_at_exec();
  const std::string from = std::to_string(fcntl(orders, F_DUPFD, kLowestPipe));
  const std::string to = std::to_string(fcntl(events, F_DUPFD, kLowestPipe));
  setenv(kScratchVariable, scratch.c_str(), 1);  // the only folder that it may write to
  if (chdir(scratch.c_str()) == 0) {
    execl("/proc/self/exe", "zelk", kWorkerArgument, from.c_str(), to.c_str(), nullptr);
  }
  _exit(1);
}

std::string signal_text(int number) {
  const char* const name = sigabbrev_np(number);
  return name != nullptr ? fmt::format("SIG{}", name) : fmt::format("signal {}", number);
}

}  // namespace

WorkerProcess::WorkerProcess(const std::string& scratch, bool echo)
    : _scratch(scratch), _echo(echo) {
  make_folders(scratch);
  const OrderSockets orders;
  const Pipe events;
  const Pipe log;
  const pid_t supervisor = getpid();
  _pid = fork();
  if (_pid < 0) fail("a worker process");
  if (_pid == 0)
    become_worker(scratch, supervisor, orders.worker_end, events.write_end, log.write_end);
  for (const int theirs : {orders.worker_end, events.write_end, log.write_end}) close(theirs);
  _orders = orders.supervisor_end;
  _events = events.read_end;
  _log = log.read_end;
  for (const int ours : {_orders, _events, _log}) set_nonblocking(ours);
}

WorkerProcess::~WorkerProcess() {
  kill();
  reap();
  for (int* descriptor : {&_orders, &_events, &_log}) close_if_open(*descriptor);
  std::error_code ignored;
  std::filesystem::remove_all(_scratch, ignored);
}

void WorkerProcess::send(OrderWithDocument order) {
  _sender.add(std::move(order));
  _sender.send(_orders);
}

void WorkerProcess::tidy() const {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(_scratch, ignored)) {
    std::filesystem::remove_all(entry.path(), ignored);
  }
}

void WorkerProcess::watch(std::vector<pollfd>& watched) const {
  watched.push_back({_events, POLLIN, 0});
  if (_log >= 0) watched.push_back({_log, POLLIN, 0});
  if (_sender.has_pending()) watched.push_back({_orders, POLLOUT, 0});
}

std::vector<Event> WorkerProcess::exchange() {
  std::vector<Event> events;
  _sender.send(_orders);
  receive(events);
  receive_log();  // after the events, so that what was printed before them has been read as well
  return events;
}

void WorkerProcess::receive(std::vector<Event>& events) {
  std::array<char, 1 << 16> buffer;
  ssize_t count = 0;
  while ((count = read(_events, buffer.data(), buffer.size())) > 0) {
    _frames.feed({buffer.data(), static_cast<std::size_t>(count)});
    while (const std::optional<std::string> body = _frames.next()) {
      std::optional<Event> event = decode_event(*body);
      if (!event) continue;
      if (std::holds_alternative<PageStarted>(*event)) _was_short_of_memory = false;
      if (std::holds_alternative<MemoryShort>(*event)) _was_short_of_memory = true;
      events.push_back(std::move(*event));
    }
  }
  if (count == 0 || (errno != EAGAIN && errno != EINTR)) _ended = true;
}

// A worker that prints without end is read at most this much at a time; the rest waits.
void WorkerProcess::receive_log() {
  std::array<char, 1 << 16> buffer;
  const ssize_t count = _log < 0 ? -1 : read(_log, buffer.data(), buffer.size());
  if (count == 0) close_if_open(_log);
  if (count <= 0) return;
  const std::string text = _words.add({buffer.data(), static_cast<std::size_t>(count)});
  if (_echo) static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
}

void WorkerProcess::kill() {
  if (_reaped || _pid <= 0) return;
  ::kill(_pid, SIGKILL);  // it may not lead its group yet
  ::kill(-_pid, SIGKILL);
}

void WorkerProcess::reap() {
  if (_reaped) return;
  struct rusage usage = {};
  while (wait4(_pid, &_status, 0, &usage) < 0 && errno == EINTR) {
  }
  ::kill(-_pid, SIGKILL);  // what it has started
  end_processes_of(_scratch);
  _reaped = true;
  _peak_memory_kib = usage.ru_maxrss;
}

// An exit closes the pipe a moment before the process can be waited for.
bool WorkerProcess::runs_on() const {
  constexpr timespec kMoment = {0, 20'000'000};
  for (int attempt = 0; attempt < 10; ++attempt) {
    siginfo_t info = {};
    const int result = waitid(P_PID, static_cast<id_t>(_pid), &info, WEXITED | WNOHANG | WNOWAIT);
    if (result != 0 || info.si_pid != 0) return false;
    nanosleep(&kMoment, nullptr);
  }
  return true;
}

std::string WorkerProcess::cause_of_end(int memory_limit_mib) {
  const bool had_closed_pipe = !_reaped && runs_on();
  kill();
  reap();
  if (had_closed_pipe) return "closed its connection to the supervisor";
  if (WIFEXITED(_status))
    return fmt::format("ended by itself (exit code {})", WEXITSTATUS(_status));
  if (WTERMSIG(_status) == SIGKILL) return "was killed";
  const std::string crash = fmt::format("crashed ({})", signal_text(WTERMSIG(_status)));
  const bool was_full =
      memory_limit_mib > 0 &&
      (_was_short_of_memory || _peak_memory_kib / 1024 >= memory_limit_mib * 8 / 10);
  return was_full
             ? fmt::format("{}, short of memory: --memory-limit is {}", crash, memory_limit_mib)
             : crash;
}

}  // namespace cli
