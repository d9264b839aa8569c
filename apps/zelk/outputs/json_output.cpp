// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <algorithm>
#include <numeric>

#include "exchange/names.h"
#include "outputs/engine_json.h"
#include "outputs/output_file.h"
#include "outputs/outputs.h"
#include "outputs/utf8_text.h"

namespace cli {
namespace {

// What is told of pages beside their entries.
struct Remarks {
  std::vector<int> numbers;
  Json failed = Json::array();
  Json warnings = Json::array();
};

// The page's entry; null with a cause when there is none.
std::string page_entry(const PageRecord& record, std::string& cause) {
  cause = record.failure;
  if (cause.empty() && record.json.empty()) cause = "the engine gave no JSON";
  if (!cause.empty()) return "null";
  const std::optional<Json> json = parse_engine_json(record.json);
  if (!json) cause = "what the engine gave is not JSON";
  return json ? to_json_text(*json) : "null";
}

std::string opening(const OutputOrder& order) {
  const ShownName name = shown_name(order.file);
  return fmt::format(R"({{"file":{}{},"page_count":{},"pages":[)", to_json_text(name.text),
                     name.escaped ? R"(,"file_is_escaped":true)" : "", order.page_count);
}

// Members that only some documents have come last, when all pages are known.
std::string closing(const OutputOrder& order, const Remarks& remarks) {
  std::vector<int> all(static_cast<std::size_t>(std::max(order.page_count, 0)));
  std::iota(all.begin(), all.end(), 1);
  std::string text = "]";
  if (remarks.numbers != all) text += ",\"page_numbers\":" + to_json_text(remarks.numbers);
  if (!remarks.failed.empty()) text += ",\"failed_pages\":" + to_json_text(remarks.failed);
  if (!remarks.warnings.empty()) text += ",\"warnings\":" + to_json_text(remarks.warnings);
  return text + "}\n";
}

}  // namespace

// One line for the whole document, a page at a time: page texts can be megabytes.
void write_json(const OutputOrder& order, const std::string& path, const Progress& progress) {
  OutputFile file(path);
  file.write(opening(order));
  Remarks remarks;
  for_each_page(order, [&](const PageRecord& record) {
    if (!remarks.numbers.empty()) file.write(",");
    remarks.numbers.push_back(record.page);
    std::string cause;
    file.write(page_entry(record, cause));
    if (!cause.empty()) remarks.failed.push_back({{"page", record.page}, {"cause", cause}});
    if (!record.warning.empty()) {
      remarks.warnings.push_back({{"page", record.page}, {"warning", record.warning}});
    }
    if (progress) progress();
  });
  file.write(closing(order, remarks));
  file.finish();
}

}  // namespace cli
