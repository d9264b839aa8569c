// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_RUN_FOLDER_H
#define ZELK_APPS_SUPERVISOR_RUN_FOLDER_H

#include <string>

namespace cli {

// A run's own folder for everything unfinished; removed with all its content at the end.
class RunFolder {
 public:
  // Made in `parent`, or in the system's folder for temporary files when `parent` is empty; folders
  // that runs of this user left behind there when they were killed are removed. Throws Error.
  explicit RunFolder(const std::string& parent);
  ~RunFolder();
  RunFolder(const RunFolder&) = delete;
  RunFolder& operator=(const RunFolder&) = delete;

  const std::string& path() const { return _path; }
  // Path of a file in it.
  std::string path(const std::string& name) const { return _path + "/" + name; }
  // The descriptor that holds its lock.
  int lock() const { return _lock; }

 private:
  std::string _path;
  int _lock = -1;  // held for the life of the run: tells the living from what the dead left behind
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_RUN_FOLDER_H
