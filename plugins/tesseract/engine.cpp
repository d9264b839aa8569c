// SPDX-License-Identifier: Apache-2.0
#include "engine.h"

#include <utility>

#include "cells.h"
#include "page_json.h"
#include "page_text.h"
#include "script.h"

namespace tesseract_engine {

Engine::~Engine() {
  recognizer_ = Recognizer();
  tesseract::TessBaseAPI::ClearPersistentCache();
}

StartResult Engine::start(const std::string& engine_dir) {
  EngineConfig config;
  StartResult result = read_config(engine_dir, config);
  if (result.ok()) result = check_languages(config);
  if (result.ok()) result = recognizer_.start(config);
  return result;
}

ImageCode Engine::set_image(const Raster& raster) {
  forget_results();
  image_.reset();
  if (is_too_large(raster.width, raster.height)) return ImageCode::kTooLarge;
  if (!is_well_formed(raster)) return ImageCode::kRefused;
  image_ = to_pix(raster);
  return image_ ? ImageCode::kAccepted : ImageCode::kUnexpected;
}

ImageCode Engine::load_image(const char* path) {
  forget_results();
  image_.reset();
  int width = 0;
  int height = 0;
  if (path == nullptr || !read_size(path, width, height)) return ImageCode::kRefused;
  // Told before anything is decoded: a small file can declare a picture of any size.
  if (is_too_large(width, height)) return ImageCode::kTooLarge;
  image_ = read_pix(path);
  return image_ ? ImageCode::kAccepted : ImageCode::kRefused;
}

ReadCode Engine::recognize() {
  forget_results();
  if (!image_) return ReadCode::kNoImage;
  Page page;
  if (!recognizer_.recognize(image_.get(), page)) return ReadCode::kFailed;
  keep_results(std::move(page));
  return ReadCode::kRead;
}

std::string Engine::json(std::size_t limit) const {
  return has_page_ ? page_json(page_, limit) : std::string();
}

void Engine::forget_results() {
  has_page_ = false;
  page_ = {};
  lines_.clear();
  text_.clear();
  wide_text_.clear();
}

void Engine::keep_results(Page page) {
  std::vector<std::vector<OCR_CHAR>> lines;
  const double pitch = han_pitch(page.blocks);
  for (const Block& block : page.blocks) {
    for (const Line& line : block.lines) lines.push_back(advance_cells(line, pitch));
  }
  const std::u32string text = page_text(page);
  std::string narrow = to_utf8(text);
  std::wstring wide(text.begin(), text.end());

  page_ = std::move(page);
  lines_ = std::move(lines);
  text_ = std::move(narrow);
  wide_text_ = std::move(wide);
  has_page_ = true;
}

}  // namespace tesseract_engine
