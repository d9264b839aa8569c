// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/personality.h>
#include <sys/reboot.h>
#include <sys/stat.h>
#include <sys/swap.h>
#include <sys/time.h>
#include <sys/timex.h>
#include <sys/utsname.h>

#include <csetjmp>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <thread>

#include "fakes/escapes.h"

namespace {

constexpr const char* kNowhere = "/there/is/none";

bool try_call(long number, long first = 0, long second = 0, long third = 0, long fourth = 0) {
  const long result = syscall(number, first, second, third, fourth, 0);
  return let_through(result);
}

long address(const void* pointer) {
  return reinterpret_cast<long>(pointer);
}

bool mount_something() {
  return let_through(mount("none", kNowhere, "tmpfs", 0, nullptr)) ||
         let_through(umount2(kNowhere, 0)) || try_call(SYS_fsopen, address("none")) ||
         try_call(SYS_open_tree, -1, address(kNowhere)) ||
         try_call(SYS_move_mount, -1, address(kNowhere), -1, address(kNowhere));
}

bool change_root() {
  return let_through(chroot(kNowhere)) ||
         try_call(SYS_pivot_root, address(kNowhere), address(kNowhere));
}

bool use_file_handles() {
  struct {
    unsigned bytes = 0;
    int type = 0;
  } handle;
  int mount_number = 0;
  return try_call(SYS_name_to_handle_at, AT_FDCWD, address("/"), address(&handle),
                  address(&mount_number)) ||
         try_call(SYS_open_by_handle_at, AT_FDCWD, address(&handle));
}

bool watch_files() {
  return try_call(SYS_inotify_init1, -1) || try_call(SYS_fanotify_init, -1);
}

bool use_keys() {
  constexpr long kGetKeyring = 0;
  constexpr long kSession = -3;
  return try_call(SYS_keyctl, kGetKeyring, kSession) ||
         try_call(SYS_add_key, address("none"), address("none")) ||
         try_call(SYS_request_key, address("none"), address("none"));
}

bool load_bpf() {
  return try_call(SYS_bpf, -1);
}

bool measure() {
  unsigned char attributes[128] = {};
  return try_call(SYS_perf_event_open, address(attributes), -1, -1, -1);
}

bool handle_page_faults() {
  const long descriptor = syscall(SYS_userfaultfd, 0);
  if (descriptor >= 0) close(static_cast<int>(descriptor));
  return let_through(descriptor);
}

bool use_io_uring() {
  unsigned char parameters[256] = {};
  const long ring = syscall(SYS_io_uring_setup, 1, parameters);
  if (ring >= 0) close(static_cast<int>(ring));
  return let_through(ring) || try_call(SYS_io_uring_enter, -1) ||
         try_call(SYS_io_uring_register, -1);
}

bool make_file_in_memory() {
  const int memory = memfd_create("probe", 0);
  if (memory >= 0) close(memory);
  return memory >= 0;
}

bool set_clock() {
  const timespec no_time = {0, -1};
  struct timex adjustment = {};
  return try_call(SYS_clock_settime, CLOCK_REALTIME, address(&no_time)) ||
         try_call(SYS_settimeofday) || try_call(SYS_adjtimex, address(&adjustment));
}

bool set_name() {
  struct utsname names = {};
  uname(&names);
  return let_through(sethostname(names.nodename, std::strlen(names.nodename))) ||
         let_through(setdomainname(names.domainname, std::strlen(names.domainname)));
}

bool set_personality() {
  return personality(0xFFFFFFFF) >= 0;
}

bool manage_swap() {
  return let_through(swapon(kNowhere, 0)) || let_through(swapoff(kNowhere));
}

bool restart_machine() {
  constexpr long kNoMagic = 1;
  return try_call(SYS_reboot, kNoMagic) || try_call(SYS_kexec_load, 0, -1) ||
         try_call(SYS_kexec_file_load, -1, -1);
}

bool load_module() {
  return try_call(SYS_init_module) || try_call(SYS_finit_module, -1) ||
         try_call(SYS_delete_module, address(kNowhere));
}

bool account() {
  return let_through(acct(kNowhere));
}

bool set_quota() {
  return try_call(SYS_quotactl, -1, address(kNowhere));
}

bool read_kernel_log() {
  constexpr long kSize = 10;
  return try_call(SYS_syslog, kSize);
}

#if defined(__x86_64__)
bool reach_ports() {
  return try_call(SYS_iopl, 4) || try_call(SYS_ioperm, 0, 0);
}

bool call_as_x32() {
  constexpr long kX32 = 0x40000000;
  return syscall(kX32 + SYS_getpid) > 0;
}

sigjmp_buf no_interrupt;

// The processor traps where the kernel has no calls of 32-bit programs.
bool call_as_32_bit_program() {
  struct sigaction action = {};
  struct sigaction before = {};
  action.sa_handler = [](int) { siglongjmp(no_interrupt, 1); };
  sigaction(SIGSEGV, &action, &before);
  long result = -1;
  if (sigsetjmp(no_interrupt, 1) == 0) {
    constexpr long kGetpid = 20;
    __asm__ volatile("int $0x80"
                     : "=a"(result)
                     : "a"(kGetpid)
                     : "memory", "r8", "r9", "r10", "r11");
  }
  sigaction(SIGSEGV, &before, nullptr);
  return result > 0;
}
#endif

// ---- what must go on working ----

bool run_threads() {
  int sum = 0;
  std::thread([&sum] { sum = 1; }).join();
  return sum == 1;
}

bool write_scratch() {
  const int file = open("scratch-file", O_RDWR | O_CREAT | O_TRUNC, 0600);
  const bool done = file >= 0 && write(file, "x", 1) == 1 && ftruncate(file, 0) == 0 &&
                    unlink("scratch-file") == 0 && mkdir("scratch-folder", 0700) == 0 &&
                    rmdir("scratch-folder") == 0;
  close(file);
  return done;
}

bool know_itself() {
  for (const char* name : {"/proc/self/maps", "/proc/self/status", "/proc/cpuinfo"}) {
    const int file = open(name, O_RDONLY);
    char byte = 0;
    if (file < 0 || read(file, &byte, 1) != 1 || close(file) != 0) return false;
  }
  cpu_set_t cores;
  return sched_getaffinity(0, sizeof cores, &cores) == 0 &&
         sched_setaffinity(0, sizeof cores, &cores) == 0;
}

bool make_code() {
  void* const memory =
      mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return memory != MAP_FAILED && mprotect(memory, 4096, PROT_READ | PROT_EXEC) == 0 &&
         munmap(memory, 4096) == 0;
}

bool signal_itself() {
  static volatile std::sig_atomic_t seen = 0;
  std::signal(SIGUSR1, [](int) { seen = 1; });
  std::raise(SIGUSR1);
  return seen == 1 && kill(getpid(), 0) == 0;
}

}  // namespace

