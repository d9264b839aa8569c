// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/ipc.h>
#include <sys/mman.h>
#include <sys/msg.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <sys/wait.h>

#include <csetjmp>
#include <csignal>

#include "fakes/escapes.h"

namespace {

// What would change this process as well is tried in a child, and here when there can be none.
template <typename Attempt>
bool in_child(Attempt attempt) {
  const pid_t child = fork();
  if (child < 0) return attempt();
  if (child == 0) _exit(attempt() ? 0 : 1);
  int status = 1;
  waitpid(child, &status, 0);
  return status == 0;
}

bool start_process() {
  const pid_t child = fork();
  if (child == 0) _exit(0);
  if (child > 0) waitpid(child, nullptr, 0);
  return child > 0;
}

bool run_program() {
  return in_child([] {
    char* const arguments[] = {nullptr};
    execve("/there/is/none", arguments, arguments);
    return let_through(-1);
  });
}

bool run_from_memory() {
  return in_child([] {
    const int memory = static_cast<int>(syscall(SYS_memfd_create, "probe", 0));
    if (memory < 0) return false;
    char* const arguments[] = {nullptr};
    syscall(SYS_execveat, memory, "", arguments, arguments, AT_EMPTY_PATH);
    return let_through(-1);
  });
}

bool leave_session() {
  return in_child([] { return setpgid(0, 0) == 0 || setsid() > 0; });
}

bool outlive_supervisor() {
  return in_child([] { return prctl(PR_SET_PDEATHSIG, 0) == 0; });
}

bool change_user() {
  const auto same = static_cast<uid_t>(-1);
  return syscall(SYS_setresuid, same, same, same) == 0 ||
         syscall(SYS_setresgid, same, same, same) == 0;
}

bool signal_others() {
  return kill(getppid(), 0) == 0 || kill(-1, 0) == 0 ||
         syscall(SYS_tgkill, getppid(), getppid(), 0) == 0 || syscall(SYS_tkill, getppid(), 0) == 0;
}

bool queue_signal() {
  siginfo_t info = {};
  info.si_code = SI_QUEUE;
  return syscall(SYS_rt_sigqueueinfo, getppid(), 0, &info) == 0 ||
         syscall(SYS_rt_tgsigqueueinfo, getppid(), getppid(), 0, &info) == 0;
}

bool signal_by_descriptor() {
  int ends[2];
  if (pipe(ends) != 0) return false;
  struct f_owner_ex owner = {F_OWNER_PID, getppid()};
  int on = 1;
  int parent = getppid();
  const bool done = fcntl(ends[0], F_SETOWN, getppid()) == 0 ||
                    fcntl(ends[0], F_SETOWN_EX, &owner) == 0 ||
                    fcntl(ends[0], F_SETSIG, SIGIO) == 0 || fcntl(ends[0], F_NOTIFY, 0) == 0 ||
                    fcntl(ends[1], F_SETFL, O_ASYNC) == 0 || ioctl(ends[1], FIOASYNC, &on) == 0 ||
                    ioctl(ends[1], 0x8901 /* FIOSETOWN */, &parent) == 0;
  close(ends[0]);
  close(ends[1]);
  return done;
}

bool trace() {
  return in_child([] { return let_through(ptrace(PTRACE_SEIZE, getppid(), nullptr, nullptr)); });
}

bool read_memory() {
  char byte = 0;
  const iovec here = {&byte, 1};
  const iovec there = {&byte, 1};
  return let_through(process_vm_readv(getppid(), &here, 1, &there, 1, 0)) ||
         let_through(process_vm_writev(getppid(), &here, 0, &there, 0, 0));
}

bool read_proc() {
  const std::string parent = "/proc/" + std::to_string(getppid());
  for (const char* name : {"/environ", "/maps", "/mem", "/cmdline"}) {
    if (const int file = open((parent + name).c_str(), O_RDONLY); file >= 0)
      return close(file) == 0;
  }
  return false;
}

bool write_proc() {
  const std::string parent = "/proc/" + std::to_string(getppid());
  for (const std::string& folder : {parent, std::string("/proc/self")}) {
    const int file = open((folder + "/oom_score_adj").c_str(), O_WRONLY);
    if (file >= 0) return close(file) == 0;
  }
  return false;
}

bool read_network_tables() {
  for (const char* name : {"/proc/net/dev", "/proc/self/net/dev", "/proc/thread-self/net/dev"}) {
    if (const int file = open(name, O_RDONLY); file >= 0) return close(file) == 0;
  }
  return false;
}

bool open_pidfd() {
  const long descriptor = syscall(SYS_pidfd_open, getppid(), 0);
  if (descriptor < 0) return false;
  syscall(SYS_pidfd_getfd, descriptor, 0, 0);
  close(static_cast<int>(descriptor));
  return true;
}

bool compare_processes() {
  return let_through(syscall(SYS_kcmp, getppid(), getppid(), 0, 0, 0));
}

bool set_limits() {
  struct rlimit limit = {};
  struct rlimit own = {};
  getrlimit(RLIMIT_NPROC, &own);
  return prlimit(getppid(), RLIMIT_NPROC, nullptr, &limit) == 0 ||
         setrlimit(RLIMIT_NPROC, &own) == 0;
}

bool set_priority() {
  return setpriority(PRIO_PROCESS, static_cast<id_t>(getppid()), 0) == 0 ||
         setpriority(PRIO_PROCESS, 0, 0) == 0 || syscall(SYS_ioprio_set, 1, getppid(), 0) == 0;
}

bool set_scheduling() {
  cpu_set_t cores;
  sched_getaffinity(getppid(), sizeof cores, &cores);
  const sched_param parameters = {};
  return sched_setaffinity(getppid(), sizeof cores, &cores) == 0 ||
         sched_setscheduler(getppid(), SCHED_OTHER, &parameters) == 0 ||
         sched_setparam(getppid(), &parameters) == 0;
}

bool share_system_v_memory() {
  const int memory = shmget(IPC_PRIVATE, 4096, 0600);
  if (memory >= 0) shmctl(memory, IPC_RMID, nullptr);
  return memory >= 0;
}

bool make_semaphores() {
  const int set = semget(IPC_PRIVATE, 1, 0600);
  if (set >= 0) semctl(set, 0, IPC_RMID);
  return set >= 0;
}

bool make_queue() {
  const int queue = msgget(IPC_PRIVATE, 0600);
  if (queue >= 0) msgctl(queue, IPC_RMID, nullptr);
  return queue >= 0;
}

bool can_have_socket(int family, int type) {
  const int descriptor = socket(family, type, 0);
  if (descriptor >= 0) close(descriptor);
  return descriptor >= 0;
}

bool open_network_socket() {
  return can_have_socket(AF_INET, SOCK_STREAM) || can_have_socket(AF_INET6, SOCK_DGRAM) ||
         can_have_socket(AF_NETLINK, SOCK_RAW);
}

bool open_local_socket() {
  int ends[2] = {-1, -1};
  const bool done =
      can_have_socket(AF_UNIX, SOCK_STREAM) || socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0;
  for (const int end : ends) {
    if (end >= 0) close(end);
  }
  return done;
}

// Orders come over a socket, which must lead nowhere else.
bool misuse_order_socket() {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  address.sun_path[1] = 'z';
  for (int descriptor = 3; descriptor < 1024; ++descriptor) {
    int type = 0;
    socklen_t size = sizeof type;
    if (getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &size) == 0 &&
        send(descriptor, "x", 1, MSG_NOSIGNAL) == 1) {
      return true;
    }
    if (connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
      return true;
  }
  return false;
}

bool make_user_namespace() {
  return in_child([] { return unshare(CLONE_NEWUSER) == 0; });
}

bool clone_into_user_namespace() {
  const long child =
      syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, nullptr, nullptr, nullptr, nullptr);
  if (child == 0) _exit(0);
  if (child > 0) waitpid(static_cast<pid_t>(child), nullptr, 0);
  return child > 0;
}

