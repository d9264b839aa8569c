// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_RECOGNIZER_H
#define ZELK_TESSERACT_RECOGNIZER_H

#include <tesseract/baseapi.h>

#include <memory>
#include <string>
#include <vector>

#include "engine_config.h"
#include "page.h"
#include "raster.h"

namespace tesseract_engine {

// Tesseract with the language data of one configuration loaded. What a page reads as does not
// depend on the pages before it. Call with a HostGuard alive.
class Recognizer {
 public:
  // Loads the data of every alternative of config.languages.
  StartResult start(const EngineConfig& config);

  // Reads a picture; false when Tesseract gives up on it. An empty page is a success.
  bool recognize(Pix* pix, Page& page);

 private:
  struct Alternative {
    std::string languages;
    std::unique_ptr<tesseract::TessBaseAPI> api;
  };

  const Alternative& choose(Pix* pix, int resolution);

  std::vector<Alternative> alternatives_;
  tesseract::PageSegMode segmentation_ = tesseract::PSM_AUTO;
};

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_RECOGNIZER_H
