// SPDX-License-Identifier: Apache-2.0
// Outputs of a page of which an engine says anything. Whatever text, boxes and JSON are: files are
// well-formed, and nothing that was read becomes markup.
#include "outputs/outputs.h"

#include <nlohmann/json.hpp>

#include "any_page.h"
#include "exchange/files.h"
#include "file_in_memory.h"
#include "outputs/page_reading.h"
#include "outputs/utf8_text.h"

namespace {

cli::PageRecord any_record(FuzzInput& input) {
  cli::PageRecord record;
  record.page = 1;
  record.width = input.below(64);
  record.height = input.below(64);
  if (input.below(8) == 0) record.failure = input.text(100);
  if (input.below(8) == 0) record.warning = input.text(100);
  record.characters = any_characters(input);
  record.text = input.text(1000);
  record.json = input.rest();
  return record;
}

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

bool is_utf8(std::string_view text) {
  return cli::displayable(text) == text;
}

std::string written(const std::string& file) {
  const std::optional<std::string> content = cli::read_file(file);
  require(content.has_value(), "a file was written");
  return *content;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const bool as_html = input.below(8) == 0;  // takes most of the time
  const cli::PageRecord record = any_record(input);
  const cli::PageReading page = cli::read_page(record);
  check_places(page.words, page);
  check_places(page.characters, page);

  const std::string file = scratch_path("output");
  const std::string bytes = cli::encode_page_record(record);
  const cli::OutputOrder order{record.text.substr(0, 20), 1, {file_in_memory(bytes)}};
  cli::write_text(order, file, {});
  cli::write_json(order, file, {});
  const auto json = nlohmann::json::parse(written(file));
  require(json.at("pages").size() == 1, "a page has its entry");
  if (!as_html) return 0;
  cli::write_html(order, file, {});
  const std::string html = written(file);
  require(is_utf8(html), "HTML is text");
  require(count(html, "<script") == 2 && count(html, "</script") == 2, "text is no markup");
  return 0;
}
