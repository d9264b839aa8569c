// SPDX-License-Identifier: Apache-2.0
//
// The eleven entry points. Each forwards to the one engine object and lets no exception out.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <utility>

#include "engine.h"
#include "engine/qv_engine.h"
#include "host_guard.h"

namespace {

using tesseract_engine::Engine;
using tesseract_engine::HostGuard;
using tesseract_engine::ImageCode;
using tesseract_engine::ReadCode;
using tesseract_engine::StartCode;
using tesseract_engine::StartResult;

// A plain pointer, freed by qv_uninit_engine alone: libtesseract stays loaded when this library is
// closed, and a static object would be destroyed at exit after what it is made of.
Engine* engine = nullptr;

template <typename Result, typename Function>
Result guarded(Result failure, Function function) {
  try {
    const HostGuard guard;
    return function();
  } catch (...) {
    return failure;
  }
}

void stop() {
  delete std::exchange(engine, nullptr);
}

StartResult start(const char* dll_path) {
  auto started = std::make_unique<Engine>();
  StartResult result = started->start(dll_path != nullptr ? dll_path : "");
  if (result.ok()) engine = started.release();
  return result;
}

bool is_line(int id) {
  return engine != nullptr && id >= 0 && static_cast<std::size_t>(id) < engine->lines().size();
}

}  // namespace

int qv_init_engine(const char* dll_path) {
  const StartResult unexpected{StartCode::kUnexpected, {}};
  const StartResult result = guarded(unexpected, [&] {
    stop();
    return start(dll_path);
  });
  if (!result.ok()) {
    std::fprintf(stderr, "libQVEngine: %s\n",
                 result.message.empty() ? "cannot start" : result.message.c_str());
  }
  return static_cast<int>(result.code);
}

void qv_uninit_engine() {
  guarded(false, [] {
    stop();
    return true;
  });
}

int qv_load_image_file(const char* image_file, int) {
  return static_cast<int>(guarded(ImageCode::kUnexpected, [&] {
    return engine != nullptr ? engine->load_image(image_file) : ImageCode::kNotStarted;
  }));
}

int qv_set_image_data(const unsigned char* image_buffer, int width, int height, int bitcount,
                      int line_bytes, int) {
  return static_cast<int>(guarded(ImageCode::kUnexpected, [&] {
    return engine != nullptr
               ? engine->set_image({image_buffer, width, height, bitcount, line_bytes})
               : ImageCode::kNotStarted;
  }));
}

int qv_recognize() {
  return static_cast<int>(guarded(ReadCode::kUnexpected, [] {
    return engine != nullptr ? engine->recognize() : ReadCode::kNotStarted;
  }));
}

int qv_get_lines_num() {
  return engine != nullptr ? static_cast<int>(engine->lines().size()) : 0;
}

bool qv_get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num) {
  char_num = 0;
  if (!is_line(id)) return false;
  const std::vector<OCR_CHAR>& line = engine->lines()[static_cast<std::size_t>(id)];
  if (char_info != nullptr) std::copy(line.begin(), line.end(), char_info);
  char_num = static_cast<int>(line.size());
  return true;
}

bool qv_save_ocrfile(const char* txt_file_name) {
  return guarded(false, [&] {
    if (engine == nullptr || txt_file_name == nullptr) return false;
    std::ofstream file(txt_file_name, std::ios::binary);
    file << engine->text();
    file.close();
    return file.good();
  });
}

const char* qv_get_result_ex() {
  return engine != nullptr ? engine->text().c_str() : "";
}

const wchar_t* qv_get_result_unicode() {
  return engine != nullptr ? engine->wide_text().c_str() : L"";
}

// Returns 0, or 1 when there is nothing to write or the buffer cannot hold it.
int qv_get_result_json(char* json_buffer, int bufferlen) {
  if (json_buffer == nullptr || bufferlen <= 0) return 1;
  json_buffer[0] = '\0';
  return guarded(1, [&] {
    if (engine == nullptr) return 1;
    const std::string json = engine->json(static_cast<std::size_t>(bufferlen) - 1);
    std::memcpy(json_buffer, json.c_str(), json.size() + 1);
    return json.empty() ? 1 : 0;
  });
}
