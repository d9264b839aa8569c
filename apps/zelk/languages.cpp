// SPDX-License-Identifier: Apache-2.0
#include "languages.h"

#include <set>
#include <sstream>

#include "exchange/names.h"
#include "tesseract/engine_config.h"

namespace cli {

std::string language_folder(const std::string& engine_dir) {
  tesseract_engine::EngineConfig config;
  return tesseract_engine::read_config(engine_dir, config).ok() ? config.tessdata : "";
}

std::vector<std::string> language_files(const std::string& engine_dir) {
  tesseract_engine::EngineConfig config;
  if (!tesseract_engine::read_config(engine_dir, config).ok()) return {};
  std::set<std::string> files;
  for (const std::string& list : tesseract_engine::alternatives_of(config.languages)) {
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, '+');) {
      files.insert(config.tessdata + "/" + name + ".traineddata");
    }
  }
  return {files.begin(), files.end()};
}

std::string language_list(const std::string& engine_dir, std::string& reason) {
  tesseract_engine::EngineConfig config;
  const tesseract_engine::StartResult read = tesseract_engine::read_config(engine_dir, config);
  if (!read.ok()) {
    reason = read.message;
    return "";
  }
  std::string list;
  for (const std::string& language : tesseract_engine::list_languages(config.tessdata)) {
    list += line_name(language) + "\n";
  }
  if (list.empty()) reason = "no language data in \"" + config.tessdata + "\"";
  return list;
}

}  // namespace cli
