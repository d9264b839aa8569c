// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace engine_check {
namespace {

using Json = nlohmann::ordered_json;

// Engines' words can hold anything; a finding is one line.
std::string on_one_line(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
  return text;
}

long count_of(const Report& report, Severity severity) {
  return std::count_if(report.findings.begin(), report.findings.end(),
                       [severity](const Finding& f) { return f.severity == severity; });
}

}  // namespace

Severity Report::worst() const {
  Severity worst = Severity::kPass;
  for (const Finding& finding : findings) worst = std::max(worst, finding.severity);
  return worst;
}

std::string line_of(const Finding& finding) {
  return on_one_line(fmt::format("{}  {:28} expected: {}; seen: {}", name_of(finding.severity),
                                 finding.check, finding.expected, finding.seen)) +
         "\n";
}

std::string summary_of(const Report& report) {
  std::string text =
      fmt::format("{} passed, {} warned, {} failed", count_of(report, Severity::kPass),
                  count_of(report, Severity::kWarn), count_of(report, Severity::kFail));
  if (!report.not_run.empty()) text += fmt::format(", {} not run", report.not_run.size());
  return text + "\n";
}

std::string json_of(const Report& report) {
  Json findings = Json::array();
  for (const Finding& finding : report.findings) {
    findings.push_back({{"check", finding.check},
                        {"result", name_of(finding.severity)},
                        {"expected", finding.expected},
                        {"seen", on_one_line(finding.seen)},
                        {"milliseconds", finding.milliseconds}});
  }
  Json json = {{"engine", report.engine_file},
               {"page", report.page.empty() ? Json() : Json(report.page)},
               {"result", name_of(report.worst())},
               {"findings", findings},
               {"not_run", report.not_run}};
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace engine_check
