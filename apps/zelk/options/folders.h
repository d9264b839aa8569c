// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_FOLDERS_H
#define ZELK_APPS_OPTIONS_FOLDERS_H

#include <string>
#include <vector>

#include "options/inputs.h"

namespace cli {

// Identity of a file, whatever name leads to it. All zero for none.
struct FileIdentity {
  unsigned long long device = 0;
  unsigned long long inode = 0;
  auto operator<=>(const FileIdentity&) const = default;
};

// Follows links; all zero when there is no such file.
FileIdentity identity_of(const std::string& path);

struct FolderContent {
  std::vector<std::string> files;          // paths below the folder, without its own name
  std::vector<InputComplaint> unreadable;  // subfolders that cannot be read
};

// The documents of a folder by their extensions, sorted by name; with `recursive` those of its
// subfolders too. Hidden entries are passed over, links are followed, each real folder is read once
// and the folder `left_out` never, unless it is `folder` itself.
FolderContent documents_in_folder(const std::string& folder, bool recursive,
                                  const FileIdentity& left_out);

// Absolute and without detours, so that two spellings of one path are seen to be the same.
std::string plain_path(const std::string& path);

// "folder/name", without a second slash.
std::string join_path(const std::string& folder, const std::string& name);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_FOLDERS_H
