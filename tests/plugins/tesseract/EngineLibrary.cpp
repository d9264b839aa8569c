// SPDX-License-Identifier: Apache-2.0
#include "plugins/tesseract/EngineLibrary.h"

#include <allheaders.h>
#include <dlfcn.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>
#include <stdexcept>

namespace {

template <typename Function>
void look_up(void* handle, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(handle, name));
  if (function == nullptr) throw std::runtime_error(dlerror());
}

std::u32string code_points(const std::string& utf8) {
  std::u32string text;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text.push_back(byte);
    } else if (byte >= 0xC0) {
      text.push_back(byte & (byte < 0xE0 ? 0x1FU : byte < 0xF0 ? 0x0FU : 0x07U));
    } else {
      text.back() = (text.back() << 6) | (byte & 0x3FU);
    }
  }
  return text;
}

// Brightness of a pixel of an 8-bit picture, written in one of the three formats.
void put_pixel(TestRaster& raster, int x, int y, unsigned brightness) {
  unsigned char* row = raster.rows.data() + y * raster.line_bytes;
  const auto byte = static_cast<unsigned char>(brightness);
  if (raster.bits == 24) {
    std::fill_n(row + 3 * x, 3, byte);
  } else if (raster.bits == 8) {
    row[x] = byte;
  } else if (brightness < 128) {
    row[x / 8] = static_cast<unsigned char>(row[x / 8] | (0x80 >> (x % 8)));
  }
}

}  // namespace

EngineLibrary::EngineLibrary() : handle_(dlopen(ZELK_TEST_ENGINE_DIR "libQVEngine.so", RTLD_NOW)) {
  if (handle_ == nullptr) throw std::runtime_error(dlerror());
  look_up(handle_, "qv_init_engine", init_engine);
  look_up(handle_, "qv_uninit_engine", uninit_engine);
  look_up(handle_, "qv_load_image_file", load_image_file);
  look_up(handle_, "qv_set_image_data", set_image_data);
  look_up(handle_, "qv_recognize", recognize);
  look_up(handle_, "qv_get_lines_num", get_lines_num);
  look_up(handle_, "qv_get_line_info_ex", get_line_info_ex);
  look_up(handle_, "qv_save_ocrfile", save_ocrfile);
  look_up(handle_, "qv_get_result_ex", get_result_ex);
  look_up(handle_, "qv_get_result_unicode", get_result_unicode);
  look_up(handle_, "qv_get_result_json", get_result_json);
}

EngineLibrary::~EngineLibrary() {
  dlclose(handle_);
}

int EngineLibrary::start(const std::string& folder) const {
  return init_engine(folder.c_str());
}

TestRaster white_page(int width, int height, int bits) {
  TestRaster raster{{}, width, height, bits, (width * bits + 31) / 32 * 4};
  const auto size = static_cast<std::size_t>(raster.line_bytes) * static_cast<std::size_t>(height);
  raster.rows.assign(size, bits == 1 ? 0x00 : 0xFF);
  return raster;
}

TestRaster test_picture(const std::string& name, int bits) {
  Pix* file = pixRead((ZELK_TEST_DATA "/" + name).c_str());
  if (file == nullptr) throw std::runtime_error("cannot read " + name);
  Pix* grey = pixConvertTo8(file, 0);
  TestRaster raster = white_page(pixGetWidth(grey), pixGetHeight(grey), bits);
  for (int y = 0; y < raster.height; ++y) {
    for (int x = 0; x < raster.width; ++x) {
      l_uint32 brightness = 0;
      pixGetPixel(grey, x, y, &brightness);
      put_pixel(raster, x, y, brightness);
    }
  }
  pixDestroy(&grey);
  pixDestroy(&file);
  return raster;
}

int set_image(const EngineLibrary& engine, const TestRaster& raster) {
  return engine.set_image_data(raster.rows.data(), raster.width, raster.height, raster.bits,
                               raster.line_bytes, 1);
}

std::string read(const EngineLibrary& engine, const TestRaster& raster) {
  if (set_image(engine, raster) != 0 || engine.recognize() != 0) return "";
  return engine.get_result_ex();
}

std::vector<OCR_CHAR> cells_of_line(const EngineLibrary& engine, int line) {
  int count = 0;
  engine.get_line_info_ex(line, nullptr, count);
  std::vector<OCR_CHAR> cells(static_cast<std::size_t>(count));
  engine.get_line_info_ex(line, cells.data(), count);
  return cells;
}

std::string truth_of(const std::string& name) {
  std::ifstream file(ZELK_TEST_DATA "/" + name + ".txt");
  if (!file) throw std::runtime_error("no truth for " + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string without_blanks(const std::string& utf8) {
  std::string text;
  std::copy_if(utf8.begin(), utf8.end(), std::back_inserter(text),
               [](char c) { return c != ' ' && c != '\n' && c != '\f'; });
  return text;
}

double error_rate(const std::string& truth, const std::string& text) {
  const std::u32string a = code_points(without_blanks(truth));
  const std::u32string b = code_points(without_blanks(text));
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0U);
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0]++;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t substituted = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({substituted, row[j] + 1, row[j + 1] + 1});
    }
  }
  return static_cast<double>(row[b.size()]) / static_cast<double>(a.size());
}
