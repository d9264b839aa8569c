// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/gbk_text.h"

#include <array>
#include <cstdint>

#include "pdfproducer/error.h"

namespace zelk::pdf {

namespace {

unsigned octet(char byte) {
  return static_cast<unsigned char>(byte);
}

bool is_lead(unsigned byte) {
  return byte >= 0x81 && byte <= 0xFE;
}
bool is_trail(unsigned byte) {
  return byte >= 0x40 && byte <= 0xFE && byte != 0x7F;
}

iconv_t open_converter(const char* encoding) {
  iconv_t converter = iconv_open("UTF-16BE", encoding);
  if (reinterpret_cast<std::intptr_t>(converter) == -1) {
    throw Error(ErrorNumber::kInternal, std::string("the system does not convert ") + encoding);
  }
  return converter;
}

// False when the pair is no character of the converter's encoding.
bool convert(iconv_t converter, std::string_view pair, char16_t& unicode) {
  std::array<char, 2> input = {pair[0], pair[1]};
  std::array<char, 4> output = {};
  char* from = input.data();
  char* to = output.data();
  std::size_t left = input.size();
  std::size_t room = output.size();
  if (iconv(converter, &from, &left, &to, &room) != 0 || left != 0 || room != 2) {
    return false;
  }
  unicode = static_cast<char16_t>(octet(output[0]) << 8 | octet(output[1]));
  return true;
}

}  // namespace

GbkDecoder::GbkDecoder() : _from_gbk(open_converter("GBK")), _from_gb2312() {
  try {
    _from_gb2312 = open_converter("EUC-CN");
  } catch (...) {
    iconv_close(_from_gbk);
    throw;
  }
}

GbkDecoder::~GbkDecoder() {
  iconv_close(_from_gbk);
  iconv_close(_from_gb2312);
}

std::vector<GbkCharacter> GbkDecoder::decode(std::string_view text) const {
  std::vector<GbkCharacter> characters;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned byte = octet(text[i]);
    GbkCharacter character;
    if (byte >= 0x20 && byte < 0x7F) {
      character.code = static_cast<std::uint16_t>(byte);
      character.unicode = static_cast<char16_t>(byte);
      characters.push_back(character);
    } else if (is_lead(byte) && i + 1 < text.size() && is_trail(octet(text[i + 1]))) {
      if (decode_pair(text.substr(i, 2), character)) characters.push_back(character);
      ++i;
    }
  }
  return characters;
}

bool GbkDecoder::decode_pair(std::string_view pair, GbkCharacter& character) const {
  if (!convert(_from_gbk, pair, character.unicode)) return false;
  char16_t ignored = 0;
  const bool in_gb2312 = convert(_from_gb2312, pair, ignored);
  character.code = static_cast<std::uint16_t>(octet(pair[0]) << 8 | octet(pair[1]));
  character.plane = in_gb2312 ? GbkPlane::kGb2312 : GbkPlane::kExtension;
  return true;
}

}  // namespace zelk::pdf
