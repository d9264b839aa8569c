// SPDX-License-Identifier: Apache-2.0
#include "exchange/frames.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace cli {
namespace {

constexpr std::string_view kMagic = "\xF5zelk\xF6\r\n";  // bytes that no text holds

// Garbage does not look like a header with its checksum; who sends more of these wants to keep the
// reader busy, and is not heard any more.
constexpr int kMostDamagedBodies = 100;

struct Header {
  char magic[kMagic.size()];
  std::uint32_t body_size;
  std::uint32_t body_checksum;
  std::uint32_t header_checksum;  // of the fields above
};

std::uint32_t checksum(const void* bytes, std::size_t size) {
  return static_cast<std::uint32_t>(crc32_z(0, static_cast<const unsigned char*>(bytes), size));
}

std::uint32_t checksum_of(const Header& header) {
  return checksum(&header, offsetof(Header, header_checksum));
}

// Where a frame can begin: at the magic word or at a beginning of it that the end cuts short.
std::size_t find_magic(std::string_view bytes) {
  const std::size_t found = bytes.find(kMagic);
  if (found != std::string_view::npos) return found;
  for (std::size_t size = std::min(bytes.size(), kMagic.size() - 1); size > 0; --size) {
    if (bytes.ends_with(kMagic.substr(0, size))) return bytes.size() - size;
  }
  return bytes.size();
}

}  // namespace

std::string encode_frame(std::string_view body) {
  if (body.size() > kLongestFrame) throw std::length_error("a message is too long");
  Header header = {};
  std::memcpy(header.magic, kMagic.data(), kMagic.size());
  header.body_size = static_cast<std::uint32_t>(body.size());
  header.body_checksum = checksum(body.data(), body.size());
  header.header_checksum = checksum_of(header);
  std::string frame(reinterpret_cast<const char*>(&header), sizeof header);
  return frame += body;
}

std::optional<std::string> FrameReader::next() {
  std::string_view rest = _bytes;
  std::optional<std::string> body;
  while (!body && _damaged_bodies < kMostDamagedBodies) {
    rest.remove_prefix(find_magic(rest));
    Header header = {};
    if (rest.size() < sizeof header) break;
    std::memcpy(&header, rest.data(), sizeof header);
    if (header.header_checksum != checksum_of(header) || header.body_size > kLongestFrame) {
      rest.remove_prefix(1);
      continue;
    }
    const std::string_view content = rest.substr(sizeof header, header.body_size);
    if (content.size() < header.body_size) break;  // more is to come
    const bool is_sound = checksum(content.data(), content.size()) == header.body_checksum;
    if (is_sound) body = content;
    _damaged_bodies += is_sound ? 0 : 1;
    rest.remove_prefix(is_sound ? sizeof header + content.size() : 1);
  }
  _bytes.erase(0, _bytes.size() - rest.size());
  return body;
}

}  // namespace cli
