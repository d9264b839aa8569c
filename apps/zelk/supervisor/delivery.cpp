// SPDX-License-Identifier: Apache-2.0
#include "supervisor/delivery.h"

#include <algorithm>
#include <fstream>
#include <system_error>

namespace cli {
namespace {

const char* const kStandardOutput = "-";

void copy_to(const std::string& file, Output& output) {
  std::ifstream stream(file, std::ios::binary);
  std::string block(std::size_t{1} << 18, '\0');
  while (stream.read(block.data(), static_cast<std::streamsize>(block.size())),
         stream.gcount() > 0) {
    output.write({block.data(), static_cast<std::size_t>(stream.gcount())});
  }
}

// Throws std::system_error.
void deliver_file(const std::string& file, const std::string& target,
                  const std::string& run_folder) {
  Output output(target, run_folder);
  copy_to(file, output);
  output.finish();
}

}  // namespace

bool writes_to_standard_output(const InputDocument& input) {
  return std::any_of(input.targets.begin(), input.targets.end(),
                     [](const auto& target) { return target.path == kStandardOutput; });
}

std::string deliver(DocumentRun& document, Output& results, const std::string& run_folder) {
  std::string failures;
  const std::vector<InputDocument::Target>& targets = document.input().targets;
  for (std::size_t index = 0; index < targets.size(); ++index) {
    const std::string file = document.output_path(index);
    const std::string& target = targets[index].path;
    if (target == kStandardOutput) {
      copy_to(file, results);
      continue;
    }
    try {
      deliver_file(file, target, run_folder);
      document.outcome().outputs.push_back(target);
    } catch (const std::system_error& error) {
      failures += (failures.empty() ? "cannot write " : ", ") + std::string(error.what());
    }
  }
  return failures;
}

}  // namespace cli
