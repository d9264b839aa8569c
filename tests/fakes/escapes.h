// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_FAKES_ESCAPES_H
#define ZELK_TESTS_FAKES_ESCAPES_H

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

// Ways out of the sandbox, each tried without harm: with arguments that the kernel turns down once
// it has let the call through, on files that are there for it, or with values that are set already.

enum class WithoutSandbox {
  kPossible,  // for everybody
  kForRoot,   // or for a process with the capability
  kPerhaps,   // if the kernel was built and set up for it
  kClosed,    // workers cannot do it in any case
};

struct Escape {
  const char* name;  // as SECURITY.md lists it
  WithoutSandbox without;
  bool (*attempt)();  // true when it got through
};

const std::vector<Escape>& escapes_by_files();
const std::vector<Escape>& escapes_by_processes();
const std::vector<Escape>& escapes_by_the_kernel();

// What engines need, and what must succeed in the sandbox too.
const std::vector<Escape>& necessities();

// A file in the folder FAKE_FOLDER.
std::string in_fake_folder(const char* name);

// True when a call got past all checks of who may do what, whether or not it liked its arguments.
inline bool let_through(long result) {
  return result >= 0 || (errno != EPERM && errno != EACCES && errno != ENOSYS);
}

// Numbers that the headers of the build may not know.
constexpr long kSetxattrat = 463;
constexpr long kFchmodat2 = 452;
constexpr long kFileSetattr = 469;

#endif  // ZELK_TESTS_FAKES_ESCAPES_H
