// SPDX-License-Identifier: Apache-2.0
#include "cli/outputs/Records.h"

#include <nlohmann/json.hpp>

#include "process/page_raster.h"
#include "writers/page_jpeg.h"

using cli::PageRecord;

void Records::add(PageRecord record) {
  ++order.page_count;
  if (record.page == 0) record.page = order.page_count;
  order.pages.push_back(folder.path(cli::page_record_name(record.page)));
  cli::write_page_record(order.pages.back(), record);
}

std::string Records::written_by(Writer write) {
  progress = 0;
  write(order, path, [this] { ++progress; });
  return read_file(path);
}

PageRecord recognised(const std::string& text, const std::string& json) {
  PageRecord record;
  record.text = text;
  record.json = json;
  return record;
}

PageRecord failed(const std::string& cause) {
  PageRecord record;
  record.failure = cause;
  return record;
}

PageRecord with_picture(PageRecord record, unsigned width, unsigned height, int dots_per_inch) {
  FIBITMAP* const dib = make_bitmap(width, height);
  ofd::stamp_resolution(dib, dots_per_inch);
  record.jpeg = encode_page_jpeg(dib);
  FreeImage_Unload(dib);
  record.width = static_cast<int>(width);
  record.height = static_cast<int>(height);
  record.dots_per_inch = dots_per_inch;
  return record;
}

std::string one_word_json(const std::string& word, int confidence) {
  using Json = nlohmann::ordered_json;
  const Json box = {10, 20, 70, 40};
  const Json placed = {
      {"box", box}, {"confidence", confidence}, {"text", word}, {"characters", Json::array()}};
  const Json line = {{"box", box},        {"confidence", confidence}, {"text", word},
                     {"vertical", false}, {"paragraph_start", true},  {"words", {placed}}};
  const Json page = {{"engine", {{"name", "zelk-tesseract"}}},
                     {"languages", "eng"},
                     {"page", {{"width", 100}, {"height", 80}, {"resolution", 200}}},
                     {"detail", "characters"},
                     {"blocks", {{{"box", box}, {"lines", {line}}}}}};
  return page.dump(-1, ' ', false, Json::error_handler_t::replace);
}
