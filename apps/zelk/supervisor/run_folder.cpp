// SPDX-License-Identifier: Apache-2.0
#include "supervisor/run_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "exchange/error.h"

namespace cli {
namespace {

const char* const kPrefix = "zelk-run-";

int lock_folder(const std::string& folder) {
  const int lock = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  struct stat info = {};
  // Temporary files of others lie in the same folder.
  const bool is_ours = lock >= 0 && fstat(lock, &info) == 0 && info.st_uid == geteuid();
  if (is_ours && flock(lock, LOCK_EX | LOCK_NB) == 0) return lock;
  if (lock >= 0) close(lock);
  return -1;
}

bool is_at(const std::string& path, int descriptor) {
  struct stat there = {};
  struct stat here = {};
  return lstat(path.c_str(), &there) == 0 && fstat(descriptor, &here) == 0 &&
         there.st_ino == here.st_ino && there.st_dev == here.st_dev;
}

void remove_leftovers(const std::string& parent) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(parent, error)) {
    const std::string path = entry.path().string();
    if (!entry.path().filename().string().starts_with(kPrefix)) continue;
    const int lock = lock_folder(path);
    if (lock < 0) continue;  // its run is alive
    std::filesystem::remove_all(path, error);
    close(lock);
  }
}

}  // namespace

RunFolder::RunFolder(const std::string& parent) {
  std::error_code error;
  std::string folder = parent;
  if (folder.empty()) {
    folder = std::filesystem::temp_directory_path(error).string();
    if (error) {
      throw Error(ErrorKind::kOutput, error.value(), "the folder for temporary files (TMPDIR)");
    }
  }
  remove_leftovers(folder);
  // Before it is locked another run may take the new folder for one that was left behind.
  constexpr int kAttempts = 100;
  for (int attempt = 0; attempt < kAttempts && _lock < 0; ++attempt) {
    _path = folder + "/" + kPrefix + "XXXXXX";
    if (mkdtemp(_path.data()) == nullptr) throw Error(ErrorKind::kOutput, errno, folder);
    _path = std::filesystem::absolute(_path).string();
    _lock = lock_folder(_path);
    if (_lock >= 0 && !is_at(_path, _lock)) close(std::exchange(_lock, -1));
  }
}

RunFolder::~RunFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(_path, ignored);
  if (_lock >= 0) close(_lock);
}

}  // namespace cli
