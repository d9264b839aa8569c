// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_OBJECT_FILE_H
#define ZELK_PDFPRODUCER_OBJECT_FILE_H

#include <nettle/sha2.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pdfproducer/output_file.h"
#include "pdfproducer/qpdf_object.h"

namespace zelk::pdf {

enum class Coding {
  kDeflate,  // compressed on the way
  kAsIs      // the dictionary names the filter that the data has already been through
};

// A PDF file written front to back, so that a document of any length takes the same memory: of an
// object that has been written only its place is kept, 16 bytes.
//
// Objects are built with qpdf's handles and belong to no QPDF, which would keep them all.
class ObjectFile {
 public:
  explicit ObjectFile(const std::string& name);

  // A number for an object that others can refer to before it is added.
  int reserve();
  static QPDFObjectHandle reference(int number);

  // Adds an object other than a stream, compressed together with its neighbours.
  void add(int number, QPDFObjectHandle object);
  void add_stream(int number, QPDFObjectHandle dictionary, std::string_view data, Coding coding);

  // Writes what readers start from and puts the file in its place. The identifier is a digest of
  // the bytes, so the same objects make the same file.
  void finish(int catalog, int information);

 private:
  struct Place {
    std::uint64_t position = 0;  // in the file, or the number of the object stream
    std::uint32_t index = 0;     // in the object stream
    std::uint8_t type = 0;       // as in a cross-reference stream: 0 free, 1 in the file, 2 packed
  };

  void write(std::string_view bytes);
  void write_packed_objects();
  void write_cross_reference(int number, QPDFObjectHandle trailer);
  std::string end_digest();

  OutputFile _output;
  // Of what was written. Not made by qpdf, whose choice of a provider is the environment's.
  sha256_ctx _digest;
  std::vector<Place> _places;
  int _packing = 0;  // number of the object stream being filled, 0 for none
  std::uint32_t _packed_count = 0;
  std::string _packed_index;
  std::string _packed_objects;
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_OBJECT_FILE_H
