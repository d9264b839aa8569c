// SPDX-License-Identifier: Apache-2.0
#include "options/input_arguments.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>
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

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // some editors begin UTF-8 with it

// Why a line of a list cannot be a path; empty when it can. No path holds a zero byte, and all
// texts in UTF-16 with line ends do.
std::string encoding_reason(const std::string& line, bool is_first) {
  if (line.find('\0') == std::string::npos) return "";
  const bool has_mark = line.starts_with("\xFF\xFE") || line.starts_with("\xFE\xFF");
  return is_first && has_mark ? "the list is UTF-16, wanted is UTF-8 with one path a line"
                              : "the list holds zero bytes, wanted is one path a line";
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
    found.inputs.push_back({"-", "stdin", "", true});
  }

  void take_file(const std::string& path, const std::string& relative) {
    const std::string plain = plain_path(path);
    // One output is made once. Where texts or pictures follow each other, they do as often as they
    // are given.
    const bool has_output = !_options.directory.empty() && !_options.image_list;
    if (has_output && !is_new(path, relative, plain)) return;
    const std::string reason = unreadable_reason(path);
    if (!reason.empty()) complain(path, reason);
    found.inputs.push_back({path, relative, plain, reason.empty()});
  }

  // Another name of a file that was taken, a link for example, is another document with its own
  // output; another way to the same name is not.
  bool is_new(const std::string& path, const std::string& relative, const std::string& plain) {
    const FileIdentity identity = identity_of(path);
    const bool new_path = _paths.insert(plain).second;
    const bool new_file = identity == FileIdentity() || _files.insert({identity, relative}).second;
    return new_path && new_file;
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
    bool is_first = true;
    for (std::string line; std::getline(list, line);) {
      const std::string reason = encoding_reason(line, is_first);
      if (!reason.empty()) return complain(argument, reason);
      if (std::exchange(is_first, false) && line.starts_with(kByteOrderMark)) line.erase(0, 3);
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
  std::set<std::string> _paths;                           // of the files taken
  std::set<std::pair<FileIdentity, std::string>> _files;  // and which they are, by what name
};

}  // namespace

FoundInputs expand_arguments(const Options& options) {
  Expansion expansion(options);
  for (const std::string& argument : options.inputs) expansion.take_argument(argument);
  return expansion.found;
}

}  // namespace cli
