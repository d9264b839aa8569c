// SPDX-License-Identifier: Apache-2.0
#include "worker/gif_header.h"

#include <cstdio>

#include "worker/input_file.h"

namespace cli {
namespace {

constexpr int kExtension = 0x21;
constexpr int kPicture = 0x2C;

// A sequence of blocks, each led by its length, ended by an empty one.
void skip_blocks(FILE* file) {
  for (int length = std::getc(file); length > 0; length = std::getc(file)) {
    std::fseek(file, length, SEEK_CUR);
  }
}

unsigned little_endian(const unsigned char* bytes) {
  return bytes[0] | static_cast<unsigned>(bytes[1]) << 8;
}

}  // namespace

std::optional<GifSize> first_picture_size(const std::string& path) {
  const InputFile input = open_input(path);
  FILE* const file = input.get();
  unsigned char screen[13] = {};  // signature, size, flags, background, aspect
  if (file == nullptr || std::fread(screen, sizeof screen, 1, file) != 1) return std::nullopt;
  const unsigned flags = screen[10];
  if ((flags & 0x80) != 0) std::fseek(file, 3L << ((flags & 7) + 1), SEEK_CUR);  // colours
  int kind = std::getc(file);
  for (; kind == kExtension; kind = std::getc(file)) {
    std::getc(file);  // which extension
    skip_blocks(file);
  }
  unsigned char picture[8] = {};  // left, top, width, height
  if (kind != kPicture || std::fread(picture, sizeof picture, 1, file) != 1) return std::nullopt;
  return GifSize{little_endian(picture + 4), little_endian(picture + 6)};
}

}  // namespace cli
