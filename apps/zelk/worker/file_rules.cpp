// SPDX-License-Identifier: Apache-2.0
#include "worker/file_rules.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

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
constexpr std::uint64_t kOfFiles = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                   LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_TRUNCATE;
constexpr std::uint64_t kScratch = kReading | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                   LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                   LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                   LANDLOCK_ACCESS_FS_TRUNCATE;

// Every right that the kernel's version of Landlock can withhold.
std::uint64_t all_rights(long version) {
  std::uint64_t rights = (1ULL << 13) - 1;
  if (version >= 2) rights |= LANDLOCK_ACCESS_FS_REFER;
  if (version >= 3) rights |= LANDLOCK_ACCESS_FS_TRUNCATE;
  if (version >= 5) rights |= LANDLOCK_ACCESS_FS_IOCTL_DEV;
  return rights;
}

void allow(int rules, const std::string& path, std::uint64_t rights) {
  const int descriptor = open(path.c_str(), O_PATH | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat info = {};
  if (fstat(descriptor, &info) == 0 && !S_ISDIR(info.st_mode)) rights &= kOfFiles;
  landlock_path_beneath_attr rule = {};
  rule.allowed_access = rights;
  rule.parent_fd = descriptor;
  syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
  close(descriptor);
}

}  // namespace

bool restrict_files(const std::vector<std::string>& readable) {
  const long version =
      syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  if (version < 1) return false;
  const std::uint64_t known = all_rights(version);
  landlock_ruleset_attr attributes = {};
  attributes.handled_access_fs = known;
  const long rules = syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0);
  if (rules < 0) return false;
  const int descriptor = static_cast<int>(rules);
  for (const std::string& path : readable) allow(descriptor, path, kReading & known);
  allow(descriptor, ".", kScratch & known);
  const bool restricted = syscall(SYS_landlock_restrict_self, descriptor, 0) == 0;
  close(descriptor);
  return restricted;
}

}  // namespace cli
