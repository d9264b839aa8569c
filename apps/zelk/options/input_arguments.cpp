// SPDX-License-Identifier: Apache-2.0
#include "options/input_arguments.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <utility>

#include "options/folders.h"

namespace cli {
namespace {

bool is_folder(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

// Why a file cannot be opened for reading; empty when it can. Pipes are refused here: reading one
// would wait for a writer that may never come.
std::string unreadable_reason(const std::string& file) {
  struct stat info = {};
  if (stat(file.c_str(), &info) != 0) return std::strerror(errno);
  if (S_ISDIR(info.st_mode)) return "is a directory";
  if (!S_ISREG(info.st_mode)) return "is not a regular file";
  if (info.st_size == 0) return "the file is empty";
  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::strerror(errno);
  close(descriptor);
  return "";
}

class Expansion {
 public:
  explicit Expansion(const Options& options)
      : _options(options), _output_folder(identity_of(options.directory)) {}

  void take_argument(const std::string& argument) {
    if (argument.starts_with('@')) {
      take_list(argument);
    } else {
      take_path(argument);
    }
  }

  FoundInputs found;

 private:
  void complain(const std::string& name, const std::string& reason) {
    found.unreadable.push_back({name, reason});
  }

  void take_path(const std::string& path) {
    if (path == "-") {
      take_standard_input();
    } else if (is_folder(path)) {
      take_folder(path);
    } else {
      take_file(path, std::filesystem::path(path).filename().string());
    }
  }

  void take_standard_input() {
    if (std::exchange(_standard_input_taken, true)) {
      found.mistake = "standard input (-) can be read only once";
    }
    found.inputs.push_back({"-", "stdin"});
  }

  void take_file(const std::string& path, const std::string& relative) {
    const std::string reason = unreadable_reason(path);
    if (!reason.empty()) return complain(path, reason);
    found.inputs.push_back({path, relative});
  }

  void take_folder(const std::string& folder) {
    const FolderContent content = documents_in_folder(folder, _options.recursive, _output_folder);
    for (const InputComplaint& unreadable : content.unreadable) {
      found.unreadable.push_back(unreadable);
    }
    for (const std::string& file : content.files) take_file(join_path(folder, file), file);
    if (content.files.empty() && content.unreadable.empty()) {
      complain(folder, "holds no document");
    }
  }

  // Lists may be pipes, so that another program can make them.
  void take_list(const std::string& argument) {
    const std::string path = argument.substr(1);
    errno = 0;
    std::ifstream list(path, std::ios::binary);
    if (!list) return complain(argument, std::strerror(errno));
    if (is_folder(path)) return complain(argument, "is a directory");
    found.lists.push_back(path);
    bool is_empty = true;
    for (std::string line; std::getline(list, line);) {
      if (line.ends_with('\r')) line.pop_back();
      if (line.empty() || line.starts_with('#')) continue;
      is_empty = false;
      if (line.starts_with('@')) {
        complain(line, "a list inside a list is not read");
      } else {
        take_path(line);
      }
    }
    if (list.bad()) return complain(argument, "the list cannot be read");
    if (is_empty) complain(argument, "the list names no document");
  }

  const Options& _options;
  FileIdentity _output_folder;  // of an earlier run perhaps, below an input folder
  bool _standard_input_taken = false;
};

}  // namespace

FoundInputs expand_arguments(const Options& options) {
  Expansion expansion(options);
  for (const std::string& argument : options.inputs) expansion.take_argument(argument);
  return expansion.found;
}

}  // namespace cli
