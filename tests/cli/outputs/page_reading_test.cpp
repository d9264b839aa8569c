// SPDX-License-Identifier: Apache-2.0
#include "outputs/page_reading.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "cli/outputs/Records.h"
#include "support/ScriptedEngine.h"

namespace {

using cli::PageReading;
using cli::PlacedText;
using Box = std::array<std::int64_t, 4>;
using Json = nlohmann::json;

constexpr std::int64_t kFar = std::numeric_limits<std::int64_t>::max();

// What a script cuts out of the page's text for a piece.
std::string text_at(const PageReading& page, const PlacedText& piece) {
  std::u16string units;
  for (const char32_t code : std::filesystem::path(page.text).u32string()) {
    if (code >= 0x10000) units += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
    units += static_cast<char16_t>(code < 0x10000 ? code : 0xDC00 + (code & 0x3FF));
  }
  return std::filesystem::path(units.substr(piece.start, piece.length)).string();
}

std::vector<std::string> texts(const PageReading& page, const std::vector<PlacedText>& pieces) {
  std::vector<std::string> result;
  for (const PlacedText& piece : pieces) result.push_back(text_at(page, piece));
  return result;
}

TEST(PageReading, FindsTheWordsOfTheDocumentedExample) {
  const std::string document = read_file(ZELK_DOCS "/engine-json.md");
  const std::size_t begin = document.find("```json\n") + 8;
  const std::string example = document.substr(begin, document.find("```", begin) - begin);
  const PageReading page = cli::read_page(recognised("unused", example));
  EXPECT_EQ(page.text, "of file format.\n");
  EXPECT_EQ(page.language, "en");
  EXPECT_EQ(page.width, 640);
  EXPECT_EQ(page.height, 480);
  EXPECT_EQ(texts(page, page.words), std::vector<std::string>{"of"});
  EXPECT_EQ(page.words.at(0).box, (Box{36, 160, 64, 184}));
  EXPECT_EQ(page.words.at(0).confidence, 97);
  EXPECT_EQ(texts(page, page.characters), (std::vector<std::string>{"o", "f"}));
  EXPECT_EQ(page.characters.at(1).box, (Box{53, 160, 64, 184}));
}

TEST(PageReading, CountsTextAsScriptsDo) {
  Json page = Json::parse(one_word_json("😀é中中"));
  Json& line = page["blocks"][0]["lines"][0];
  line["text"] = "中 😀é中中 中";
  Json character = line["words"][0];
  character.erase("characters");
  for (const char* text : {"😀", "é", "中", "中"}) {
    character["text"] = text;
    line["words"][0]["characters"].push_back(character);
  }
  line["words"].push_back(line["words"][0]);
  line["words"][1]["text"] = "中";
  line["words"][1]["characters"] = Json::array({character});
  page["blocks"].push_back(page["blocks"][0]);
  const PageReading reading = cli::read_page(recognised("", page.dump()));
  EXPECT_EQ(reading.text, "中 😀é中中 中\n\n中 😀é中中 中\n");
  EXPECT_EQ(texts(reading, reading.words),
            (std::vector<std::string>{"😀é中中", "中", "😀é中中", "中"}));
  EXPECT_EQ(reading.words.at(1).start, 8U);
  EXPECT_EQ(reading.words.at(2).start, 13U);
  EXPECT_EQ(texts(reading, reading.characters),
            (std::vector<std::string>{"😀", "é", "中", "中", "中", "😀", "é", "中", "中", "中"}));
}

TEST(PageReading, LinesWithoutWordsStandForThemselves) {
  Json page = Json::parse(one_word_json("a whole line"));
  page["blocks"][0]["lines"][0].erase("words");
  const PageReading reading = cli::read_page(recognised("", page.dump()));
  EXPECT_EQ(texts(reading, reading.words), std::vector<std::string>{"a whole line"});
}

TEST(PageReading, WordsThatTheLineLacksHaveABoxAndNoText) {
  Json page = Json::parse(one_word_json("word"));
  page["blocks"][0]["lines"][0]["words"][0]["text"] = "other";
  const PageReading reading = cli::read_page(recognised("", page.dump()));
  EXPECT_EQ(texts(reading, reading.words), std::vector<std::string>{""});
  EXPECT_EQ(reading.words.at(0).box, (Box{10, 20, 70, 40}));
}

TEST(PageReading, BoxesStayOnThePage) {
  Json page = Json::parse(one_word_json("word"));
  page["blocks"][0]["lines"][0]["words"][0]["box"] = {-5, -kFar, std::uint64_t{1} << 63, kFar};
  EXPECT_EQ(cli::read_page(recognised("", page.dump())).words.at(0).box, (Box{0, 0, 100, 80}));
}

TEST(PageReading, JsonOfAnotherFormGivesWayToTheCharacters) {
  const std::string good = one_word_json("word");
  EXPECT_EQ(cli::read_page(recognised("text", good)).text, "word\n");
  for (const char* change :
       {"/blocks", "/page/width", "/languages", "/blocks/0/lines/0/text",
        "/blocks/0/lines/0/words/0/box/3", "/blocks/0/lines/0/words/0/confidence"}) {
    Json page = Json::parse(good);
    page[Json::json_pointer(change)] = 1.5;
    EXPECT_EQ(cli::read_page(recognised("text", page.dump())).text, "text") << change;
  }
  for (const char* json : {"", "{", "[]", "3", "{}", R"({"blocks":[]})"}) {
    EXPECT_EQ(cli::read_page(recognised("text", json)).text, "text") << json;
  }
}

TEST(PageReading, PlacesTheRecordsCharactersInItsText) {
  cli::PageRecord record = recognised("to é中\r\nline");
  record.width = 90;
  record.height = 70;
  record.characters = {ocr_char(u't', 0, 0, 10, 20),   ocr_char(u'o', 10, 0, 20, 20),
                       ocr_char(u' ', 20, 0, 30, 20),  ocr_char(u'é', 30, 0, 40, 20),
                       ocr_char(u'中', 40, 0, 60, 20), ocr_char(u'x', 60, 0, 70, 20),
                       ocr_char(u'l', -5, 40, 9, kFar)};
  const PageReading page = cli::read_page(record);
  EXPECT_EQ(page.text, "to é中\nline");
  EXPECT_EQ(page.language, "");
  EXPECT_EQ(texts(page, page.characters), (std::vector<std::string>{"t", "o", "é", "中", "", "l"}));
  EXPECT_EQ(texts(page, page.words), (std::vector<std::string>{"to", "é中", "", "l"}));
  EXPECT_EQ(page.words.at(0).box, (Box{0, 0, 20, 20}));
  EXPECT_EQ(page.words.at(0).confidence, -1);
  EXPECT_EQ(page.characters.back().box, (Box{0, 40, 9, 70}));
}

}  // namespace
