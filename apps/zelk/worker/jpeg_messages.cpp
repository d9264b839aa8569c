// SPDX-License-Identifier: Apache-2.0
#include "worker/jpeg_messages.h"

#include <csetjmp>
#include <cstdio>

// libjpeg's header does not include what it uses.
#include <jpeglib.h>

#include "worker/decoder_messages.h"
#include "worker/input_file.h"

namespace cli {
namespace {

struct Messages {
  jpeg_error_mgr base;  // first: libjpeg hands out its address
  std::jmp_buf give_up;
};

void hear(j_common_ptr decoder, int level) {
  constexpr int kWarning = -1;
  if (level != kWarning) return;
  char message[JMSG_LENGTH_MAX] = "";
  decoder->err->format_message(decoder, message);
  DamageWatch::hear(message);
}

[[noreturn]] void give_up(j_common_ptr decoder) {
  std::longjmp(reinterpret_cast<Messages*>(decoder->err)->give_up, 1);
}

// Nothing in here has a destructor: libjpeg leaves by longjmp. A row of the smallest scale is at
// most 8192 pixels wide.
void decode(std::FILE* file) {
  static JSAMPLE row[8192 * MAX_COMPONENTS];
  jpeg_decompress_struct decoder = {};
  Messages messages = {};
  decoder.err = jpeg_std_error(&messages.base);
  messages.base.emit_message = hear;
  messages.base.error_exit = give_up;
  if (setjmp(messages.give_up) == 0) {
    jpeg_create_decompress(&decoder);
    jpeg_stdio_src(&decoder, file);
    jpeg_read_header(&decoder, TRUE);
    decoder.scale_num = 1;
    decoder.scale_denom = 8;
    jpeg_start_decompress(&decoder);
    JSAMPROW rows[] = {row};
    while (decoder.output_scanline < decoder.output_height) jpeg_read_scanlines(&decoder, rows, 1);
    jpeg_finish_decompress(&decoder);
  }
  jpeg_destroy_decompress(&decoder);
}

}  // namespace

void repeat_jpeg_messages(const std::string& path) {
  const InputFile file = open_input(path);
  if (file != nullptr) decode(file.get());
}

}  // namespace cli
