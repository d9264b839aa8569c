// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_SUPPORT_LEAKSBYCONTRACT_H
#define ZELK_TESTS_SUPPORT_LEAKSBYCONTRACT_H

// GCC names its address sanitizer by a macro, clang by a feature.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZELK_TESTS_LOOK_FOR_LEAKS
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ZELK_TESTS_LOOK_FOR_LEAKS
#endif

#ifdef ZELK_TESTS_LOOK_FOR_LEAKS
// Of the sanitizer's runtime.
extern "C" void __lsan_disable();
extern "C" void __lsan_enable();
#endif

// While one lives, what this thread allocates is not reported as a leak. Only for what the library
// leaves open on purpose, which SECURITY.md lists; each use says which of them it is. Keep the
// scope to the call that allocates it.
class LeaksByContract {
 public:
#ifdef ZELK_TESTS_LOOK_FOR_LEAKS
  LeaksByContract() {
    __lsan_disable();
  }
  ~LeaksByContract() {
    __lsan_enable();
  }
#else
  LeaksByContract() {}
  ~LeaksByContract() {}
#endif
  LeaksByContract(const LeaksByContract&) = delete;
  LeaksByContract& operator=(const LeaksByContract&) = delete;
};

#endif  // ZELK_TESTS_SUPPORT_LEAKSBYCONTRACT_H
