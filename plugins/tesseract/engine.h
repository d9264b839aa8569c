// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_ENGINE_H
#define ZELK_TESSERACT_ENGINE_H

#include <string>
#include <vector>

#include "engine/qv_engine.h"
#include "engine_config.h"
#include "page.h"
#include "raster.h"
#include "recognizer.h"

namespace tesseract_engine {

// What qv_load_image_file and qv_set_image_data return.
enum class ImageCode : int {
  kAccepted = 0,
  kNotStarted = 1,
  kRefused = 2,     // null, empty or malformed raster, unreadable file
  kUnexpected = 3,  // memory ran out
  kTooLarge = 4,    // a side beyond 32,767 pixels, or more than 200 million pixels
};

// What qv_recognize returns.
enum class ReadCode : int {
  kRead = 0,
  kNotStarted = 1,
  kNoImage = 2,
  kFailed = 3,      // Tesseract gave up on the page
  kUnexpected = 4,  // memory ran out
};

// A started engine: its settings, the current image and what was read on it.
class Engine {
 public:
  ~Engine();

  // Reads the settings, checks and loads the language data. `engine_dir` as in qv_init_engine.
  StartResult start(const std::string& engine_dir);

  // Both drop the image before and its results, also when they refuse the new one.
  ImageCode set_image(const Raster& raster);
  ImageCode load_image(const char* path);

  ReadCode recognize();

  // Results of the last recognition; empty after any failure.
  const std::vector<std::vector<OCR_CHAR>>& lines() const { return lines_; }
  const std::string& text() const { return text_; }
  const std::wstring& wide_text() const { return wide_text_; }
  std::string json(std::size_t limit) const;

 private:
  void forget_results();
  void keep_results(Page page);

  Recognizer recognizer_;
  PixPtr image_;
  bool has_page_ = false;
  Page page_;
  std::vector<std::vector<OCR_CHAR>> lines_;
  std::string text_;
  std::wstring wide_text_;
};

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_ENGINE_H
