// SPDX-License-Identifier: Apache-2.0
#include "supervisor/delivery.h"

#include <algorithm>
#include <fstream>

#include "exchange/error.h"

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

// Throws Error.
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

bool shares_a_file(const InputDocument& input) {
  return std::any_of(input.targets.begin(), input.targets.end(),
                     [](const auto& target) { return target.is_shared; });
}

std::string Delivery::deliver(DocumentRun& document) {
  std::string failures;
  const std::vector<InputDocument::Target>& targets = document.input().targets;
  for (std::size_t index = 0; index < targets.size(); ++index) {
    const std::string file = document.output_path(index);
    const InputDocument::Target& target = targets[index];
    try {
      if (target.path == kStandardOutput || target.is_shared) {
        append(file, target);
      } else {
        deliver_file(file, target.path, _run_folder);
      }
      if (target.path != kStandardOutput) document.outcome().outputs.push_back(target.path);
    } catch (const Error& error) {
      if (target.path == kStandardOutput || target.is_shared) throw;
      failures += (failures.empty() ? "cannot write " : ", ") + std::string(error.what());
    }
  }
  return failures;
}

void Delivery::append(const std::string& file, const InputDocument::Target& target) {
  Output* output = &_results;
  if (target.path != kStandardOutput) {
    std::unique_ptr<Output>& shared = _shared[target.path];
    if (!shared) shared = std::make_unique<Output>(target.path, _run_folder);
    output = shared.get();
  }
  const bool is_first = _appended[target.path]++ == 0;
  if (_page_break && target.format == Format::kText && !is_first) output->write({&kPageBreak, 1});
  copy_to(file, *output);
}

void Delivery::finish() {
  for (const auto& [path, output] : _shared) output->finish();
  _shared.clear();
}

}  // namespace cli
