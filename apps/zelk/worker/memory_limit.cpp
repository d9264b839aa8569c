// SPDX-License-Identifier: Apache-2.0
#include "worker/memory_limit.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <new>
#include <string>

#include "exchange/frames.h"
#include "exchange/messages.h"

namespace cli {
namespace {

constexpr std::size_t kStackSize = std::size_t{64} << 10;

// Handlers can be given nothing, and may not allocate.
struct Watch {
  std::uint64_t limit = 0;  // bytes
  int events = -1;
  std::array<char, 64> frame = {};  // MemoryShort, ready to be sent
  std::size_t frame_size = 0;
  std::atomic<bool> was_short = false;
  std::array<char, kStackSize> stack = {};  // an overflow of the usual one is a crash too
};
Watch watch;

void tell() {
  static_cast<void>(!write(watch.events, watch.frame.data(), watch.frame_size));
}

[[noreturn]] void refuse_memory() {
  if (!watch.was_short.exchange(true)) tell();
  throw std::bad_alloc();
}

// C libraries end the process themselves, or fall over the null pointer.
void crash(int number) {
  constexpr std::uint64_t kNearTheLimit = 5;  // less than this part of it is left
  if (limit_forbids(watch.limit / kNearTheLimit)) tell();
  std::signal(number, SIG_DFL);
  raise(number);
}

void watch_for_crashes() {
  stack_t stack = {};
  stack.ss_sp = watch.stack.data();
  stack.ss_size = watch.stack.size();
  sigaltstack(&stack, nullptr);
  struct sigaction action = {};
  action.sa_handler = crash;
  action.sa_flags = SA_ONSTACK | SA_NODEFER;
  for (const int number : {SIGABRT, SIGSEGV, SIGBUS, SIGILL, SIGTRAP}) {
    sigaction(number, &action, nullptr);
  }
}

}  // namespace

void limit_memory(int mebibytes, int events) {
#if defined(__SANITIZE_ADDRESS__)
  return;  // its shadow takes terabytes of address space
#endif
  if (mebibytes <= 0) return;
  watch.limit = static_cast<std::uint64_t>(mebibytes) << 20;
  watch.events = events;
  const std::string frame = encode_frame(encode_event(MemoryShort{}));
  watch.frame_size = std::min(frame.size(), watch.frame.size());
  std::copy_n(frame.data(), watch.frame_size, watch.frame.data());
  const struct rlimit limit = {watch.limit, watch.limit};
  setrlimit(RLIMIT_AS, &limit);
  std::set_new_handler(refuse_memory);
  watch_for_crashes();
}

bool limit_forbids(std::uint64_t bytes) {
  if (watch.limit == 0 || bytes == 0) return false;
  void* const room =
      mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (room == MAP_FAILED) return true;
  munmap(room, bytes);
  return false;
}

bool take_memory_was_short() {
  return watch.was_short.exchange(false);
}

}  // namespace cli
