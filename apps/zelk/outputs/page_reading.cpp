// SPDX-License-Identifier: Apache-2.0
#include "outputs/page_reading.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "outputs/engine_json.h"
#include "outputs/utf8_text.h"

namespace cli {
namespace {

using Box = std::array<std::int64_t, 4>;

// Collects a text and finds pieces of it in the order in which they come.
class Finder {
 public:
  explicit Finder(std::string_view text) : _text(text) {}

  // Looks for pieces between two bytes of the text.
  void restrict_to(std::size_t from, std::size_t end) {
    advance_to(from);
    _end = end;
  }
  // Places the next piece, at most `reach` bytes ahead, and moves behind it. A piece that is not
  // there gets no length.
  bool place(std::string_view piece, std::size_t reach, PlacedText& placed) {
    const std::size_t room = std::min(_end, _text.size()) - _byte;
    const std::string_view ahead =
        _text.substr(_byte, reach < room ? std::min(room, reach + piece.size()) : room);
    const std::size_t offset = piece.empty() ? std::string_view::npos : ahead.find(piece);
    const bool found = offset != std::string_view::npos;
    if (found) advance_to(_byte + offset);
    placed.start = _unit;
    placed.length = found ? utf16_length(piece) : 0;
    if (found) advance_to(_byte + piece.size());
    return found;
  }
  std::size_t byte() const { return _byte; }

 private:
  void advance_to(std::size_t byte) {
    if (byte >= _byte) {
      _unit += utf16_length(_text.substr(_byte, byte - _byte));
    } else {
      _unit -= utf16_length(_text.substr(byte, _byte - byte));
    }
    _byte = byte;
  }

  std::string_view _text;
  std::size_t _byte = 0;
  std::size_t _unit = 0;
  std::size_t _end = std::string::npos;
};

// Boxes as engines give them may lie anywhere.
Box on_page(const Box& box, const PageReading& page) {
  return {std::clamp<std::int64_t>(box[0], 0, page.width),
          std::clamp<std::int64_t>(box[1], 0, page.height),
          std::clamp<std::int64_t>(box[2], 0, page.width),
          std::clamp<std::int64_t>(box[3], 0, page.height)};
}

// ---- the engine's JSON ----

// Conversions from other kinds of numbers would be undefined for large ones.
std::int64_t integer(const Json& value) {
  if (!value.is_number_integer()) throw std::invalid_argument("a whole number is wanted");
  const bool huge = value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX;
  return huge ? INT64_MAX : value.get<std::int64_t>();
}

PlacedText placed_as(const Json& object, const PageReading& page) {
  PlacedText placed;
  Box box = {};
  for (std::size_t edge = 0; edge < box.size(); ++edge)
    box[edge] = integer(object.at("box").at(edge));
  placed.box = on_page(box, page);
  placed.confidence =
      static_cast<int>(std::clamp<std::int64_t>(integer(object.at("confidence")), 0, 100));
  return placed;
}

std::string text_of(const Json& object) {
  return displayable(object.at("text").get<std::string>());
}

void place_word(const Json& word, std::size_t end, Finder& finder, PageReading& page) {
  PlacedText placed = placed_as(word, page);
  const std::string text = text_of(word);
  const bool found = finder.place(text, std::string::npos, placed);
  page.words.push_back(placed);
  if (!word.contains("characters")) return;
  const std::size_t behind = finder.byte();
  finder.restrict_to(found ? behind - text.size() : behind, behind);
  for (const Json& character : word.at("characters")) {
    PlacedText piece = placed_as(character, page);
    finder.place(text_of(character), std::string::npos, piece);
    page.characters.push_back(piece);
  }
  finder.restrict_to(behind, end);
}

// Lines that came without words stand for themselves.
void place_line(const Json& line, PageReading& page, std::size_t start, Finder& finder) {
  const std::size_t end = start + text_of(line).size();
  finder.restrict_to(start, end);
  if (line.contains("words")) {
    for (const Json& word : line.at("words")) place_word(word, end, finder, page);
    return;
  }
  PlacedText placed = placed_as(line, page);
  finder.place(text_of(line), std::string::npos, placed);
  page.words.push_back(placed);
}

std::string language_of(const std::string& languages) {
  const std::string first = languages.substr(0, languages.find('+'));
  if (first == "eng") return "en";
  if (first == "chi_sim") return "zh-Hans";
  return first == "chi_tra" ? "zh-Hant" : "";
}

PageReading described_page(const Json& json) {
  PageReading page;
  page.width = std::max<std::int64_t>(integer(json.at("page").at("width")), 0);
  page.height = std::max<std::int64_t>(integer(json.at("page").at("height")), 0);
  page.language = language_of(json.at("languages").get<std::string>());
  std::vector<std::size_t> starts;
  for (const Json& block : json.at("blocks")) {
    if (!page.text.empty()) page.text += '\n';
    for (const Json& line : block.at("lines")) {
      starts.push_back(page.text.size());
      page.text += text_of(line) + '\n';
    }
  }
  Finder finder(page.text);
  auto start = starts.begin();
  for (const Json& block : json.at("blocks")) {
    for (const Json& line : block.at("lines")) place_line(line, page, *start++, finder);
  }
  return page;
}

// Nothing for JSON of another form.
std::optional<PageReading> described_page(const std::string& text) {
  const std::optional<Json> json = parse_engine_json(text);
  if (!json) return {};
  try {
    return described_page(*json);
  } catch (const Json::exception&) {
  } catch (const std::invalid_argument&) {
  }
  return {};
}

// ---- the record's characters ----

constexpr std::size_t kFarthest = 64;  // bytes of text that characters may skip

bool is_blank(char16_t code) {
  return code <= u' ' || code == u'\u3000' || code == u'\u00A0';
}

// Characters that follow each other without a gap in the text, on one line, are a word.
bool continues(const PlacedText& word, const PlacedText& character) {
  const bool adjoins = word.length > 0 && character.start == word.start + word.length;
  return adjoins && character.length > 0 && character.box[3] > word.box[1] &&
         character.box[1] < word.box[3] && character.box[2] > word.box[0];
}

void add_to_words(const PlacedText& character, std::vector<PlacedText>& words) {
  if (words.empty() || !continues(words.back(), character)) {
    words.push_back(character);
    return;
  }
  PlacedText& word = words.back();
  word.length += character.length;
  word.box = {std::min(word.box[0], character.box[0]), std::min(word.box[1], character.box[1]),
              std::max(word.box[2], character.box[2]), std::max(word.box[3], character.box[3])};
}

PageReading plain_page(const PageRecord& record) {
  PageReading page;
  page.text = displayable(record.text);
  page.width = record.width;
  page.height = record.height;
  Finder finder(page.text);
  for (const OCR_CHAR& character : record.characters) {
    if (is_blank(character.code)) continue;
    PlacedText placed;
    placed.box = on_page({character.left, character.top, character.right, character.bottom}, page);
    finder.place(utf8_of(character.code), kFarthest, placed);
    page.characters.push_back(placed);
    add_to_words(placed, page.words);
  }
  return page;
}

}  // namespace

PageReading read_page(const PageRecord& record) {
  std::optional<PageReading> page = described_page(record.json);
  return page ? std::move(*page) : plain_page(record);
}

}  // namespace cli