bool clone_with_clone3() {
  struct {
    std::uint64_t flags = CLONE_NEWUSER;
    std::uint64_t descriptors[3] = {};
    std::uint64_t exit_signal = SIGCHLD;
    std::uint64_t rest[3] = {};
  } arguments;
  const long child = syscall(SYS_clone3, &arguments, sizeof arguments);
  if (child == 0) _exit(0);
  if (child > 0) waitpid(static_cast<pid_t>(child), nullptr, 0);
  return child > 0;
}

bool enter_namespace() {
  const int own = open("/proc/self/ns/uts", O_RDONLY);
  const bool done = setns(own, 0) == 0;
  if (own >= 0) close(own);
  return done;
}

}  // namespace

const std::vector<Escape>& escapes_by_processes() {
  using enum WithoutSandbox;
  static const std::vector<Escape> escapes = {
      {"start a process", kPossible, start_process},
      {"run a program", kPossible, run_program},
      {"run a program from memory", kPossible, run_from_memory},
      {"leave the session", kPossible, leave_session},
      {"outlive the supervisor", kPossible, outlive_supervisor},
      {"change its user", kPossible, change_user},
      {"signal other processes", kPossible, signal_others},
      {"queue a signal for another process", kPossible, queue_signal},
      {"have signals sent by a descriptor", kPossible, signal_by_descriptor},
      {"trace another process", kPerhaps, trace},
      {"reach another process's memory", kPerhaps, read_memory},
      {"read /proc of another process", kPossible, read_proc},
      {"write to /proc", kPossible, write_proc},
      {"read the network's tables in /proc", kPossible, read_network_tables},
      {"take descriptors of another process", kPerhaps, open_pidfd},
      {"compare processes", kPerhaps, compare_processes},
      {"set limits, its own or another's", kPossible, set_limits},
      {"set priorities", kPossible, set_priority},
      {"set another process's scheduling", kPossible, set_scheduling},
      {"make System V shared memory", kPerhaps, share_system_v_memory},
      {"make System V semaphores", kPerhaps, make_semaphores},
      {"make a System V message queue", kPerhaps, make_queue},
      {"open a network socket", kPossible, open_network_socket},
      {"open a local socket", kPossible, open_local_socket},
      {"send over the socket of its orders", kClosed, misuse_order_socket},
      {"make a user namespace", kPerhaps, make_user_namespace},
      {"clone into a user namespace", kPerhaps, clone_into_user_namespace},
      {"clone into a user namespace by clone3", kPerhaps, clone_with_clone3},
      {"enter a namespace", kForRoot, enter_namespace},
  };
  return escapes;
}
