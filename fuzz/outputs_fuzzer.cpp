// SPDX-License-Identifier: Apache-2.0
// Outputs of a page of which an engine says anything. Whatever text, boxes and JSON are: files are
// well-formed, and nothing that was read becomes markup.
#include "outputs/outputs.h"

#include "any_page.h"
#include "exchange/files.h"
#include "file_in_memory.h"
#include "output_promises.h"

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
  reading_is_sound(cli::read_page(record));
  const std::string file = scratch_path("output");
  const std::string bytes = cli::encode_page_record(record);
  const cli::OutputOrder order{record.text.substr(0, 20), 1, {file_in_memory(bytes)}};
  cli::write_text(order, file, {});
  cli::write_json(order, file, {});
  json_is_whole(written(file));
  if (!as_html) return 0;
  cli::write_html(order, file, {});
  html_is_sound(written(file));
  return 0;
}
