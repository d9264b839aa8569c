// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_QVOCRENGINE_H
#define ZELK_ENGINE_QVOCRENGINE_H

#include "engine/qv_engine.h"

typedef int (*QV_INIT_ENGINE_LIB)(const char*);
typedef void (*QV_UNINIT_ENGINE)();
typedef int (*QV_LOAD_IMAGE_FILE)(const char*, int);
typedef int (*QV_SET_IMAGE_DATA)(const unsigned char*, int, int, int, int, int);
typedef int (*QV_RECOGNIZE)();
typedef bool (*QV_GET_LINE_INFO_EX)(int, OCR_CHAR*, int&);
typedef int (*QV_GET_LINES_NUM)();
typedef bool (*QV_SAVE_OCRFILE)(const char*);
typedef const char* (*QV_GET_RESULT_EX)();
typedef const wchar_t* (*QV_GET_RESULT_UNICODE)();
typedef void (*QV_SET_AUTO_ROTATE)(bool);
typedef int (*QV_GET_IMAGE_DIRECTION)();
typedef int (*QV_GET_RESULT_JSON)(char*, int);
typedef bool (*QV_SAVE_FORM_GRID)(const char*);

// The one contact with the recognition engine: opens libQVEngine.so, keeps its entry points in a
// table of slots and forwards calls to them. Diagnostics of a failed start go to standard output.
//
// Forwarders test only their own slot and hand arguments and results through unchanged; the value
// named beside each is returned when the slot is empty. One thread at a time; not copyable.
class QVOcrEngine {
 public:
  QVOcrEngine() = default;
  // Neither stops the engine nor closes its library: stopping is the host's decision.
  ~QVOcrEngine() = default;
  QVOcrEngine(const QVOcrEngine&) = delete;
  QVOcrEngine& operator=(const QVOcrEngine&) = delete;

  // Opens "<dll_path>libQVEngine.so" and starts the engine. No separator is inserted: `dll_path`
  // ends in "/", or is empty to let the dynamic loader search. Returns 0 when started or already
  // started (nothing is reopened then), -1 when the library cannot be opened, -2 when an entry
  // point is missing, -3 when the engine refused to start. After -2 and -3 the library is closed
  // again, all slots are empty and the library handle keeps its stale value.
  int init_engine(const char* dll_path);

  // Stops a started engine and closes its library; otherwise does nothing.
  void uninit_engine();

  int load_image_file(const char* image_file, int imgpro);  // -1
  int set_image_data(const unsigned char* image_buffer, int width, int height, int bitcount,
                     int line_bytes, int imgpro);                     // -1
  int recognize();                                                    // -1
  bool save_ocrfile(const char* txt_file_name);                       // true
  int get_lines_num();                                                // 0
  bool get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num);  // false, count untouched
  const char* get_result_ex();                                        // null
  const wchar_t* get_result_unicode();                                // null
  void set_auto_rotate(bool auto_rotate);                             // does nothing
  int get_image_direction();                                          // 0
  int get_result_json(char* json_buffer, int bufferlen);              // 3, buffer untouched
  bool save_form_grid(const char* dst_form_image);                    // false

  void* _hinst = nullptr;
  bool _load_succssed = false;
  QV_INIT_ENGINE_LIB _qv_init_engine = nullptr;
  QV_UNINIT_ENGINE _qv_uninit_engine = nullptr;
  QV_LOAD_IMAGE_FILE _qv_load_image_file = nullptr;
  QV_SET_IMAGE_DATA _qv_set_image_data = nullptr;
  QV_RECOGNIZE _qv_recognize = nullptr;
  QV_GET_LINES_NUM _qv_get_lines_num = nullptr;
  QV_GET_LINE_INFO_EX _qv_get_line_info_ex = nullptr;
  QV_SAVE_OCRFILE _qv_save_ocrfile = nullptr;
  QV_GET_RESULT_EX _qv_get_result_ex = nullptr;
  QV_GET_RESULT_UNICODE _qv_get_result_unicode = nullptr;
  // No start fills the next two and the last: engines have no entry points for them, so pages have
  // direction 0 and a form grid always fails.
  QV_GET_IMAGE_DIRECTION _qv_get_image_direction = nullptr;
  QV_SET_AUTO_ROTATE _qv_set_auto_rotate = nullptr;
  QV_GET_RESULT_JSON _qv_get_result_json = nullptr;
  QV_SAVE_FORM_GRID _qv_save_form_grid = nullptr;

 private:
  bool look_up_entries();
  void clear_slots();
};

#endif  // ZELK_ENGINE_QVOCRENGINE_H
