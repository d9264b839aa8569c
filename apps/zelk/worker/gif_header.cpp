// SPDX-License-Identifier: Apache-2.0
#include "worker/gif_header.h"

#include <fstream>

namespace cli {
namespace {

constexpr int kExtension = 0x21;
constexpr int kPicture = 0x2C;

// A sequence of blocks, each led by its length, ended by an empty one.
void skip_blocks(std::istream& stream) {
  for (int length = stream.get(); length > 0; length = stream.get()) {
    stream.seekg(length, std::ios::cur);
  }
}

unsigned little_endian(const unsigned char* bytes) {
  return bytes[0] | static_cast<unsigned>(bytes[1]) << 8;
}

}  // namespace

std::optional<GifSize> first_picture_size(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  unsigned char screen[13] = {};  // signature, size, flags, background, aspect
  stream.read(reinterpret_cast<char*>(screen), sizeof screen);
  const unsigned flags = screen[10];
  if ((flags & 0x80) != 0) stream.seekg(3L << ((flags & 7) + 1), std::ios::cur);  // colours
  int kind = stream.get();
  for (; kind == kExtension; kind = stream.get()) {
    stream.get();  // which extension
    skip_blocks(stream);
  }
  unsigned char picture[8] = {};  // left, top, width, height
  stream.read(reinterpret_cast<char*>(picture), sizeof picture);
  if (!stream || kind != kPicture) return std::nullopt;
  return GifSize{little_endian(picture + 4), little_endian(picture + 6)};
}

}  // namespace cli
