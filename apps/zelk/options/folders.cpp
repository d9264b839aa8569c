// SPDX-License-Identifier: Apache-2.0
#include "options/folders.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 12> kExtensions = {".bmp", ".gif", ".jpg",  ".jpeg",
                                                          ".pbm", ".pgm", ".png",  ".pnm",
                                                          ".ppm", ".tif", ".tiff", ".webp"};

bool is_document_name(const fs::path& name) {
  std::string extension = name.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return extension == ".pdf" ||
         std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end();
}

class Walk {
 public:
  Walk(const std::string& folder, bool recursive, const FileIdentity& left_out)
      : _folder(folder), _recursive(recursive), _seen{left_out} {}

  // `below` is the path from the folder of the walk to the one to read.
  void read(const std::string& below) {
    const std::string path = below.empty() ? _folder : join_path(_folder, below);
    std::error_code error;
    std::vector<std::string> names;
    fs::directory_iterator entry(path, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      const std::string name = entry->path().filename().string();
      if (name.front() != '.') names.push_back(name);
    }
    if (error) content.unreadable.push_back({path, error.message()});
    std::sort(names.begin(), names.end());
    const std::string prefix = below.empty() ? "" : below + "/";
    for (const std::string& name : names) take(path, prefix + name);
  }

  void mark_seen(const FileIdentity& folder) { _seen.insert(folder); }

  FolderContent content;

 private:
  void take(const std::string& folder, const std::string& below) {
    const fs::path name = fs::path(below).filename();
    const std::string path = join_path(folder, name.string());
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
      if (is_document_name(name)) content.files.push_back(below);
    } else if (_recursive && _seen.insert(identity_of(path)).second) {
      read(below);
    }
  }

  std::string _folder;
  bool _recursive;
  std::set<FileIdentity> _seen;
};

}  // namespace

FileIdentity identity_of(const std::string& path) {
  struct stat info = {};
  if (stat(path.c_str(), &info) != 0) return {};
  return {info.st_dev, info.st_ino};
}

FolderContent documents_in_folder(const std::string& folder, bool recursive,
                                  const FileIdentity& left_out) {
  Walk walk(folder, recursive, left_out);
  walk.mark_seen(identity_of(folder));
  walk.read("");
  return walk.content;
}

std::string plain_path(const std::string& path) {
  std::error_code ignored;
  return fs::absolute(path, ignored).lexically_normal().string();
}

std::string join_path(const std::string& folder, const std::string& name) {
  return folder.empty() || folder.back() == '/' ? folder + name : folder + "/" + name;
}

}  // namespace cli
