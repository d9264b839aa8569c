// SPDX-License-Identifier: Apache-2.0
#include "worker/system_call_filter.h"

#include <fcntl.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <vector>

namespace cli {
namespace {

// What decoders, engines with their threads and the C library need. Everything else does not exist
// for a worker, calls of newer kernels included, whose names this list cannot know. What is left
// out on purpose although programs use it: calls that Landlock does not watch and that change files
// (owner, permissions, times, attributes, truncate by name), locks, which bind other programs,
// second names of files, processes, sockets, memory that is shared by name, settings of other
// processes.
constexpr const char* kAllowed[] = {
    // open files; fcntl and ioctl are below
    "read", "write", "readv", "writev", "pread64", "pwrite64", "preadv", "pwritev", "preadv2",
    "pwritev2", "lseek", "_llseek", "close", "close_range", "dup", "dup2", "dup3", "fsync",
    "fdatasync", "ftruncate", "fallocate", "fadvise64", "readahead", "sync_file_range", "sendfile",
    "copy_file_range", "fstat", "fstatfs", "getdents", "getdents64", "fchdir",
    // files by name, which Landlock watches; open and openat are below
    "stat", "lstat", "newfstatat", "statx", "statfs", "access", "faccessat", "faccessat2",
    "readlink", "readlinkat", "getcwd", "chdir", "mkdir", "mkdirat", "rmdir", "unlink", "unlinkat",
    "rename", "renameat", "renameat2", "umask",
    // waiting, pipes of its own, and the socket that orders and documents come from
    "poll", "ppoll", "select", "pselect6", "epoll_create", "epoll_create1", "epoll_ctl",
    "epoll_wait", "epoll_pwait", "epoll_pwait2", "eventfd", "eventfd2", "pipe", "pipe2", "recvmsg",
    // memory
    "brk", "mmap", "munmap", "mremap", "mprotect", "madvise", "mincore", "msync", "membarrier",
    "pkey_alloc", "pkey_free", "pkey_mprotect", "mbind", "set_mempolicy", "get_mempolicy",
    // threads; clone is below
    "futex", "futex_waitv", "futex_wake", "futex_wait", "futex_requeue", "set_robust_list",
    "set_tid_address", "rseq", "arch_prctl", "gettid", "sched_yield", "sched_getaffinity",
    "sched_getparam", "sched_getscheduler", "sched_get_priority_max", "sched_get_priority_min",
    "getcpu", "exit", "exit_group", "wait4", "waitid",
    // signals to itself; kill and tgkill are below
    "rt_sigaction", "rt_sigprocmask", "rt_sigreturn", "rt_sigpending", "rt_sigsuspend",
    "rt_sigtimedwait", "sigaltstack", "signalfd4", "restart_syscall", "pause",
    // time
    "clock_gettime", "clock_getres", "clock_nanosleep", "nanosleep", "gettimeofday", "time",
    "times", "alarm", "getitimer", "setitimer", "timer_create", "timer_settime", "timer_gettime",
    "timer_getoverrun", "timer_delete", "timerfd_create", "timerfd_settime", "timerfd_gettime",
    // what it may know of itself and the machine; prctl and prlimit64 are below
    "getpid", "getppid", "getpgid", "getpgrp", "getsid", "getuid", "geteuid", "getgid", "getegid",
    "getresuid", "getresgid", "getgroups", "capget", "getrusage", "getrlimit", "uname", "sysinfo",
    "getrandom"};

constexpr std::uint32_t kRefuse = SCMP_ACT_ERRNO(EPERM);
// As on a kernel that lacks a call: the C library and others then do without.
constexpr std::uint32_t kUnknown = SCMP_ACT_ERRNO(ENOSYS);

#if defined(__SANITIZE_ADDRESS__)
// The leak sanitizer traces its own process at the end.
constexpr const char* kForSanitizers[] = {"ptrace", "prctl", "clone", "kill"};
#endif

// Rules are told apart by one argument: which one, and the values of it that are let through.
struct OneOf {
  const char* call;
  unsigned argument;
  std::vector<std::uint64_t> values;
};

std::vector<OneOf> rules_of_values() {
  const auto self = static_cast<std::uint64_t>(getpid());
  return {
      {"kill", 0, {self}},
      {"tgkill", 0, {self}},
      {"sched_setaffinity", 0, {0}},
      {"fcntl", 1, {F_DUPFD, F_DUPFD_CLOEXEC, F_GETFD, F_SETFD, F_GETFL}},
      {"ioctl", 1, {TCGETS, TIOCGWINSZ, FIONREAD, FIONBIO, FIOCLEX, FIONCLEX}},
      {"prctl",
       0,
       {PR_SET_NAME, PR_GET_NAME, PR_GET_DUMPABLE, PR_CAPBSET_READ, PR_GET_NO_NEW_PRIVS,
        PR_GET_SECCOMP, PR_GET_TIMERSLACK, 0x53564d41 /* PR_SET_VMA */}},
  };
}

struct Release {
  void operator()(void* filter) const { seccomp_release(filter); }
};

bool allow(scmp_filter_ctx filter, const char* name, const std::vector<scmp_arg_cmp>& conditions) {
  const int number = seccomp_syscall_resolve_name(name);
  if (number == __NR_SCMP_ERROR) return true;  // not a call of this machine
  return seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, number,
                                static_cast<unsigned>(conditions.size()), conditions.data()) == 0;
}

scmp_arg_cmp is(unsigned argument, std::uint64_t value) {
  return {argument, SCMP_CMP_EQ, value, 0};
}

scmp_arg_cmp masked(unsigned argument, std::uint64_t mask, std::uint64_t value) {
  return {argument, SCMP_CMP_MASKED_EQ, mask, value};
}

// A file that is opened for reading may not be emptied on the way: early versions of Landlock take
// that for reading.
bool allow_opening(scmp_filter_ctx filter, const char* name, unsigned flags) {
  return allow(filter, name, {masked(flags, O_TRUNC, 0)}) &&
         allow(filter, name, {masked(flags, O_TRUNC | O_ACCMODE, O_TRUNC | O_WRONLY)}) &&
         allow(filter, name, {masked(flags, O_TRUNC | O_ACCMODE, O_TRUNC | O_RDWR)});
}

// Threads of its own, in no namespace of their own; no processes.
bool allow_threads(scmp_filter_ctx filter) {
  constexpr std::uint64_t kNamespaces = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS |
                                        CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID | CLONE_NEWNET;
  return allow(filter, "clone", {masked(0, CLONE_THREAD | kNamespaces, CLONE_THREAD)});
}

bool allow_with_arguments(scmp_filter_ctx filter) {
  for (const OneOf& rule : rules_of_values()) {
    for (const std::uint64_t value : rule.values) {
      if (!allow(filter, rule.call, {is(rule.argument, value)})) return false;
    }
  }
  return allow_opening(filter, "open", 1) && allow_opening(filter, "openat", 2) &&
         allow_threads(filter) &&
         // signals when something can be read are for who sets them up elsewhere
         allow(filter, "fcntl", {is(1, F_SETFL), masked(2, O_ASYNC, 0)}) &&
         // its own limits may be read and not set
         allow(filter, "prlimit64", {is(0, 0), is(2, 0)});
}

// Refused in so many words, where ENOSYS would be taken for an old kernel.
bool refuse(scmp_filter_ctx filter) {
  for (const char* name :
       {"execve",  "execveat", "fork",      "vfork",    "socket",    "socketpair",
        "connect", "ptrace",   "setrlimit", "chmod",    "fchmod",    "fchmodat",
        "chown",   "fchown",   "lchown",    "fchownat", "utimensat", "link",
        "linkat",  "symlink",  "symlinkat", "truncate", "mknod",     "mknodat"}) {
    const int number = seccomp_syscall_resolve_name(name);
    if (number < 0) continue;
    if (seccomp_rule_add(filter, kRefuse, number, 0) != 0) return false;
  }
  return true;
}

}  // namespace

bool filter_system_calls() {
  const std::unique_ptr<void, Release> filter(seccomp_init(kUnknown));
  if (filter == nullptr) return false;
  seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1);  // the engine's threads too
  seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_OPTIMIZE, 2);
  // Calls of other kinds of programs (32 bit, x32), to which the list does not apply.
  seccomp_attr_set(filter.get(), SCMP_FLTATR_ACT_BADARCH, kUnknown);
  for (const char* name : kAllowed) {
    if (!allow(filter.get(), name, {})) return false;
  }
#if defined(__SANITIZE_ADDRESS__)
  for (const char* name : kForSanitizers) {
    if (!allow(filter.get(), name, {})) return false;
  }
#endif
  return allow_with_arguments(filter.get()) && refuse(filter.get()) &&
         seccomp_load(filter.get()) == 0;
}

}  // namespace cli
