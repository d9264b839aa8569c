// SPDX-License-Identifier: Apache-2.0
#include "worker/file_rules.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

// Rights that kernel headers of the build may not name yet.
#ifndef LANDLOCK_ACCESS_FS_REFER
#define LANDLOCK_ACCESS_FS_REFER (1ULL << 13)
#endif
#ifndef LANDLOCK_ACCESS_FS_TRUNCATE
#define LANDLOCK_ACCESS_FS_TRUNCATE (1ULL << 14)
#endif
#ifndef LANDLOCK_ACCESS_FS_IOCTL_DEV
#define LANDLOCK_ACCESS_FS_IOCTL_DEV (1ULL << 15)
#endif

namespace cli {
namespace {

constexpr std::uint64_t kReading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t kListing = LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t kOfFiles = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                   LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_TRUNCATE;
constexpr std::uint64_t kScratch = kReading | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                   LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                   LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                   LANDLOCK_ACCESS_FS_TRUNCATE;

// What libraries ask of their own process. Not the whole folder: it shows the network as well.
constexpr const char* kOwnProcess[] = {
    "/proc/self/auxv",   "/proc/self/cgroup", "/proc/self/cmdline",   "/proc/self/fd",
    "/proc/self/limits", "/proc/self/maps",   "/proc/self/mountinfo", "/proc/self/numa_maps",
    "/proc/self/smaps",  "/proc/self/stat",   "/proc/self/statm",     "/proc/self/status",
#if defined(__SANITIZE_ADDRESS__)
    "/proc/self",
#endif
};

// The rules as kernels up to version 6 of Landlock take them; older ones read less of it.
struct Attributes {
  std::uint64_t files;
  std::uint64_t network;
  std::uint64_t scope;
};

// Every right that the kernel's version of Landlock can withhold.
Attributes all_rights(long version) {
  constexpr std::uint64_t kBindAndConnect = 3;
  constexpr std::uint64_t kAbstractSocketsAndSignals = 3;
  Attributes rights = {(1ULL << 13) - 1, 0, 0};
  if (version >= 2) rights.files |= LANDLOCK_ACCESS_FS_REFER;
  if (version >= 3) rights.files |= LANDLOCK_ACCESS_FS_TRUNCATE;
  if (version >= 4) rights.network = kBindAndConnect;
  if (version >= 5) rights.files |= LANDLOCK_ACCESS_FS_IOCTL_DEV;
  if (version >= 6) rights.scope = kAbstractSocketsAndSignals;
  return rights;
}

std::size_t size_for(long version) {
  if (version >= 6) return sizeof(Attributes);
  return version >= 4 ? offsetof(Attributes, scope) : offsetof(Attributes, network);
}

// The descriptor of the path, on which the rule hangs; -1 when there is no such path.
int allow(int rules, const std::string& path, std::uint64_t rights) {
  const int descriptor = open(path.c_str(), O_PATH | O_CLOEXEC);
  if (descriptor < 0) return -1;
  struct stat info = {};
  if (fstat(descriptor, &info) == 0 && !S_ISDIR(info.st_mode)) rights &= kOfFiles;
  landlock_path_beneath_attr rule = {};
  rule.allowed_access = rights;
  rule.parent_fd = descriptor;
  syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
  return descriptor;
}

void allow_own_process(int rules) {
  // These stay open. The kernel forgets entries of /proc that nobody uses, and makes new ones,
  // which have no rule, when they are looked for again.
  for (const char* path : kOwnProcess) allow(rules, path, kReading);
  allow(rules, "/proc/self/task", kListing);
}

}  // namespace

bool restrict_files(const std::vector<std::string>& readable) {
  const long version =
      syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  if (version < 1) return false;
  const Attributes rights = all_rights(version);
  const long rules = syscall(SYS_landlock_create_ruleset, &rights, size_for(version), 0);
  if (rules < 0) return false;
  const int descriptor = static_cast<int>(rules);
  for (const std::string& path : readable) {
    const int opened = allow(descriptor, path, kReading);
    if (opened >= 0) close(opened);
  }
  allow_own_process(descriptor);
  close(allow(descriptor, ".", kScratch & rights.files));
  const bool restricted = syscall(SYS_landlock_restrict_self, descriptor, 0) == 0;
  close(descriptor);
  return restricted;
}

}  // namespace cli
