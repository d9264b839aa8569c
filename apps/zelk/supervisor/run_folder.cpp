// SPDX-License-Identifier: Apache-2.0
#include "supervisor/run_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include "exchange/error.h"

namespace cli {
namespace {

const char* const kPrefix = "zelk-run-";

int lock_folder(const std::string& folder) {
  const int lock = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) == 0) return lock;
  if (lock >= 0) close(lock);
  return -1;
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
  } else {
    remove_leftovers(folder);
  }
  _path = folder + "/" + kPrefix + "XXXXXX";
  if (mkdtemp(_path.data()) == nullptr) {
    throw Error(ErrorKind::kOutput, errno, folder);
  }
  _path = std::filesystem::absolute(_path, error).string();
  _lock = lock_folder(_path);
}

RunFolder::~RunFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(_path, ignored);
  if (_lock >= 0) close(_lock);
}

}  // namespace cli
