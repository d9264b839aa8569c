// SPDX-License-Identifier: Apache-2.0
#include "recognizer.h"

#include "language_choice.h"
#include "page_reader.h"

namespace tesseract_engine {
namespace {

using tesseract::TessBaseAPI;

std::unique_ptr<TessBaseAPI> loaded(const std::string& tessdata, const std::string& languages) {
  auto api = std::make_unique<TessBaseAPI>();
  // Not "": that means standard error.
  api->SetVariable("debug_file", "/dev/null");
  if (api->Init(tessdata.c_str(), languages.c_str(), tesseract::OEM_LSTM_ONLY) != 0) return nullptr;
  // Words of earlier pages must not help to read later ones.
  api->SetVariable("tessedit_enable_doc_dict", "0");
  // Without it whole lines of Han text are taken for noise now and then; Latin text reads the same.
  api->SetVariable("textord_use_cjk_fp_model", "1");
  return api;
}

void set_page(TessBaseAPI& api, Pix* pix, int resolution, tesseract::PageSegMode segmentation) {
  api.SetPageSegMode(segmentation);
  api.SetImage(pix);
  api.SetSourceResolution(resolution);
}

}  // namespace

StartResult Recognizer::start(const EngineConfig& config) {
  segmentation_ = static_cast<tesseract::PageSegMode>(config.page_segmentation);
  for (const std::string& languages : alternatives_of(config.languages)) {
    auto api = loaded(config.tessdata, languages);
    if (!api) {
      return {StartCode::kLanguageNotLoaded,
              "Tesseract does not accept the data of \"" + languages + "\" in " + config.tessdata};
    }
    alternatives_.push_back({languages, std::move(api)});
  }
  return {};
}

// The first alternative finds the lines; each other one reads a few of them.
const Recognizer::Alternative& Recognizer::choose(Pix* pix, int resolution) {
  Alternative& first = alternatives_.front();
  set_page(*first.api, pix, resolution, segmentation_);
  if (alternatives_.size() == 1) return first;

  const std::vector<Box> lines = text_lines(*first.api);
  const Alternative* best = &first;
  double best_share = kForeignShare;
  for (std::size_t i = 1; i < alternatives_.size(); ++i) {
    TessBaseAPI& api = *alternatives_[i].api;
    set_page(api, pix, resolution, tesseract::PSM_SINGLE_LINE);
    const double share = foreign_share(api, lines, *first.api);
    if (share > best_share) {
      best = &alternatives_[i];
      best_share = share;
    }
  }
  for (const Alternative& alternative : alternatives_) {
    if (&alternative != best) alternative.api->Clear();
  }
  if (best != &first) set_page(*best->api, pix, resolution, segmentation_);
  return *best;
}

bool Recognizer::recognize(Pix* pix, Page& page) {
  page.width = pixGetWidth(pix);
  page.height = pixGetHeight(pix);
  page.resolution = estimated_resolution(pix);
  const Alternative& alternative = choose(pix, page.resolution);
  page.languages = alternative.languages;
  page.reader = TessBaseAPI::Version();
  const bool read = alternative.api->Recognize(nullptr) == 0;
  if (read) page.blocks = read_blocks(*alternative.api);
  alternative.api->Clear();
  return read;
}

}  // namespace tesseract_engine
