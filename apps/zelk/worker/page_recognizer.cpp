// SPDX-License-Identifier: Apache-2.0
#include "worker/page_recognizer.h"

#include <fmt/format.h>

#include "process/page_raster.h"

namespace cli {

std::string PageRecognizer::start(const std::string& engine_dir) {
  return _process.init_engine(engine_dir.c_str()) == 0 ? "" : "did not start";
}

void PageRecognizer::stop() {
  _process.uninit_engine();
}

void PageRecognizer::recognize(FIBITMAP* bitmap, PageRecord& record) {
  zelk::MDIB image;
  if (!ofd::page_to_raster(bitmap, image)) {
    record.failure = "no raster can be made of the page";
    return;
  }
  _process._ocr_string.clear();
  _process._ocr_string_unicode.clear();
  _process._ocr_array_jsonbuffer.clear();
  int text_direction = 0;
  const int code = _process.recognize_image_file(image, record.characters, text_direction);
  if (code != 0) {
    record.characters.clear();
    record.failure = fmt::format("the engine refused the page (code {})", code);
    return;
  }
  record.text = _process._ocr_string;
  record.json = _process._ocr_array_jsonbuffer.back();
}

}  // namespace cli
