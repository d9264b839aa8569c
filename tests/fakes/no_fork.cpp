// SPDX-License-Identifier: Apache-2.0
// Loaded before all other libraries: the system has no room for another process.
#include <sys/types.h>

#include <cerrno>

extern "C" [[gnu::visibility("default")]] pid_t fork() {
  errno = EAGAIN;
  return -1;
}
