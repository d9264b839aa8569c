// SPDX-License-Identifier: Apache-2.0
#include "page_json.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "page_text.h"
#include "script.h"

namespace tesseract_engine {
namespace {

using Json = nlohmann::ordered_json;

enum class Detail { kLines, kWords, kCharacters };

const char* name_of(Detail detail) {
  switch (detail) {
    case Detail::kLines:
      return "lines";
    case Detail::kWords:
      return "words";
    default:
      return "characters";
  }
}

Json box_json(const Box& box) {
  return Json::array({box.left, box.top, box.right, box.bottom});
}

Json item(const Box& box, double confidence, std::string text) {
  return {
      {"box", box_json(box)}, {"confidence", std::lround(confidence)}, {"text", std::move(text)}};
}

Json word_json(const Word& word, Detail detail) {
  std::u32string text;
  Json characters = Json::array();
  for (const Character& character : word.characters) {
    const std::u32string character_text = letters(character);
    text += character_text;
    if (detail == Detail::kCharacters) {
      characters.push_back(item(character.box, character.confidence, to_utf8(character_text)));
    }
  }
  Json out = item(word.box, word.confidence, to_utf8(text));
  if (detail == Detail::kCharacters) out["characters"] = std::move(characters);
  return out;
}

Json line_json(const Line& line, Detail detail) {
  Json out = item(line.box, line.confidence, to_utf8(line_text(line)));
  out["vertical"] = line.vertical;
  out["paragraph_start"] = line.starts_paragraph;
  if (detail == Detail::kLines) return out;
  Json words = Json::array();
  for (const Word& word : line.words) words.push_back(word_json(word, detail));
  out["words"] = std::move(words);
  return out;
}

Json blocks_json(const Page& page, Detail detail) {
  Json blocks = Json::array();
  for (const Block& block : page.blocks) {
    Json lines = Json::array();
    for (const Line& line : block.lines) lines.push_back(line_json(line, detail));
    blocks.push_back({{"box", box_json(block.box)}, {"lines", std::move(lines)}});
  }
  return blocks;
}

std::string text_of(const Page& page, Detail detail) {
  const Json json = {
      {"engine",
       {{"name", "zelk-tesseract"}, {"version", ZELK_ENGINE_VERSION}, {"tesseract", page.reader}}},
      {"languages", page.languages},
      {"page", {{"width", page.width}, {"height", page.height}, {"resolution", page.resolution}}},
      {"detail", name_of(detail)},
      {"blocks", blocks_json(page, detail)}};
  return json.dump();
}

}  // namespace

std::string page_json(const Page& page, std::size_t limit) {
  for (const Detail detail : {Detail::kCharacters, Detail::kWords, Detail::kLines}) {
    std::string text = text_of(page, detail);
    if (text.size() <= limit) return text;
  }
  return {};
}

}  // namespace tesseract_engine
