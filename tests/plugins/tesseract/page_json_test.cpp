// SPDX-License-Identifier: Apache-2.0
#include "page_json.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "plugins/tesseract/PageBuilding.h"

namespace {

using namespace tesseract_engine;
using Json = nlohmann::json;

constexpr auto kNoLimit = std::numeric_limits<std::size_t>::max();

Page small_page() {
  Page page;
  page.width = 800;
  page.height = 600;
  page.resolution = 150;
  page.languages = "eng";
  page.reader = "5.3.0";
  page.blocks.push_back(
      {{0, 10, 90, 50}, {line({word(U"two", 0, 10), word(U"ﬁsh", 40, 10, true)}, true)}});
  return page;
}

TEST(PageJson, HoldsPageBlocksLinesWordsAndCharacters) {
  const Json json = Json::parse(page_json(small_page(), kNoLimit));
  EXPECT_EQ(json["page"], (Json{{"width", 800}, {"height", 600}, {"resolution", 150}}));
  EXPECT_EQ(json["languages"], "eng");
  EXPECT_EQ(json["engine"]["tesseract"], "5.3.0");
  EXPECT_EQ(json["detail"], "characters");
  const Json& first = json["blocks"][0]["lines"][0];
  EXPECT_EQ(first["text"], "two fish");
  EXPECT_EQ(first["box"], (Json{0, 10, 70, 50}));
  EXPECT_EQ(first["confidence"], 90);
  const Json& fish = first["words"][1];
  EXPECT_EQ(fish["text"], "fish");
  EXPECT_EQ(fish["box"], (Json{40, 10, 70, 40}));
  EXPECT_EQ(fish["characters"][0],
            (Json{{"text", "fi"}, {"box", {40, 10, 50, 40}}, {"confidence", 91}}));
}

TEST(PageJson, AnEmptyPageHasNoBlocks) {
  EXPECT_EQ(Json::parse(page_json(Page(), kNoLimit))["blocks"], Json::array());
}

TEST(PageJson, LeavesOutCharactersThenWordsThenEverything) {
  const Page page = small_page();
  const std::size_t whole = page_json(page, kNoLimit).size();
  EXPECT_EQ(page_json(page, whole).size(), whole);

  const std::string words = page_json(page, whole - 1);
  const Json word_detail = Json::parse(words);
  EXPECT_EQ(word_detail["detail"], "words");
  EXPECT_FALSE(word_detail["blocks"][0]["lines"][0]["words"][0].contains("characters"));

  const std::string lines = page_json(page, words.size() - 1);
  const Json line_detail = Json::parse(lines);
  EXPECT_EQ(line_detail["detail"], "lines");
  EXPECT_FALSE(line_detail["blocks"][0]["lines"][0].contains("words"));
  EXPECT_EQ(line_detail["blocks"][0]["lines"][0]["text"], "two fish");

  EXPECT_EQ(page_json(page, lines.size() - 1), "");
}

TEST(PageJson, WhatIsNoCharacterBecomesTheReplacementCharacter) {
  Page page = small_page();
  page.blocks[0].lines[0].words[0].characters[0].text.front() = 0xD800;
  const Json json = Json::parse(page_json(page, kNoLimit));
  EXPECT_EQ(json["blocks"][0]["lines"][0]["words"][0]["characters"][0]["text"], "\xEF\xBF\xBD");
}

}  // namespace
