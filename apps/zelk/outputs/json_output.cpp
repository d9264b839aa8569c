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

struct FailedPage {
  int page;
  std::string cause;
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
std::string closing(const OutputOrder& order, const std::vector<int>& numbers,
                    const std::vector<FailedPage>& failed) {
  std::vector<int> all(static_cast<std::size_t>(std::max(order.page_count, 0)));
  std::iota(all.begin(), all.end(), 1);
  std::string text = "]";
  if (numbers != all) text += ",\"page_numbers\":" + to_json_text(numbers);
  Json list = Json::array();
  for (const auto& [page, cause] : failed) list.push_back({{"page", page}, {"cause", cause}});
  if (!list.empty()) text += ",\"failed_pages\":" + to_json_text(list);
  return text + "}\n";
}

}  // namespace

// One line for the whole document, a page at a time: page texts can be megabytes.
void write_json(const OutputOrder& order, const std::string& path, const Progress& progress) {
  OutputFile file(path);
  file.write(opening(order));
  std::vector<int> numbers;
  std::vector<FailedPage> failed;
  for_each_page(order, [&](const PageRecord& record) {
    if (!numbers.empty()) file.write(",");
    numbers.push_back(record.page);
    std::string cause;
    file.write(page_entry(record, cause));
    if (!cause.empty()) failed.push_back({record.page, cause});
    if (progress) progress();
  });
  file.write(closing(order, numbers, failed));
  file.finish();
}

}  // namespace cli
