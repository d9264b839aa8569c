// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <utility>

#include "outputs/output_file.h"
#include "outputs/outputs.h"

namespace cli {

// The engine's texts as they are: each ends as the engine ended it. With page breaks the form feeds
// count: there is one between any two pages, those without text too, and none inside of a page.
void write_text(const OutputOrder& order, const std::string& path, const Progress& progress) {
  OutputFile file(path);
  bool is_first = true;
  for_each_page(order, [&](const PageRecord& record) {
    std::string text = record.failure.empty() ? record.text : "";
    if (order.page_break) {
      std::replace(text.begin(), text.end(), kPageBreak, '\n');
      if (!std::exchange(is_first, false)) file.write({&kPageBreak, 1});
    }
    file.write(text);
    if (progress) progress();
  });
  file.finish();
}

}  // namespace cli
