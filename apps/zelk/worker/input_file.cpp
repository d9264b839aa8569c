// SPDX-License-Identifier: Apache-2.0
#include "worker/input_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace cli {
namespace {

constexpr std::string_view kDescriptors = "/dev/fd/";

// A stream's place in a descriptor's file.
struct Place {
  int descriptor;
  off64_t offset = 0;
};

ssize_t read_at_place(void* cookie, char* buffer, size_t size) {
  Place& place = *static_cast<Place*>(cookie);
  ssize_t count = 0;
  do {
    count = pread64(place.descriptor, buffer, size, place.offset);
  } while (count < 0 && errno == EINTR);
  place.offset += std::max<ssize_t>(0, count);
  return count;
}

int move_place(void* cookie, off64_t* offset, int origin) {
  Place& place = *static_cast<Place*>(cookie);
  struct stat info = {};
  if (origin == SEEK_END && fstat(place.descriptor, &info) != 0) return -1;
  const off64_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? place.offset : info.st_size;
  off64_t target = 0;
  if (__builtin_add_overflow(base, *offset, &target) || target < 0) {
    errno = EINVAL;
    return -1;
  }
  place.offset = *offset = target;
  return 0;
}

InputFile stream_on(int descriptor) {
  const auto place = std::make_shared<Place>(Place{descriptor});
  FILE* const file = fopencookie(place.get(), "rb", {read_at_place, nullptr, move_place, nullptr});
  return {file, CloseInput{place}};
}

unsigned DLL_CALLCONV read_items(void* buffer, unsigned size, unsigned count, fi_handle handle) {
  return static_cast<unsigned>(std::fread(buffer, size, count, static_cast<FILE*>(handle)));
}

unsigned DLL_CALLCONV write_nothing(void*, unsigned, unsigned, fi_handle) {
  return 0;
}

int DLL_CALLCONV seek(fi_handle handle, long offset, int origin) {
  return std::fseek(static_cast<FILE*>(handle), offset, origin);
}

long DLL_CALLCONV tell(fi_handle handle) {
  return std::ftell(static_cast<FILE*>(handle));
}

}  // namespace

void CloseInput::operator()(FILE* file) const {
  std::fclose(file);
}

InputFile open_input(const std::string& path) {
  if (!path.starts_with(kDescriptors)) return InputFile(std::fopen(path.c_str(), "rbe"));
  int descriptor = -1;
  std::from_chars(path.data() + kDescriptors.size(), path.data() + path.size(), descriptor);
  return stream_on(descriptor);
}

InputStream::InputStream(const std::string& path)
    : std::istream(nullptr), _file(open_input(path)), _buffer(_file.get()) {
  if (_file != nullptr) rdbuf(&_buffer);
}

std::string descriptor_path(int descriptor) {
  return std::string(kDescriptors) + std::to_string(descriptor);
}

FreeImageIO* input_functions() {
  static FreeImageIO functions = {read_items, write_nothing, seek, tell};
  return &functions;
}

}  // namespace cli
