// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_INPUT_FILE_H
#define ZELK_APPS_WORKER_INPUT_FILE_H

#include <FreeImage.h>

#include <ext/stdio_sync_filebuf.h>

#include <cstdio>
#include <istream>
#include <memory>
#include <string>

namespace cli {

struct CloseInput {
  void operator()(FILE* file) const;
  std::shared_ptr<void> place;  // of a stream on a descriptor
};
using InputFile = std::unique_ptr<FILE, CloseInput>;

// A document for reading; null when it cannot be opened. The path "/dev/fd/N" stands for the open
// descriptor N, which stays open and is not opened anew: in their sandbox workers have no right to
// open a document, only to read from the descriptor that they were given. Streams on one descriptor
// have places of their own.
InputFile open_input(const std::string& path);

// A document as a stream; failed from the start when it cannot be opened.
class InputStream : public std::istream {
 public:
  explicit InputStream(const std::string& path);

 private:
  InputFile _file;
  __gnu_cxx::stdio_sync_filebuf<char> _buffer;
};

// The path that stands for a descriptor.
std::string descriptor_path(int descriptor);

// How FreeImage reads from an InputFile, which is the handle.
FreeImageIO* input_functions();

}  // namespace cli

#endif  // ZELK_APPS_WORKER_INPUT_FILE_H
