// SPDX-License-Identifier: Apache-2.0
#include "engine_config.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace tesseract_engine {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kExtension = ".traineddata";

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  for (;;) {
    const auto end = text.find(separator);
    parts.emplace_back(trimmed(text.substr(0, end)));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

bool is_language_name(std::string_view name) {
  const auto allowed = [](unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '/';
  };
  return !name.empty() && std::all_of(name.begin(), name.end(), allowed);
}

StartResult set_page_segmentation(std::string_view value, EngineConfig& config) {
  int mode = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), mode);
  const bool whole = error == std::errc() && end == value.data() + value.size();
  if (!whole || !((mode >= 3 && mode <= 11) || mode == 13)) {
    return {StartCode::kBadPageSegmentation,
            "page segmentation \"" + std::string(value) + "\" is none of 3 to 11 and 13"};
  }
  config.page_segmentation = mode;
  return {};
}

StartResult set(std::string_view key, std::string_view value, EngineConfig& config) {
  if (key == "languages") {
    config.languages = value;
  } else if (key == "tessdata") {
    config.tessdata = value;
  } else if (key == "page_segmentation") {
    return set_page_segmentation(value, config);
  } else {
    return {StartCode::kUnknownSetting, "unknown setting \"" + std::string(key) + "\""};
  }
  return {};
}

StartResult read_line(std::string_view line, EngineConfig& config) {
  line = trimmed(line.substr(0, line.find('#')));
  if (line.empty()) return {};
  const auto equals = line.find('=');
  if (equals == std::string_view::npos) {
    return {StartCode::kUnknownSetting, "\"" + std::string(line) + "\" is not \"key = value\""};
  }
  return set(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)), config);
}

StartResult read_file(const std::string& engine_dir, EngineConfig& config) {
  const fs::path path = fs::path(engine_dir) / "QVEngine.conf";
  std::error_code error;
  if (!fs::exists(path, error)) return {};
  std::ifstream file(path);
  if (!file || !fs::is_regular_file(path, error)) {
    return {StartCode::kUnreadableConfig, path.string() + " cannot be read"};
  }
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    StartResult result = read_line(line, config);
    if (!result.ok()) {
      result.message = path.string() + ":" + std::to_string(number) + ": " + result.message;
      return result;
    }
  }
  if (!config.tessdata.empty()) config.tessdata = fs::path(engine_dir) / config.tessdata;
  return {};
}

StartResult read_environment(EngineConfig& config) {
  constexpr struct {
    const char* variable;
    const char* key;
  } kVariables[] = {{"QV_LANGUAGES", "languages"},
                    {"QV_TESSDATA", "tessdata"},
                    {"QV_PAGE_SEGMENTATION", "page_segmentation"}};
  for (const auto& [variable, key] : kVariables) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value == '\0') continue;
    StartResult result = set(key, trimmed(value), config);
    if (!result.ok()) {
      result.message = std::string(variable) + ": " + result.message;
      return result;
    }
  }
  return {};
}

std::string usual_tessdata(const std::string& engine_dir) {
  std::vector<std::string> folders = {engine_dir + "tessdata"};
  if (const char* prefix = std::getenv("TESSDATA_PREFIX")) folders.emplace_back(prefix);
  folders.insert(folders.end(),
                 {"/usr/share/tesseract-ocr/5/tessdata", "/usr/share/tesseract-ocr/tessdata",
                  "/usr/share/tessdata", "/usr/local/share/tessdata"});
  const auto found = std::find_if(folders.begin(), folders.end(), [](const std::string& folder) {
    return !list_languages(folder).empty();
  });
  return found != folders.end() ? *found : "/usr/share/tesseract-ocr/5/tessdata";
}

}  // namespace

StartResult read_config(const std::string& engine_dir, EngineConfig& config) {
  StartResult result = read_file(engine_dir, config);
  if (result.ok()) result = read_environment(config);
  if (result.ok() && config.tessdata.empty()) config.tessdata = usual_tessdata(engine_dir);
  return result;
}

std::vector<std::string> alternatives_of(const std::string& languages) {
  std::vector<std::string> alternatives;
  for (const std::string& part : split(languages, '|')) {
    std::string alternative;
    for (const std::string& name : split(part, '+')) {
      if (!is_language_name(name)) return {};
      alternative += (alternative.empty() ? "" : "+") + name;
    }
    alternatives.push_back(std::move(alternative));
  }
  return alternatives;
}

StartResult check_languages(const EngineConfig& config) {
  const std::vector<std::string> alternatives = alternatives_of(config.languages);
  if (alternatives.empty()) {
    return {StartCode::kBadLanguages,
            "\"" + config.languages + "\" is no list of languages such as eng|chi_sim+eng"};
  }
  std::error_code error;
  const fs::directory_iterator folder(config.tessdata, error);
  if (error) {
    return {StartCode::kUnreadableData, "folder of language data \"" + config.tessdata +
                                            "\" cannot be read: " + error.message()};
  }
  for (const std::string& alternative : alternatives) {
    for (const std::string& name : split(alternative, '+')) {
      const fs::path file = fs::path(config.tessdata) / (name + std::string(kExtension));
      if (!std::ifstream(file) || !fs::is_regular_file(file, error)) {
        return {StartCode::kMissingLanguage,
                "language \"" + name + "\": " + file.string() + " cannot be read"};
      }
    }
  }
  return {};
}

std::vector<std::string> list_languages(const std::string& tessdata) {
  std::vector<std::string> names;
  std::error_code error;
  fs::recursive_directory_iterator entry(tessdata, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    if (entry->path().extension() != kExtension) continue;
    std::string name = entry->path().lexically_relative(tessdata).replace_extension().string();
    if (name != "osd" && name != "equ") names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tesseract_engine
