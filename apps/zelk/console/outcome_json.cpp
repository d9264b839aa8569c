// SPDX-License-Identifier: Apache-2.0
#include "console/outcome_json.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "exchange/names.h"

namespace cli {
namespace {

// Milliseconds are as much as anybody can read.
double rounded(double seconds) {
  return std::isfinite(seconds) ? std::max(0.0, std::round(seconds * 1000.0) / 1000.0) : 0.0;
}

}  // namespace

const char* state_name(DocumentState state) {
  switch (state) {
    case DocumentState::kDelivered:
      return "delivered";
    case DocumentState::kDeliveredWithFailedPages:
      return "delivered with failed pages";
    case DocumentState::kUnreadable:
      return "unreadable";
    case DocumentState::kPasswordNeeded:
      return "password needed";
    case DocumentState::kFailed:
      return "failed";
    case DocumentState::kOutputFailed:
      return "output failed";
    case DocumentState::kSkipped:
      return "skipped";
    case DocumentState::kInterrupted:
      break;
  }
  return "interrupted";
}

void add_name(OrderedJson& object, const char* key, const std::string& name) {
  const ShownName shown = shown_name(name);
  object[key] = shown.text;
  if (shown.escaped) object["name_escaped"] = true;
}

OrderedJson page_json(const PageOutcome& page) {
  OrderedJson json = {{"page", page.page},
                      {"state", page.failure.empty() ? "recognised" : "failed"}};
  if (!page.failure.empty()) json["cause"] = shown_name(page.failure).text;
  if (!page.warning.empty()) json["warning"] = shown_name(page.warning).text;
  json["seconds"] = rounded(page.seconds);
  json["worker_memory_kib"] = page.memory_kib;
  if (page.resumed) json["resumed"] = true;
  if (page.has_own_text) json["has_own_text"] = true;
  return json;
}

OrderedJson document_json(const DocumentOutcome& document) {
  long memory_kib = 0;
  int failed = 0;
  for (const PageOutcome& page : document.pages) {
    memory_kib = std::max(memory_kib, page.memory_kib);
    failed += page.failure.empty() ? 0 : 1;
  }
  OrderedJson outputs = OrderedJson::array();
  for (const std::string& output : document.outputs) outputs.push_back(shown_name(output).text);

  OrderedJson json;
  add_name(json, "name", document.name);
  json["state"] = state_name(document.state);
  if (!document.cause.empty()) json["cause"] = shown_name(document.cause).text;
  if (!document.notice.empty()) json["notice"] = document.notice;
  json["page_count"] = document.page_count;
  json["failed_pages"] = failed;
  json["seconds"] = rounded(document.seconds);
  json["worker_memory_kib"] = memory_kib;
  json["outputs"] = std::move(outputs);
  return json;
}

OrderedJson totals_json(const RunTotals& totals) {
  return {{"documents", totals.documents},
          {"pages", totals.pages},
          {"failed_pages", totals.failed_pages},
          {"seconds", rounded(totals.seconds)},
          {"supervisor_memory_kib", totals.supervisor_memory_kib},
          {"worker_memory_kib", totals.worker_memory_kib},
          {"workers_started", totals.workers_started}};
}

std::string json_line(const OrderedJson& json) {
  const std::string text = json.dump(-1, ' ', false, OrderedJson::error_handler_t::replace);
  std::string line;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = utf8_character_length(std::string_view(text).substr(at));
    const std::string character = text.substr(at, length);
    line += is_control_character(character, length)
                ? fmt::format("\\u{:04x}", static_cast<unsigned char>(character.back()))
                : character;
    at += length;
  }
  return line;
}

}  // namespace cli
