// SPDX-License-Identifier: Apache-2.0
#include "readers/netpbm_header.h"

#include <FreeImage.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <memory>

namespace {

bool is_netpbm(int format) {
  return format == FIF_PBM || format == FIF_PBMRAW || format == FIF_PGM || format == FIF_PGMRAW ||
         format == FIF_PPM || format == FIF_PPMRAW || format == FIF_PFM;
}

// The next number as FreeImage finds it: whatever is no digit is skipped, a comment to the end of
// its line, and one byte behind the number. Beyond the limit for all that are larger; 0 for none.
std::uint64_t next_number(FILE* file) {
  constexpr std::uint64_t kTooLarge = std::uint64_t{INT_MAX} + 1;
  bool in_comment = false;
  int byte = std::getc(file);
  for (; byte != EOF && (in_comment || byte < '0' || byte > '9'); byte = std::getc(file)) {
    in_comment = in_comment ? byte != '\n' : byte == '#';
  }
  std::uint64_t number = 0;
  for (; byte >= '0' && byte <= '9'; byte = std::getc(file)) {
    number = std::min(10 * number + static_cast<std::uint64_t>(byte - '0'), kTooLarge);
  }
  return number;
}

struct Close {
  void operator()(FILE* file) const { std::fclose(file); }
};

}  // namespace

bool is_impossible_netpbm(int format, const char* path) {
  if (!is_netpbm(format)) return false;
  const std::unique_ptr<FILE, Close> file(std::fopen(path, "rbe"));
  return file == nullptr || is_impossible_netpbm(format, file.get());
}

bool is_impossible_netpbm(int format, FILE* file) {
  constexpr std::uint64_t kPixelsPerByte = 1000;
  if (!is_netpbm(format)) return false;
  std::fseek(file, 0, SEEK_END);
  const long size = std::ftell(file);
  std::fseek(file, 2, SEEK_SET);  // behind the letter P and the sort
  const std::uint64_t width = next_number(file);
  const std::uint64_t height = next_number(file);
  if (size < 0 || width < 1 || width > INT_MAX || height < 1 || height > INT_MAX) return true;
  return width * height > kPixelsPerByte * static_cast<std::uint64_t>(size);
}
