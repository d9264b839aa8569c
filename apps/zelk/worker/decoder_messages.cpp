// SPDX-License-Identifier: Apache-2.0
#include "worker/decoder_messages.h"

#include <FreeImage.h>
#include <tiffio.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <iterator>
#include <string_view>

namespace cli {
namespace {

// Words by which decoders tell of lost pixels. Each decoder says more than that, for example:
// "Corrupt JPEG data: 8 extraneous bytes before marker 0xd9", "Corrupt JPEG data: bad ICC marker",
// "Unknown field with tag 65000", "iCCP: known incorrect sRGB profile".
constexpr std::string_view kDamage[] = {
    // JPEG, in files of its own and within TIFF
    "Premature end of JPEG file",
    "premature end of data segment",
    "bad Huffman code",
    "Corrupt JPEG data: found marker",
    "Inconsistent progression sequence",
    // TIFF
    "Read error",
    "Not enough data",
    "Decoding error",
    "Invalid strip byte count",
    "not yet in table",
    "not terminated with EOI",
    "Corrupted LZW table",
    "Wrong length of decoded string",
    "lack of data",
    "Image may be incomplete",
    // fax pages in TIFF
    "Bad code word",
    "Premature EOF",
    "Premature EOL",
    "Line length mismatch",
    "Uncompressed data (not supported)",
};

DamageWatch* current_watch = nullptr;

void hear_freeimage(FREE_IMAGE_FORMAT, const char* message) {
  DamageWatch::hear(message);
}

void hear_libtiff(const char*, const char* format, va_list values) {
  char message[256] = "";
  std::vsnprintf(message, sizeof message, format, values);
  DamageWatch::hear(message);
}

}  // namespace

void silence_decoders() {
  FreeImage_SetOutputMessage(hear_freeimage);
  TIFFSetErrorHandler(hear_libtiff);
  TIFFSetWarningHandler(hear_libtiff);
}

DamageWatch::DamageWatch() {
  silence_decoders();
  current_watch = this;
}

DamageWatch::~DamageWatch() {
  current_watch = nullptr;
}

void DamageWatch::hear(const std::string& message) {
  if (current_watch == nullptr) return;
  current_watch->_heard_any = true;
  if (!current_watch->_damage.empty()) return;
  const bool is_damage =
      std::any_of(std::begin(kDamage), std::end(kDamage),
                  [&](std::string_view words) { return message.find(words) != std::string::npos; });
  if (is_damage) current_watch->_damage = message;
}

}  // namespace cli
