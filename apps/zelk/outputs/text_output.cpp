// SPDX-License-Identifier: Apache-2.0
#include "outputs/output_file.h"
#include "outputs/outputs.h"

namespace cli {

// The engine's texts as they are: each ends as the engine ended it.
void write_text(const OutputOrder& order, const std::string& path, const Progress& progress) {
  OutputFile file(path);
  for_each_page(order, [&](const PageRecord& record) {
    if (record.failure.empty()) file.write(record.text);
    if (progress) progress();
  });
  file.finish();
}

}  // namespace cli
