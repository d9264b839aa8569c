// SPDX-License-Identifier: Apache-2.0
// An engine that was taken over: on the first page it tries every way out of the sandbox and tells
// in the page's text, a line each, what got through: "NAME: through, possible".
#include <cstdio>
#include <cwchar>

#include "engine/qv_engine.h"
#include "fakes/escapes.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

std::string text;
std::wstring wide_text;

const char* word_for(WithoutSandbox without) {
  switch (without) {
    case WithoutSandbox::kPossible:
      return "possible";
    case WithoutSandbox::kForRoot:
      return "root";
    case WithoutSandbox::kPerhaps:
      return "perhaps";
    case WithoutSandbox::kClosed:
      return "closed";
  }
  return "";
}

void try_all(const char* section, const std::vector<Escape>& escapes) {
  for (const Escape& escape : escapes) {
    text += std::string(section) + ": " + escape.name +
            (escape.attempt() ? ": through, " : ": refused, ") + word_for(escape.without) + "\n";
  }
}

}  // namespace

EXPORT int qv_init_engine(const char*) {
  return 0;
}
EXPORT void qv_uninit_engine() {}
EXPORT int qv_load_image_file(const char*, int) {
  return 1;
}
EXPORT int qv_set_image_data(const unsigned char*, int, int, int, int, int) {
  return 0;
}

EXPORT int qv_recognize() {
  static bool tried = false;
  text.clear();
  if (tried) return 0;
  tried = true;
  try_all("escape", escapes_by_files());
  try_all("escape", escapes_by_processes());
  try_all("escape", escapes_by_the_kernel());
  try_all("need", necessities());
  return 0;
}

EXPORT int qv_get_lines_num() {
  return 0;
}
EXPORT bool qv_get_line_info_ex(int, OCR_CHAR*, int&) {
  return false;
}
EXPORT bool qv_save_ocrfile(const char*) {
  return false;
}
EXPORT const char* qv_get_result_ex() {
  return text.c_str();
}
EXPORT const wchar_t* qv_get_result_unicode() {
  wide_text.assign(text.begin(), text.end());
  return wide_text.c_str();
}
EXPORT int qv_get_result_json(char* json_buffer, int bufferlen) {
  return std::snprintf(json_buffer, static_cast<std::size_t>(bufferlen), "{}");
}
