// SPDX-License-Identifier: Apache-2.0
#include "engine/QVOcrEngine.h"

#include <dlfcn.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <type_traits>

namespace {

constexpr char kLibraryName[] = "libQVEngine.so";
constexpr std::size_t kPathCapacity = 256;

template <auto Slot>
void store(QVOcrEngine& engine, void* entry) {
  using Pointer = std::remove_reference_t<decltype(engine.*Slot)>;
  engine.*Slot = reinterpret_cast<Pointer>(entry);
}

struct EntryPoint {
  const char* symbol;
  const char* message;  // printed when the library lacks the symbol; hosts match these texts
  void (*store)(QVOcrEngine&, void*);
};

// In the order in which they are looked up. Only the last one's failure leaves text in dlerror.
constexpr EntryPoint kEntryPoints[] = {
    {"qv_init_engine", "qv_init_engine = NULL", store<&QVOcrEngine::_qv_init_engine>},
    {"qv_uninit_engine", "qv_uninit_engine = NULL", store<&QVOcrEngine::_qv_uninit_engine>},
    {"qv_load_image_file", "qv_load_image_file = NULL", store<&QVOcrEngine::_qv_load_image_file>},
    {"qv_set_image_data", "qv_set_image_data = NULL", store<&QVOcrEngine::_qv_set_image_data>},
    {"qv_recognize", "qv_recognize = NULL", store<&QVOcrEngine::_qv_recognize>},
    {"qv_get_lines_num", "qv_get_lines_num == NULL", store<&QVOcrEngine::_qv_get_lines_num>},
    {"qv_get_line_info_ex", "qv_get_line_info_ex = NULL",
     store<&QVOcrEngine::_qv_get_line_info_ex>},
    {"qv_save_ocrfile", "_qv_save_ocrfile = NULL", store<&QVOcrEngine::_qv_save_ocrfile>},
    {"qv_get_result_ex", "_qv_get_result_ex = NULL", store<&QVOcrEngine::_qv_get_result_ex>},
    {"qv_get_result_unicode", "_qv_get_result_unicode = NULL",
     store<&QVOcrEngine::_qv_get_result_unicode>},
    {"qv_get_result_json", "_qv_get_result_json = NULL", store<&QVOcrEngine::_qv_get_result_json>},
};

const char* text_or_null_word(const char* text) {
  return text != nullptr ? text : "(null)";
}

void* open_library(const char* dll_path) {
  const std::string path = std::string(text_or_null_word(dll_path)) + kLibraryName;
  const bool fits = dll_path != nullptr && path.size() < kPathCapacity;
  void* library = fits ? dlopen(path.c_str(), RTLD_NOW) : nullptr;
  if (library == nullptr) {
    const char* reason = fits ? dlerror() : "no directory text of at most 241 bytes";
    std::printf("%s: dlopen () ERROR, Message(%s).\n", path.c_str(), text_or_null_word(reason));
  }
  return library;
}

}  // namespace

// Fills the slots. False, with the reason printed, when an entry point is missing.
bool QVOcrEngine::look_up_entries() {
  bool complete = true;
  for (const EntryPoint& entry : kEntryPoints) {
    void* const address = dlsym(_hinst, entry.symbol);
    entry.store(*this, address);
    if (address == nullptr) {
      std::puts(entry.message);
      complete = false;
    }
  }
  if (const char* text = dlerror()) {
    std::printf("get function adress ERROR, Message(%s).\n", text);
    return false;
  }
  if (!complete) {
    // The loader has forgotten the failed look-up, so there is no text to show.
    std::puts("dlsym get interface api address is null ERROR, Message((null)).");
  }
  return complete;
}

void QVOcrEngine::clear_slots() {
  for (const EntryPoint& entry : kEntryPoints) entry.store(*this, nullptr);
}

int QVOcrEngine::init_engine(const char* dll_path) {
  if (_load_succssed) return 0;
  _hinst = open_library(dll_path);
  if (_hinst == nullptr) return -1;
  if (!look_up_entries()) {
    dlclose(_hinst);
    clear_slots();
    return -2;
  }
  if (const int code = _qv_init_engine(dll_path); code != 0) {
    dlclose(_hinst);
    clear_slots();
    std::printf("_qv_init_engine errcode: %d \n", code);
    return -3;
  }
  _load_succssed = true;
  return 0;
}

void QVOcrEngine::uninit_engine() {
  if (!_load_succssed) return;
  if (_qv_uninit_engine != nullptr) _qv_uninit_engine();
  dlclose(_hinst);
  _hinst = nullptr;
  // The JSON slot keeps its stale value: nobody asks for JSON before a recognition has succeeded,
  // and without an engine none does.
  const QV_GET_RESULT_JSON stale_entry = _qv_get_result_json;
  clear_slots();
  _qv_get_result_json = stale_entry;
  _load_succssed = false;
}

int QVOcrEngine::load_image_file(const char* image_file, int imgpro) {
  return _qv_load_image_file != nullptr ? _qv_load_image_file(image_file, imgpro) : -1;
}

int QVOcrEngine::set_image_data(const unsigned char* image_buffer, int width, int height,
                                int bitcount, int line_bytes, int imgpro) {
  if (_qv_set_image_data == nullptr) return -1;
  return _qv_set_image_data(image_buffer, width, height, bitcount, line_bytes, imgpro);
}

int QVOcrEngine::recognize() {
  return _qv_recognize != nullptr ? _qv_recognize() : -1;
}

bool QVOcrEngine::save_ocrfile(const char* txt_file_name) {
  return _qv_save_ocrfile != nullptr ? _qv_save_ocrfile(txt_file_name) : true;
}

int QVOcrEngine::get_lines_num() {
  return _qv_get_lines_num != nullptr ? _qv_get_lines_num() : 0;
}

bool QVOcrEngine::get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num) {
  return _qv_get_line_info_ex != nullptr ? _qv_get_line_info_ex(id, char_info, char_num) : false;
}

const char* QVOcrEngine::get_result_ex() {
  return _qv_get_result_ex != nullptr ? _qv_get_result_ex() : nullptr;
}

const wchar_t* QVOcrEngine::get_result_unicode() {
  return _qv_get_result_unicode != nullptr ? _qv_get_result_unicode() : nullptr;
}

void QVOcrEngine::set_auto_rotate(bool auto_rotate) {
  if (_qv_set_auto_rotate != nullptr) _qv_set_auto_rotate(auto_rotate);
}

int QVOcrEngine::get_image_direction() {
  return _qv_get_image_direction != nullptr ? _qv_get_image_direction() : 0;
}

int QVOcrEngine::get_result_json(char* json_buffer, int bufferlen) {
  return _qv_get_result_json != nullptr ? _qv_get_result_json(json_buffer, bufferlen) : 3;
}

bool QVOcrEngine::save_form_grid(const char* dst_form_image) {
  return _qv_save_form_grid != nullptr ? _qv_save_form_grid(dst_form_image) : false;
}
