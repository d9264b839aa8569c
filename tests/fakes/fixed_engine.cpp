// SPDX-License-Identifier: Apache-2.0
// A stand-in engine without state or script. Compiled once for each entry point with that one left
// out (LACKS_<entry point>), and once with a start that fails (INIT_CODE).
#include "engine/qv_engine.h"

#ifndef INIT_CODE
#define INIT_CODE 0
#endif

extern "C" {
#ifndef LACKS_qv_init_engine
int qv_init_engine(const char*) {
  return INIT_CODE;
}
#endif
#ifndef LACKS_qv_uninit_engine
void qv_uninit_engine() {}
#endif
#ifndef LACKS_qv_load_image_file
int qv_load_image_file(const char*, int) {
  return 1;
}
#endif
#ifndef LACKS_qv_set_image_data
int qv_set_image_data(const unsigned char*, int, int, int, int, int) {
  return 0;
}
#endif
#ifndef LACKS_qv_recognize
int qv_recognize() {
  return 0;
}
#endif
#ifndef LACKS_qv_get_lines_num
int qv_get_lines_num() {
  return 0;
}
#endif
#ifndef LACKS_qv_get_line_info_ex
bool qv_get_line_info_ex(int, OCR_CHAR*, int&) {
  return false;
}
#endif
#ifndef LACKS_qv_save_ocrfile
bool qv_save_ocrfile(const char*) {
  return false;
}
#endif
#ifndef LACKS_qv_get_result_ex
const char* qv_get_result_ex() {
  return "fixed\n";
}
#endif
#ifndef LACKS_qv_get_result_unicode
const wchar_t* qv_get_result_unicode() {
  return L"fixed\n";
}
#endif
#ifndef LACKS_qv_get_result_json
int qv_get_result_json(char* json_buffer, int bufferlen) {
  if (bufferlen > 2) json_buffer[0] = '{', json_buffer[1] = '}';
  return 0;
}
#endif
}
