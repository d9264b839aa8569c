// SPDX-License-Identifier: Apache-2.0
#include "missing_language.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string_view>
#include <vector>

#include "supervisor/engine_location.h"
#include "tesseract/engine_config.h"

namespace cli {
namespace {

using Names = std::vector<std::string>;

struct Script {
  const char* name;
  const char* package;  // what follows tesseract-ocr-script-
};

constexpr Script kScripts[] = {
    {"Arabic", "arab"},
    {"Armenian", "armn"},
    {"Bengali", "beng"},
    {"Canadian_Aboriginal", "cans"},
    {"Cherokee", "cher"},
    {"Cyrillic", "cyrl"},
    {"Devanagari", "deva"},
    {"Ethiopic", "ethi"},
    {"Fraktur", "frak"},
    {"Georgian", "geor"},
    {"Greek", "grek"},
    {"Gujarati", "gujr"},
    {"Gurmukhi", "guru"},
    {"HanS", "hans"},
    {"HanS_vert", "hans-vert"},
    {"HanT", "hant"},
    {"HanT_vert", "hant-vert"},
    {"Hangul", "hang"},
    {"Hangul_vert", "hang-vert"},
    {"Hebrew", "hebr"},
    {"Japanese", "jpan"},
    {"Japanese_vert", "jpan-vert"},
    {"Kannada", "knda"},
    {"Khmer", "khmr"},
    {"Lao", "laoo"},
    {"Latin", "latn"},
    {"Malayalam", "mlym"},
    {"Myanmar", "mymr"},
    {"Oriya", "orya"},
    {"Sinhala", "sinh"},
    {"Syriac", "syrc"},
    {"Tamil", "taml"},
    {"Telugu", "telu"},
    {"Thaana", "thaa"},
    {"Thai", "thai"},
    {"Tibetan", "tibt"},
    {"Vietnamese", "viet"},
};

// "deu", "chi_sim_vert": three letters, perhaps followed by others.
bool is_language_code(std::string_view name) {
  const auto is_letter = [](char letter) {
    return (letter >= 'a' && letter <= 'z') || letter == '_';
  };
  return name.size() >= 3 && std::all_of(name.begin(), name.end(), is_letter) &&
         name.find('_') >= 3 && (name.size() == 3 || name[3] == '_') && name.back() != '_';
}

std::string lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

std::string joined(const Names& names, const char* between = ", ") {
  return fmt::format("{}", fmt::join(names, between));
}

Names languages_wanted(const std::string& setting) {
  std::set<std::string> names;
  for (const std::string& list : tesseract_engine::alternatives_of(setting)) {
    std::istringstream parts(list);
    for (std::string name; std::getline(parts, name, '+');) names.insert(name);
  }
  return {names.begin(), names.end()};
}

bool stands_on_tesseract(const std::string& engine_file) {
  std::ifstream file(engine_file, std::ios::binary);
  const std::string content(std::istreambuf_iterator<char>(file), {});
  return content.find("libtesseract") != std::string::npos;
}

// What the user can do, for each language that lacks.
std::string remedy_for(const std::string& name, const Names& installed) {
  const auto other_case =
      std::find_if(installed.begin(), installed.end(),
                   [&](const std::string& there) { return lower(there) == lower(name); });
  if (other_case != installed.end()) return fmt::format("\"{}\" is", *other_case);
  const std::string package = language_package(name);
  if (!package.empty()) return fmt::format("the package {} brings it", package);
  const std::string in_lower_case = language_package(lower(name));
  if (!in_lower_case.empty()) {
    return fmt::format("the package {} brings \"{}\"", in_lower_case, lower(name));
  }
  return fmt::format("no language is called \"{}\"", name);
}

}  // namespace

std::string language_package(const std::string& name) {
  constexpr std::string_view kFolder = "script/";
  if (name.starts_with(kFolder)) {
    for (const Script& script : kScripts) {
      if (name.substr(kFolder.size()) != script.name) continue;
      return std::string("tesseract-ocr-script-") + script.package;
    }
    return "";
  }
  if (!is_language_code(name)) return "";
  std::string package = "tesseract-ocr-" + name;
  std::replace(package.begin(), package.end(), '_', '-');
  return package;
}

std::string missing_language(const std::string& engine_dir,
                             const std::optional<std::string>& option) {
  tesseract_engine::EngineConfig config;
  if (!tesseract_engine::read_config(engine_dir, config).ok()) return "";
  const tesseract_engine::StartResult check = tesseract_engine::check_languages(config);
  if (check.ok() || !stands_on_tesseract(engine_dir + kEngineFile)) return "";
  const std::string start = option ? "--lang " + *option : "the languages of the engine";
  if (check.code != tesseract_engine::StartCode::kMissingLanguage) {
    return fmt::format("{}: {}", start, check.message);
  }
  const Names installed = tesseract_engine::list_languages(config.tessdata);
  Names missing;
  Names remedies;
  for (const std::string& name : languages_wanted(config.languages)) {
    if (std::find(installed.begin(), installed.end(), name) != installed.end()) continue;
    missing.push_back(fmt::format("\"{}\"", name));
    remedies.push_back(remedy_for(name, installed));
  }
  if (missing.empty()) return fmt::format("{}: {}", start, check.message);
  return fmt::format("{}: {} {} not installed; {}; {} has {}", start, joined(missing, " and "),
                     missing.size() == 1 ? "is" : "are", joined(remedies), config.tessdata,
                     installed.empty() ? "no language" : joined(installed));
}

}  // namespace cli
