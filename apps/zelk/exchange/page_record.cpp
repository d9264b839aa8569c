// SPDX-License-Identifier: Apache-2.0
#include "exchange/page_record.h"

#include <fmt/format.h>
#include <zlib.h>

#include <cstring>
#include <string_view>
#include <type_traits>

#include "exchange/files.h"

namespace cli {
namespace {

constexpr std::string_view kMagic = "zelkpag2";

class Writer {
 public:
  template <typename Number>
  void number(Number value) {
    static_assert(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool>);
    _bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  void flag(bool value) { number(std::uint8_t{value}); }
  void text(std::string_view value) {
    number(std::uint64_t{value.size()});
    _bytes.append(value);
  }
  std::string& bytes() { return _bytes; }

 private:
  std::string _bytes{kMagic};
};

// Reads what Writer wrote; once something is missing everything that follows is empty.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : _bytes(bytes) {}

  template <typename Number>
  void number(Number& value) {
    static_assert(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool>);
    const std::string_view bytes = take(sizeof value);
    if (!bytes.empty()) std::memcpy(&value, bytes.data(), sizeof value);
  }
  // Only 0 and 1 are values of a bool; a damaged or forged file holds others.
  void flag(bool& value) {
    std::uint8_t byte = 0;
    number(byte);
    _complete = _complete && byte <= 1;
    value = byte == 1;
  }
  void text(std::string& value) {
    std::uint64_t size = 0;
    number(size);
    value = take(size);
  }
  std::string_view take(std::uint64_t size) {
    if (size > _bytes.size()) {
      _complete = false;
      _bytes = {};
      return {};
    }
    const std::string_view taken = _bytes.substr(0, size);
    _bytes.remove_prefix(size);
    return taken;
  }
  bool finished() const { return _complete && _bytes.empty(); }

 private:
  std::string_view _bytes;
  bool _complete = true;
};

// The fields in the order of the file, for reading and writing alike.
template <typename Stream, typename Record>
void visit_fields(Stream& stream, Record& record) {
  stream.number(record.page);
  stream.text(record.failure);
  stream.text(record.warning);
  stream.flag(record.is_unreadable);
  stream.flag(record.has_own_text);
  stream.text(record.text);
  stream.text(record.json);
  stream.text(record.jpeg);
  stream.number(record.width);
  stream.number(record.height);
  stream.number(record.dots_per_inch);
  stream.number(record.page_width);
  stream.number(record.page_height);
  stream.number(record.seconds);
  stream.number(record.memory_kib);
}

std::uint32_t checksum(std::string_view bytes) {
  return static_cast<std::uint32_t>(
      crc32_z(0, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
}

}  // namespace

std::string encode_page_record(const PageRecord& record) {
  Writer writer;
  visit_fields(writer, record);
  writer.text({reinterpret_cast<const char*>(record.characters.data()),
               record.characters.size() * sizeof(OCR_CHAR)});
  writer.number(checksum(writer.bytes()));
  return std::move(writer.bytes());
}

std::optional<PageRecord> decode_page_record(std::string_view bytes) {
  std::uint32_t expected = 0;
  if (bytes.size() < kMagic.size() + sizeof expected || !bytes.starts_with(kMagic)) return {};
  const std::string_view body = bytes.substr(0, bytes.size() - sizeof expected);
  std::memcpy(&expected, body.data() + body.size(), sizeof expected);
  if (checksum(body) != expected) return {};

  Reader reader(body.substr(kMagic.size()));
  PageRecord record;
  visit_fields(reader, record);
  std::string characters;
  reader.text(characters);
  if (!reader.finished() || characters.size() % sizeof(OCR_CHAR) != 0) return {};
  record.characters.resize(characters.size() / sizeof(OCR_CHAR));
  if (!characters.empty()) {
    std::memcpy(record.characters.data(), characters.data(), characters.size());
  }
  return record;
}

void write_page_record(const std::string& path, const PageRecord& record) {
  write_file(path + ".new", encode_page_record(record));
  move_file(path + ".new", path);
}

std::optional<PageRecord> read_page_record(const std::string& path) {
  const std::optional<std::string> bytes = read_file(path);
  return bytes ? decode_page_record(*bytes) : std::nullopt;
}

std::string page_record_name(int page) {
  return fmt::format("page-{:06}", page);
}

std::string page_picture_name(int page) {
  return fmt::format("picture-{:06}", page);
}

}  // namespace cli
