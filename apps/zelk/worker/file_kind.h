// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_FILE_KIND_H
#define ZELK_APPS_WORKER_FILE_KIND_H

#include <string>

namespace cli {

// What a file is, by its content.
struct FileKind {
  bool is_pdf = false;
  int picture_format = -1;  // FreeImage's number of the format; -1 for a PDF
};

// Throws UnreadableDocument for what cannot be opened and for content of no known kind. Pictures
// are looked for first; a PDF's header may lie anywhere in the first 1024 bytes.
FileKind kind_of_file(const std::string& path);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_FILE_KIND_H
