// SPDX-License-Identifier: Apache-2.0
// The script of a stand-in engine: what it answers, and what it was asked. A test reaches it
// through the engine's extra symbol fake_engine and keeps the library open, so that script and
// records outlive a stop.
#ifndef ZELK_TESTS_FAKES_FAKE_ENGINE_H
#define ZELK_TESTS_FAKES_FAKE_ENGINE_H

#include <functional>
#include <string>
#include <vector>

#include "engine/qv_engine.h"

struct FakePage {
  int code = 0;  // result of qv_recognize
  std::vector<std::vector<OCR_CHAR>> lines;
  std::string text;
  std::wstring wide;
  std::string json;
};

struct FakeRaster {
  int width = 0;
  int height = 0;
  int bitcount = 0;
  int line_bytes = 0;
  int imgpro = 0;
  std::vector<unsigned char> bytes;
};

struct FakeEngine {
  // Answers. The n-th page recognised gets pages[n], and none beyond the last.
  int init_code = 0;
  int load_code = 0;
  int set_code = 0;
  std::vector<FakePage> pages;

  // Where set, they replace the honest answer.
  std::function<int()> lines_num;
  std::function<void(int, OCR_CHAR*, int&)> line_info;
  std::function<int(char*, int)> json;
  bool null_text = false;

  // Records. Every call is also written to `calls` of the test, if set.
  std::vector<std::string>* calls = nullptr;
  std::vector<FakeRaster> rasters;

  std::size_t recognized = 0;
};

extern "C" QV_EXPORT FakeEngine* fake_engine();

#endif  // ZELK_TESTS_FAKES_FAKE_ENGINE_H
