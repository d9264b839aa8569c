// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/Refusals.h"

#include <dlfcn.h>
#include <iconv.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

struct Plan {
  int let_through = -1;  // calls until the refusal; negative when none is planned
  int reason = 0;
};

std::array<Plan, 5> g_plans;

Plan& plan_of(SystemFunction function) {
  return g_plans[static_cast<std::size_t>(function)];
}

bool is_refused(SystemFunction function) {
  Plan& plan = plan_of(function);
  if (plan.let_through < 0 || plan.let_through-- > 0) return false;
  errno = plan.reason;
  return true;
}

// Memory, or null.
void* allocate(std::size_t size) {
  return is_refused(SystemFunction::kAllocation) ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* allocate_or_throw(std::size_t size) {
  void* const memory = allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

Refusal::Refusal(SystemFunction function, int reason, int let_through) : _function(function) {
  plan_of(_function) = {let_through, reason};
}

Refusal::~Refusal() {
  plan_of(_function) = {};
}

bool Refusal::has_happened() const {
  return plan_of(_function).let_through < 0;
}

// ---- what the program calls instead of the system's ---------------------------------------------

void* operator new(std::size_t size) {
  return allocate_or_throw(size);
}
void* operator new[](std::size_t size) {
  return allocate_or_throw(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}

extern "C" {

iconv_t iconv_open(const char* to, const char* from) {
  if (is_refused(SystemFunction::kIconvOpen)) return reinterpret_cast<iconv_t>(-1);
  static void* const systems = dlsym(RTLD_NEXT, "iconv_open");
  return reinterpret_cast<decltype(&iconv_open)>(systems)(to, from);
}

int fchmod(int descriptor, mode_t mode) {
  if (is_refused(SystemFunction::kFchmod)) return -1;
  return static_cast<int>(syscall(SYS_fchmod, descriptor, mode));
}

int fsync(int descriptor) {
  if (is_refused(SystemFunction::kFsync)) return -1;
  return static_cast<int>(syscall(SYS_fsync, descriptor));
}

ssize_t write(int descriptor, const void* bytes, std::size_t size) {
  if (is_refused(SystemFunction::kWrite)) return -1;
  return syscall(SYS_write, descriptor, bytes, size);
}
}
