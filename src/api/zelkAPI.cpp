// SPDX-License-Identifier: Apache-2.0
#include "api/zelkAPI.h"

#include <cstring>
#include <string>

#include "process/MainProcess.h"
#include "text/StringFormat.h"

// One object serves every host of the process; each further copy of the library that comes into it
// has one of its own, because the library is linked with -Bsymbolic. Whoever wants it looks it up
// with dlsym: a program that names it without -fPIC gets a copy that is never used. Its page count
// relies on zeroed static storage.
extern ZELK_EXPORT ofd::MainProcess _pdf_process;
ofd::MainProcess _pdf_process;

namespace {

constexpr int kPathCapacity = 256;  // longer wide paths are cut at a whole character

}  // namespace

int zelk_init_engine(const char* dll_path) {
  return _pdf_process.init_engine(dll_path);
}

int zelk_init_engine_unicode(const wchar_t* dll_path) {
  if (dll_path == nullptr) return zelk_init_engine(nullptr);
  char path[kPathCapacity] = {};  // filled to the brim it has no terminator
  qv::StringFormat::wchartoutf8(path, dll_path, kPathCapacity);
  return _pdf_process.init_engine(std::string(path, strnlen(path, sizeof path)).c_str());
}

void zelk_uninit_engine(void) {
  _pdf_process.uninit_engine();
}

int zelk_load_image_document(const char* image_filename, int resolution) {
  return _pdf_process.load_image_document(image_filename, resolution);
}

int zelk_load_image_document_unicode(const wchar_t* image_filename, int resolution) {
  if (image_filename == nullptr) return zelk_load_image_document(nullptr, resolution);
  char path[kPathCapacity + 4] = {};  // always terminated
  qv::StringFormat::wchartoutf8(path, image_filename, kPathCapacity);
  return _pdf_process.load_image_document(path, resolution);
}

void zelk_free_image_document(void) {
  _pdf_process.free_image_document();
}

bool zelk_set_double_document_filename(const char* double_document_filename) {
  return _pdf_process.set_double_document_filename(double_document_filename);
}

bool zelk_set_double_document_filename_unicode(const wchar_t*) {
  return false;
}

int zelk_recognize(void) {
  return _pdf_process.recognize();
}

const char* zelk_get_ocr_string(void) {
  return _pdf_process.get_ocr_string();
}

bool zelk_add_image(const char* image_filename) {
  return _pdf_process.add_image(image_filename);
}

bool zelk_add_image_unicode(const wchar_t*) {
  return false;
}

void zelk_clear_images(void) {
  _pdf_process.clear_images();
}

const wchar_t* zelk_get_ocr_string_unicode(void) {
  return _pdf_process.get_ocr_string_unicode();
}

const char* zelk_get_ocr_json_string(int page_id) {
  return _pdf_process.get_ocr_json_buffer(page_id);
}

const wchar_t* zelk_get_ocr_json_string_unicode(int page_id) {
  return _pdf_process.get_ocr_json_buffer_unicode(page_id);
}

int zelk_save_form_grid(const char* src_image_file, const char* dst_form_grid_file) {
  return _pdf_process.save_form_grid(src_image_file, dst_form_grid_file);
}

int zelk_save_form_grid_unicode(const wchar_t*, const wchar_t*) {
  return -1;
}
