// SPDX-License-Identifier: Apache-2.0
// UTF8toANSI against a conversion of one character at a time.
#include <iconv.h>

#include <memory>

#include "fuzz_input.h"
#include "text/StringFormat.h"

namespace {

// Length of the well-formed sequence at the start of the text, told by its lead byte alone: iconv
// judges the rest.
std::size_t length_of(std::string_view text) {
  const unsigned lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  return std::min(length, text.size());
}

// False where the conversion of the whole text has to stop.
bool append_as_gbk(iconv_t converter, std::string_view character, std::string& gbk) {
  char bytes[8] = {};
  char* input = const_cast<char*>(character.data());
  char* output = bytes;
  std::size_t input_left = character.size();
  std::size_t output_left = sizeof bytes;
  iconv(converter, nullptr, nullptr, nullptr, nullptr);
  const std::size_t result = iconv(converter, &input, &input_left, &output, &output_left);
  gbk.append(bytes, output);
  return result != static_cast<std::size_t>(-1);
}

std::string expected_gbk(std::string_view text) {
  static auto* const converter = iconv_open("GBK", "UTF-8");
  std::string gbk;
  text = text.substr(0, text.find('\0'));
  while (!text.empty()) {
    const std::size_t length = length_of(text);
    if (!append_as_gbk(converter, text.substr(0, length), gbk)) break;
    text.remove_prefix(length);
  }
  return gbk;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(FuzzInput(data, size).rest());
  const std::unique_ptr<char, decltype(&std::free)> gbk(UTF8toANSI(text), &std::free);
  require(gbk != nullptr, "there is always text");
  require(gbk.get() == expected_gbk(text),
          "characters in front of the first bad one are converted");
  return 0;
}
