// SPDX-License-Identifier: Apache-2.0
// A stand-in engine for programs: its text says what it was given, and it prints on standard output
// wherever it can. FAKE_ENGINE in the environment makes it misbehave:
//   broken-json   the JSON of pages is cut off
//   no-json       there is no JSON
//   failing       no page can be recognised
//   slow          recognition takes a minute
//   crash-at-start
//   hang-at-start
//   steady        recognition takes a tenth of a second
//   telling       the text tells the state of the process as well
// FAKE_FAULTS (faults.h) does worse.
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <string>

#include "engine/qv_engine.h"
#include "fakes/faults.h"

namespace {

int page_width = 0;
int page_height = 0;
char text[200];
wchar_t wide_text[200];

bool asked_to_be(const char* manner) {
  const char* asked = std::getenv("FAKE_ENGINE");
  return asked != nullptr && std::strcmp(asked, manner) == 0;
}

const char* languages() {
  const char* set = std::getenv("QV_LANGUAGES");
  return set == nullptr ? "default" : set;
}

// Relative names lead to the scratch folder, new files can be read, numbers have a decimal point.
void tell_state() {
  const mode_t mask = umask(0);
  umask(mask);
  char folder[4096] = "";
  const char* const scratch = std::getenv("TMPDIR");
  const bool at_home = getcwd(folder, sizeof folder) != nullptr && scratch != nullptr &&
                       std::strcmp(folder, scratch) == 0;
  std::snprintf(text, sizeof text, "%dx%d %s %s %03o %s\n", page_width, page_height, languages(),
                std::setlocale(LC_ALL, nullptr), static_cast<unsigned>(mask),
                at_home ? "at home" : "elsewhere");
}

}  // namespace

extern "C" {

int qv_init_engine(const char*) {
  if (asked_to_be("crash-at-start")) raise(SIGSEGV);
  if (asked_to_be("hang-at-start")) {
    std::printf("chatter: starting\n");
    sleep(600);
  }
  std::printf("chatter: started\n");
  std::fflush(stdout);
  return 0;
}

void qv_uninit_engine() {
  std::printf("chatter: stopped\n");
}

int qv_load_image_file(const char*, int) {
  return 1;
}

int qv_set_image_data(const unsigned char*, int width, int height, int, int, int) {
  page_width = width;
  page_height = height;
  return 0;
}

int qv_recognize() {
  std::printf("chatter: recognising\n");
  text[0] = '\0';
  if (asked_to_be("slow")) sleep(60);
  if (asked_to_be("steady")) usleep(100000);
  if (asked_to_be("failing")) return 1;
  if (asked_to_be("telling")) tell_state();
  if (const int code = commit_faults(page_width)) return code;
  if (text[0] != '\0') return 0;
  std::snprintf(text, sizeof text, "%dx%d %s\n", page_width, page_height, languages());
  return 0;
}

int qv_get_lines_num() {
  return has_fault("absurd", page_width) ? 2000000000 : 0;
}

bool qv_get_line_info_ex(int, OCR_CHAR*, int& char_num) {
  if (has_fault("absurd", page_width)) char_num = 2000000000;
  return has_fault("absurd", page_width);
}

bool qv_save_ocrfile(const char*) {
  return false;
}

const char* qv_get_result_ex() {
  return text;
}

const wchar_t* qv_get_result_unicode() {
  std::swprintf(wide_text, sizeof wide_text / sizeof wide_text[0], L"%s", text);
  return wide_text;
}

int qv_get_result_json(char* json_buffer, int bufferlen) {
  if (asked_to_be("no-json")) return 1;
  const auto capacity = static_cast<size_t>(bufferlen);
  if (has_fault("endless", page_width)) {
    std::memset(json_buffer, 'x', capacity);
    return 0;
  }
  if (asked_to_be("broken-json")) return std::snprintf(json_buffer, capacity, "{\"width\":");
  return std::snprintf(json_buffer, capacity,
                       "{\n \"width\": %d,\n \"height\": %d,\n \"languages\": \"%s\"\n}\n",
                       page_width, page_height, languages());
}
}
