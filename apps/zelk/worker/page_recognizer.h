// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PAGE_RECOGNIZER_H
#define ZELK_APPS_WORKER_PAGE_RECOGNIZER_H

#include <string>

#include "exchange/page_record.h"
#include "process/MainProcess.h"

struct FIBITMAP;

namespace cli {

// The library's process object, driven page by page: what it makes of a page is what a host gets
// that recognises the document as a whole.
class PageRecognizer {
 public:
  // Why the engine in the directory, which ends in "/", did not start; empty when it did.
  std::string start(const std::string& engine_dir);
  void stop();

  // Fills in text, JSON and characters, or the failure. `bitmap` is a 24-bit page and is only read.
  void recognize(FIBITMAP* bitmap, PageRecord& record);

 private:
  ofd::MainProcess _process;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PAGE_RECOGNIZER_H
