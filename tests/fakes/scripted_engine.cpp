// SPDX-License-Identifier: Apache-2.0
// A complete stand-in engine: answers from its script and records every call.
#include <algorithm>
#include <cstring>

#include "fakes/fake_engine.h"

namespace {

FakeEngine script;
const FakePage kNoPage;

void record(const std::string& call) {
  if (script.calls != nullptr) script.calls->push_back(call);
}

const FakePage& current_page() {
  const std::size_t count = script.recognized;
  return count == 0 || count > script.pages.size() ? kNoPage : script.pages[count - 1];
}

}  // namespace

extern "C" {

FakeEngine* fake_engine() {
  return &script;
}

int qv_init_engine(const char* dll_path) {
  record(std::string("init ") + dll_path);
  return script.init_code;
}

void qv_uninit_engine() {
  record("uninit");
}

int qv_load_image_file(const char* image_file, int imgpro) {
  record(std::string("load ") + (image_file != nullptr ? image_file : "null") + " " +
         std::to_string(imgpro));
  return script.load_code;
}

int qv_set_image_data(const unsigned char* image_buffer, int width, int height, int bitcount,
                      int line_bytes, int imgpro) {
  record("set");
  const std::size_t size = static_cast<std::size_t>(height) * static_cast<std::size_t>(line_bytes);
  script.rasters.push_back({width, height, bitcount, line_bytes, imgpro, {}});
  script.rasters.back().bytes.assign(image_buffer, image_buffer + size);
  return script.set_code;
}

int qv_recognize() {
  record("recognize");
  ++script.recognized;
  return current_page().code;
}

int qv_get_lines_num() {
  record("lines_num");
  return script.lines_num ? script.lines_num() : static_cast<int>(current_page().lines.size());
}

bool qv_get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num) {
  record("line " + std::to_string(id) + (char_info == nullptr ? " count" : " records") + " with " +
         std::to_string(char_num));
  if (script.line_info) {
    script.line_info(id, char_info, char_num);
    return true;
  }
  const std::vector<OCR_CHAR>& line = current_page().lines.at(static_cast<std::size_t>(id));
  if (char_info != nullptr) std::copy(line.begin(), line.end(), char_info);
  char_num = static_cast<int>(line.size());
  return true;
}

bool qv_save_ocrfile(const char* txt_file_name) {
  record(std::string("save ") + txt_file_name);
  return false;
}

const char* qv_get_result_ex() {
  record("text");
  return script.null_text ? nullptr : current_page().text.c_str();
}

const wchar_t* qv_get_result_unicode() {
  record("wide");
  return script.null_text ? nullptr : current_page().wide.c_str();
}

int qv_get_result_json(char* json_buffer, int bufferlen) {
  record("json " + std::to_string(bufferlen));
  if (script.json) return script.json(json_buffer, bufferlen);
  const std::string& json = current_page().json;
  std::memcpy(json_buffer, json.data(), json.size());
  return 0;
}
}
