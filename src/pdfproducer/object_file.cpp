// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/object_file.h"

#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>

#include <array>

namespace zelk::pdf {

namespace {

constexpr std::uint32_t kPackedTogether = 100;
constexpr std::size_t kIdentifierSize = 16;

const unsigned char* octets(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

std::string deflated(std::string_view data) {
  std::string result;
  Pl_String sink("deflated", nullptr, result);
  Pl_Flate deflate("deflate", &sink, Pl_Flate::a_deflate);
  deflate.write(octets(data), data.size());
  deflate.finish();
  return result;
}

int bytes_needed(std::uint64_t value) {
  int count = 1;
  while ((value >>= 8) != 0) ++count;
  return count;
}

void append_big_endian(std::string& bytes, std::uint64_t value, int count) {
  for (int shift = 8 * (count - 1); shift >= 0; shift -= 8) {
    bytes.push_back(static_cast<char>(value >> shift & 0xFF));
  }
}

}  // namespace

ObjectFile::ObjectFile(const std::string& name) : _output(name), _digest(), _places(1) {
  sha256_init(&_digest);
  // Version 1.5 brought object streams. Bytes above 127 tell transfer programs that this is no
  // text.
  write("%PDF-1.5\n%\xE2\xE3\xCF\xD3\n");
}

int ObjectFile::reserve() {
  _places.emplace_back();
  return static_cast<int>(_places.size()) - 1;
}

// An operator is the one kind of handle that unparses as the text it was given.
QPDFObjectHandle ObjectFile::reference(int number) {
  return QPDFObjectHandle::newOperator(std::to_string(number) + " 0 R");
}

void ObjectFile::add(int number, QPDFObjectHandle object) {
  if (_packing == 0) _packing = reserve();
  _packed_index += std::to_string(number) + ' ' + std::to_string(_packed_objects.size()) + ' ';
  _packed_objects += object.unparse() + '\n';
  _places.at(static_cast<std::size_t>(number)) = {static_cast<std::uint64_t>(_packing),
                                                  _packed_count, 2};
  if (++_packed_count == kPackedTogether) write_packed_objects();
}

void ObjectFile::add_stream(int number, QPDFObjectHandle dictionary, std::string_view data,
                            Coding coding) {
  std::string compressed;
  if (coding == Coding::kDeflate) {
    compressed = deflated(data);
    data = compressed;
    dictionary.replaceKey("/Filter", QPDFObjectHandle::newName("/FlateDecode"));
  }
  dictionary.replaceKey("/Length",
                        QPDFObjectHandle::newInteger(static_cast<long long>(data.size())));
  _places.at(static_cast<std::size_t>(number)) = {_output.size(), 0, 1};
  write(std::to_string(number) + " 0 obj\n" + dictionary.unparse() + "\nstream\n");
  write(data);
  write("\nendstream\nendobj\n");
}

void ObjectFile::write_packed_objects() {
  if (_packing == 0) return;
  auto dictionary = QPDFObjectHandle::parse("<< /Type /ObjStm >>");
  dictionary.replaceKey("/N", QPDFObjectHandle::newInteger(_packed_count));
  dictionary.replaceKey("/First",
                        QPDFObjectHandle::newInteger(static_cast<long long>(_packed_index.size())));
  add_stream(_packing, dictionary, _packed_index + _packed_objects, Coding::kDeflate);
  _packing = 0;
  _packed_count = 0;
  _packed_index.clear();
  _packed_objects.clear();
}

void ObjectFile::finish(int catalog, int information) {
  write_packed_objects();
  const auto identifier = QPDFObjectHandle::newString(end_digest());
  auto trailer = QPDFObjectHandle::parse("<< /Type /XRef >>");
  trailer.replaceKey("/Root", reference(catalog));
  trailer.replaceKey("/Info", reference(information));
  trailer.replaceKey("/ID", QPDFObjectHandle::newArray(std::vector{identifier, identifier}));
  const std::uint64_t start = _output.size();
  write_cross_reference(reserve(), trailer);
  write("startxref\n" + std::to_string(start) + "\n%%EOF\n");
  _output.commit();
}

void ObjectFile::write_cross_reference(int number, QPDFObjectHandle trailer) {
  _places.at(static_cast<std::size_t>(number)) = {_output.size(), 0, 1};
  // Positions grow to the end, so none needs more bytes than the last one.
  const int width = bytes_needed(_output.size());
  std::string table;
  for (const Place& place : _places) {
    append_big_endian(table, place.type, 1);
    append_big_endian(table, place.position, width);
    append_big_endian(table, place.index, 1);
  }
  static_assert(kPackedTogether <= 256, "an index takes one byte");
  trailer.replaceKey("/Size", QPDFObjectHandle::newInteger(static_cast<long long>(_places.size())));
  trailer.replaceKey("/W", QPDFObjectHandle::parse("[1 " + std::to_string(width) + " 1]"));
  add_stream(number, trailer, table, Coding::kDeflate);
}

void ObjectFile::write(std::string_view bytes) {
  sha256_update(&_digest, bytes.size(), octets(bytes));
  _output.write(bytes);
}

std::string ObjectFile::end_digest() {
  std::array<std::uint8_t, kIdentifierSize> digest{};
  sha256_digest(&_digest, digest.size(), digest.data());
  return {digest.begin(), digest.end()};
}

}  // namespace zelk::pdf