const std::vector<Escape>& escapes_by_the_kernel() {
  using enum WithoutSandbox;
  static const std::vector<Escape> escapes = {
    {"mount a file system", kForRoot, mount_something},
    {"change the root folder", kForRoot, change_root},
    {"open files by handle", kPossible, use_file_handles},
    {"watch files", kPossible, watch_files},
    {"use the kernel's keys", kPerhaps, use_keys},
    {"load a BPF program", kPerhaps, load_bpf},
    {"open performance counters", kPerhaps, measure},
    {"handle page faults", kPerhaps, handle_page_faults},
    {"use io_uring", kPerhaps, use_io_uring},
    {"make a file in memory", kPossible, make_file_in_memory},
    {"set the clock", kPossible, set_clock},
    {"set the machine's name", kForRoot, set_name},
    {"read or set its personality", kPossible, set_personality},
    {"manage swap", kForRoot, manage_swap},
    {"restart the machine", kForRoot, restart_machine},
    {"load a kernel module", kPerhaps, load_module},
    {"switch on accounting", kPerhaps, account},
    {"set quotas", kPerhaps, set_quota},
    {"read the kernel's log", kPerhaps, read_kernel_log},
#if defined(__x86_64__)
    {"reach input and output ports", kPerhaps, reach_ports},
    {"call the kernel as an x32 program", kPerhaps, call_as_x32},
    {"call the kernel as a 32-bit program", kPerhaps, call_as_32_bit_program},
#endif
  };
  return escapes;
}

const std::vector<Escape>& necessities() {
  using enum WithoutSandbox;
  static const std::vector<Escape> needs = {
      {"threads", kPossible, run_threads},
      {"scratch files", kPossible, write_scratch},
      {"its own state", kPossible, know_itself},
      {"code made at run time", kPossible, make_code},
      {"signals to itself", kPossible, signal_itself},
  };
  return needs;
}
