// SPDX-License-Identifier: Apache-2.0
#include "worker/system_call_filter.h"

#include <seccomp.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <string_view>

namespace cli {
namespace {

// Names, so that a library that does not know a call of a newer kernel passes over it.
constexpr const char* kRefused[] = {
    // sockets
    "socket", "socketpair", "connect", "bind", "listen", "accept", "accept4",
    // programs, other processes
    "execve", "execveat", "ptrace", "process_vm_readv", "process_vm_writev", "process_madvise",
    "pidfd_open", "pidfd_getfd", "pidfd_send_signal", "rt_sigqueueinfo", "rt_tgsigqueueinfo",
    "tkill", "kcmp", "setpgid", "setsid", "unshare", "setns",
    // file systems
    "mount", "umount", "umount2", "pivot_root", "chroot", "open_tree", "move_mount", "fsopen",
    "fsmount", "fspick", "fsconfig", "mount_setattr", "open_by_handle_at", "name_to_handle_at",
    "quotactl", "swapon", "swapoff", "mknod", "mknodat",
    // the kernel
    "bpf", "perf_event_open", "userfaultfd", "io_uring_setup", "io_uring_enter",
    "io_uring_register", "init_module", "finit_module", "delete_module", "kexec_load",
    "kexec_file_load", "reboot", "add_key", "request_key", "keyctl", "personality", "sethostname",
    "setdomainname", "settimeofday", "clock_settime", "acct", "iopl", "ioperm", "lookup_dcookie",
    "syslog"};

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;  // the leak sanitizer traces its own process at the end
#else
constexpr bool kSanitized = false;
#endif

constexpr std::uint32_t kRefuse = SCMP_ACT_ERRNO(EPERM);

struct Release {
  void operator()(void* filter) const { seccomp_release(filter); }
};

bool refuse(scmp_filter_ctx filter, const char* name) {
  const int number = seccomp_syscall_resolve_name(name);
  return number == __NR_SCMP_ERROR || seccomp_rule_add(filter, kRefuse, number, 0) == 0;
}

// kill and tgkill, as abort() uses it, reach this process and no other.
bool keep_signals_home(scmp_filter_ctx filter) {
  const auto self = static_cast<scmp_datum_t>(getpid());
  const scmp_arg_cmp others = {0, SCMP_CMP_NE, self, 0};  // the first argument is another process
  return seccomp_rule_add_array(filter, kRefuse, SCMP_SYS(kill), 1, &others) == 0 &&
         seccomp_rule_add_array(filter, kRefuse, SCMP_SYS(tgkill), 1, &others) == 0;
}

}  // namespace

bool filter_system_calls() {
  const std::unique_ptr<void, Release> filter(seccomp_init(SCMP_ACT_ALLOW));
  if (filter == nullptr) return false;
  seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1);  // the engine's threads too
  for (const char* name : kRefused) {
    if (kSanitized && std::string_view(name) == "ptrace") continue;
    if (!refuse(filter.get(), name)) return false;
  }
  // Its arguments lie in memory, where a filter cannot look: the C library then uses clone.
  if (seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) != 0)
    return false;
  return keep_signals_home(filter.get()) && seccomp_load(filter.get()) == 0;
}

}  // namespace cli
