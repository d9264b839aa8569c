// SPDX-License-Identifier: Apache-2.0
#include "supervisor/own_text_notice.h"

#include <fmt/format.h>

#include <algorithm>

namespace cli {

std::string own_text_notice(const std::vector<PageOutcome>& pages, bool was_taken) {
  const auto count = std::count_if(pages.begin(), pages.end(),
                                   [](const PageOutcome& page) { return page.has_own_text; });
  if (count == 0) return "";
  return fmt::format("{} of {} pages {}", count, pages.size(),
                     was_taken ? "keep the text that they have already"
                               : "have text already (--skip-text keeps it)");
}

}  // namespace cli
