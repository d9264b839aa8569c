// SPDX-License-Identifier: Apache-2.0
#include "check.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace engine_check {

const char* name_of(Severity severity) {
  constexpr const char* kNames[] = {"pass", "warn", "fail"};
  return kNames[static_cast<int>(severity)];
}

void Verdict::report(Severity severity, std::string seen) {
  severity_ = std::max(severity_, severity);
  reports_.push_back(std::move(seen));
}

std::string Verdict::seen() const {
  constexpr std::size_t kMostShown = 3;
  if (reports_.empty()) return note_;
  const std::size_t shown = std::min(reports_.size(), kMostShown);
  std::string text = fmt::format(
      "{}",
      fmt::join(reports_.begin(), reports_.begin() + static_cast<std::ptrdiff_t>(shown), "; "));
  if (shown < reports_.size()) text += fmt::format("; and {} more", reports_.size() - shown);
  return text;
}

std::vector<Check> all_checks() {
  std::vector<Check> all;
  for (const auto topic : {symbol_checks(), lifecycle_checks(), raster_checks(), order_checks(),
                           result_checks(), json_checks(), resource_checks()}) {
    all.insert(all.end(), topic.begin(), topic.end());
  }
  return all;
}

}  // namespace engine_check
