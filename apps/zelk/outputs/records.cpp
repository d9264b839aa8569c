// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <stdexcept>

#include "outputs/outputs.h"

namespace cli {

void for_each_page(const OutputOrder& order, const std::function<void(const PageRecord&)>& each) {
  for (const std::string& path : order.pages) {
    const std::optional<PageRecord> record = read_page_record(path);
    if (!record) throw std::runtime_error(fmt::format("{}: missing or damaged page record", path));
    each(*record);
  }
}

}  // namespace cli
