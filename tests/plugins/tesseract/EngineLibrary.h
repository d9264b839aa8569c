// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_ENGINE_LIBRARY_H
#define ZELK_TESTS_ENGINE_LIBRARY_H

#include <string>
#include <vector>

#include "engine/qv_engine.h"

// The default engine, opened as hosts open it; closed, not stopped, by the destructor.
class EngineLibrary {
 public:
  EngineLibrary();
  ~EngineLibrary();
  EngineLibrary(const EngineLibrary&) = delete;
  EngineLibrary& operator=(const EngineLibrary&) = delete;

  // What qv_init_engine returns for this folder.
  int start(const std::string& folder = ZELK_TEST_ENGINE_DIR) const;

  decltype(&qv_init_engine) init_engine;
  decltype(&qv_uninit_engine) uninit_engine;
  decltype(&qv_load_image_file) load_image_file;
  decltype(&qv_set_image_data) set_image_data;
  decltype(&qv_recognize) recognize;
  decltype(&qv_get_lines_num) get_lines_num;
  decltype(&qv_get_line_info_ex) get_line_info_ex;
  decltype(&qv_save_ocrfile) save_ocrfile;
  decltype(&qv_get_result_ex) get_result_ex;
  decltype(&qv_get_result_unicode) get_result_unicode;
  decltype(&qv_get_result_json) get_result_json;

 private:
  void* handle_;
};

// A raster as hosts hand it over.
struct TestRaster {
  std::vector<unsigned char> rows;
  int width = 0;
  int height = 0;
  int bits = 0;
  int line_bytes = 0;
};

// The picture tests/data/NAME with 1, 8 or 24 bits a pixel.
TestRaster test_picture(const std::string& name, int bits = 24);
TestRaster white_page(int width, int height, int bits = 24);

int set_image(const EngineLibrary& engine, const TestRaster& raster);

// The text of the picture, or "" when it is refused or recognition fails.
std::string read(const EngineLibrary& engine, const TestRaster& raster);

std::vector<OCR_CHAR> cells_of_line(const EngineLibrary& engine, int line);

// The file tests/data/NAME.txt.
std::string truth_of(const std::string& name);

std::string without_blanks(const std::string& utf8);

// Edits between two UTF-8 texts, as a share of the first.
double error_rate(const std::string& truth, const std::string& text);

#endif  // ZELK_TESTS_ENGINE_LIBRARY_H
