// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_GBK_TEXT_H
#define ZELK_PDFPRODUCER_GBK_TEXT_H

#include <iconv.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace zelk::pdf {

// The character collection's encodings: the one for GB 2312 lacks what GBK added.
enum class GbkPlane { kGb2312, kExtension };

struct GbkCharacter {
  std::uint16_t code = 0;  // one byte, or the lead byte and the trail byte
  char16_t unicode = 0;
  GbkPlane plane = GbkPlane::kGb2312;

  bool is_half_width() const { return code < 0x80; }
};

// Tells the characters in GBK text.
class GbkDecoder {
 public:
  // Throws Error when the system cannot convert GBK.
  GbkDecoder();
  ~GbkDecoder();
  GbkDecoder(const GbkDecoder&) = delete;
  GbkDecoder& operator=(const GbkDecoder&) = delete;

  // The characters in their order. Control characters, single bytes above 127, pairs without a
  // character and a lead byte whose trail byte is missing are left out; the byte behind such a lead
  // byte is read afresh.
  std::vector<GbkCharacter> decode(std::string_view text) const;

 private:
  bool decode_pair(std::string_view pair, GbkCharacter& character) const;

  iconv_t _from_gbk;
  iconv_t _from_gb2312;
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_GBK_TEXT_H
