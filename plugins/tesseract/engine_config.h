// SPDX-License-Identifier: Apache-2.0
//
// Settings of the default engine, and what its language data folder holds. Standard library only:
// programs beside the engine use it too.
#ifndef ZELK_TESSERACT_ENGINE_CONFIG_H
#define ZELK_TESSERACT_ENGINE_CONFIG_H

#include <string>
#include <vector>

namespace tesseract_engine {

// What qv_init_engine returns.
enum class StartCode : int {
  kStarted = 0,
  kUnreadableConfig = 1,     // QVEngine.conf is there but cannot be read
  kUnknownSetting = 2,       // a key of QVEngine.conf is unknown, or a line is not "key = value"
  kBadPageSegmentation = 3,  // not one of the accepted numbers
  kBadLanguages = 4,         // the language setting is empty or malformed
  kUnreadableData = 5,       // the folder of language data cannot be read
  kMissingLanguage = 6,      // the folder lacks a language
  kLanguageNotLoaded = 7,    // Tesseract does not accept the data of a language
  kUnexpected = 8,           // memory ran out, or another failure that no setting explains
};

struct EngineConfig {
  // Tesseract's lists ("eng", "chi_sim+eng"), separated by "|"; of these one is chosen for each
  // page.
  std::string languages = "eng|chi_sim";
  // The folder that holds LANGUAGE.traineddata; empty: where it is usually found.
  std::string tessdata;
  // Tesseract's page segmentation mode: 3 to 11 or 13.
  int page_segmentation = 3;
};

// The outcome of a step; `message` is one line that names what is wrong, empty on success.
struct StartResult {
  StartCode code = StartCode::kStarted;
  std::string message;
  bool ok() const { return code == StartCode::kStarted; }
};

// Settings from QVEngine.conf in `engine_dir` ("" or ending in "/"), if there is one, overridden by
// the environment: QV_LANGUAGES, QV_TESSDATA, QV_PAGE_SEGMENTATION; an empty variable counts as
// unset. A relative `tessdata` in the file starts from `engine_dir`. Fills in the usual folder
// where none is set. Does not look into the folder.
StartResult read_config(const std::string& engine_dir, EngineConfig& config);

// The alternatives of a language setting: "eng|chi_sim+eng" gives {"eng", "chi_sim+eng"}. Empty
// when the setting is malformed.
std::vector<std::string> alternatives_of(const std::string& languages);

// Whether the folder is readable and has data for each language of the setting.
StartResult check_languages(const EngineConfig& config);

// The languages that the folder has data for, sorted; empty when it cannot be read. Data that reads
// no text ("osd", "equ") is left out.
std::vector<std::string> list_languages(const std::string& tessdata);

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_ENGINE_CONFIG_H
