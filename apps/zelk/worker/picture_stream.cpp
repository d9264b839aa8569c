// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_stream.h"

#include <FreeImage.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

namespace cli {

PictureStream::PictureStream(const std::string& path, ReplacedStart start)
    : _start(std::move(start)), _file(path) {}

PageBitmap PictureStream::load(int format, int flags) {
  FreeImageIO functions = {};
  functions.read_proc = read;
  functions.seek_proc = seek;
  functions.tell_proc = tell;
  go_to(0);
  return PageBitmap(FreeImage_LoadFromHandle(FREE_IMAGE_FORMAT(format), &functions, this, flags));
}

unsigned PictureStream::read(void* buffer, unsigned size, unsigned count, void* handle) {
  auto* const stream = static_cast<PictureStream*>(handle);
  const std::size_t wanted = std::size_t{size} * count;
  const std::size_t taken = stream->take(static_cast<char*>(buffer), wanted);
  if (taken < wanted) stream->_ended_early = true;
  return size == 0 ? 0 : static_cast<unsigned>(taken / size);
}

int PictureStream::seek(void* handle, long offset, int origin) {
  auto* const stream = static_cast<PictureStream*>(handle);
  const auto from = static_cast<std::int64_t>(origin == SEEK_SET   ? 0
                                              : origin == SEEK_CUR ? stream->_place
                                                                   : stream->size());
  std::int64_t place = 0;
  if (__builtin_add_overflow(from, std::int64_t{offset}, &place) || place < 0) return -1;
  stream->go_to(static_cast<std::uint64_t>(place));
  return 0;
}

long PictureStream::tell(void* handle) {
  return static_cast<long>(static_cast<PictureStream*>(handle)->_place);
}

std::size_t PictureStream::take(char* buffer, std::size_t size) {
  std::size_t taken = 0;
  if (_place < _start.bytes.size()) {
    taken = std::min<std::size_t>(size, _start.bytes.size() - _place);
    std::memcpy(buffer, _start.bytes.data() + _place, taken);
  }
  if (taken < size) {
    _file.read(buffer + taken, static_cast<std::streamsize>(size - taken));
    taken += static_cast<std::size_t>(_file.gcount());
  }
  _place += taken;
  return taken;
}

// The file itself is left where reading goes on behind the replaced start.
void PictureStream::go_to(std::uint64_t place) {
  _place = place;
  const std::uint64_t behind = place - std::min<std::uint64_t>(place, _start.bytes.size());
  _file.clear();
  _file.seekg(static_cast<std::streamoff>(_start.length + behind));
}

std::uint64_t PictureStream::size() {
  _file.clear();
  _file.seekg(0, std::ios::end);
  const auto size = static_cast<std::uint64_t>(std::streamoff(_file.tellg()));
  return _start.bytes.size() + size - std::min(size, _start.length);
}

}  // namespace cli
