// SPDX-License-Identifier: Apache-2.0
#include "output_promises.h"

#include <nlohmann/json.hpp>

#include "fuzz_input.h"
#include "outputs/utf8_text.h"

namespace {

void check_places(const std::vector<cli::PlacedText>& pieces, const cli::PageReading& page) {
  const std::size_t length = cli::utf16_length(page.text);
  for (const cli::PlacedText& piece : pieces) {
    require(piece.start <= length && piece.length <= length - piece.start,
            "a piece is in the text");
    const auto& [left, top, right, bottom] = piece.box;
    require(std::min(left, right) >= 0 && std::max(left, right) <= page.width &&
                std::min(top, bottom) >= 0 && std::max(top, bottom) <= page.height,
            "a box lies on the page");
    require(piece.confidence >= -1 && piece.confidence <= 100, "a confidence is a percentage");
  }
}

std::size_t count(std::string_view text, std::string_view word) {
  std::size_t found = 0;
  for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
    ++found;
  return found;
}

}  // namespace

void reading_is_sound(const cli::PageReading& page) {
  check_places(page.words, page);
  check_places(page.characters, page);
}

void json_is_whole(std::string_view json) {
  require(nlohmann::json::parse(json).at("pages").size() == 1, "a page has its entry");
}

void html_is_sound(std::string_view html) {
  require(cli::displayable(html) == html, "HTML is text");
  require(count(html, "<script") == 2 && count(html, "</script") == 2, "text is no markup");
}
