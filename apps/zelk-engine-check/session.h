// SPDX-License-Identifier: Apache-2.0
//
// Calling the engine as the library does, through the library's own loader.
#ifndef ZELK_ENGINE_CHECK_SESSION_H
#define ZELK_ENGINE_CHECK_SESSION_H

#include <stdexcept>
#include <string>
#include <vector>

#include "check.h"
#include "engine/QVOcrEngine.h"
#include "guarded_raster.h"

namespace engine_check {

// What the library could take from the engine after a recognition.
struct Reading {
  int code = 0;          // of qv_recognize
  bool complete = true;  // neither text was null
  std::string text;
  std::wstring wide;
  std::vector<std::vector<OCR_CHAR>> lines;
  std::string json;  // up to its zero byte or the end of the buffer

  bool is_blank() const;  // no characters and no text but white space
};

// Characters and texts the same; JSON may tell the time.
bool same_content(const Reading& a, const Reading& b);

struct NotStarted : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A started engine. Not stopped by the destructor: the process of a check ends without more ado, so
// that a fault in stopping is found by the checks about stopping alone.
class Session {
 public:
  // Throws NotStarted.
  explicit Session(const Subject& subject);

  int set(const GuardedRaster& raster);
  int recognize() { return engine_.recognize(); }

  // Both; the raster is gone when it returns.
  int set_and_recognize(const GreyPage& page);
  void stop() { engine_.uninit_engine(); }

  // Lines, texts and, when `code` is 0, JSON. Believes no more than the library does.
  Reading results(int code);

  // The whole cycle for one page.
  Reading read(const GuardedRaster& raster);
  Reading read(const GreyPage& page);

  // The two steps for one line; empty when either says so.
  std::vector<OCR_CHAR> line(int id);
  std::string json(std::size_t capacity);

  QVOcrEngine& engine() { return engine_; }

 private:
  QVOcrEngine engine_;
};

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_SESSION_H
