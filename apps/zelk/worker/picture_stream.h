// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_STREAM_H
#define ZELK_APPS_WORKER_PICTURE_STREAM_H

#include <cstdint>
#include <string>

#include "worker/document_pages.h"
#include "worker/input_file.h"

namespace cli {

// What stands in place of the first bytes of a file while FreeImage reads it: a header that it
// knows how to read. By default the file is read as it is.
struct ReplacedStart {
  std::string bytes;
  std::uint64_t length = 0;  // of the file's own bytes that are left out
};

// A picture file, read by FreeImage.
class PictureStream {
 public:
  explicit PictureStream(const std::string& path, ReplacedStart start = {});

  // `format` and `flags` are FreeImage's. Null when nothing can be decoded.
  PageBitmap load(int format, int flags);

  // Whether more bytes were asked for than the file has. Decoders of formats that say how long the
  // pixels are ask for exactly those; decoders that read ahead get here with whole files, too.
  bool ended_early() const { return _ended_early; }

 private:
  static unsigned read(void* buffer, unsigned size, unsigned count, void* handle);
  static int seek(void* handle, long offset, int origin);
  static long tell(void* handle);

  std::size_t take(char* buffer, std::size_t size);
  void go_to(std::uint64_t place);
  std::uint64_t size();

  const ReplacedStart _start;
  InputStream _file;
  std::uint64_t _place = 0;
  bool _ended_early = false;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_STREAM_H
