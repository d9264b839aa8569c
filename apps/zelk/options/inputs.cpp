// SPDX-License-Identifier: Apache-2.0
#include "options/inputs.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "exchange/names.h"
#include "options/folders.h"
#include "options/input_arguments.h"
#include "options/targets.h"

namespace cli {
namespace {

std::vector<InputDocument> make_documents(const Options& options, const FoundInputs& found) {
  std::vector<std::string> paths;
  for (const FoundInput& input : found.inputs) paths.push_back(input.relative);
  if (options.image_list) paths.resize(1);
  const std::vector<std::string> names = distinct_names(paths);

  std::vector<InputDocument> documents;
  for (size_t i = 0; i < names.size(); ++i) {
    const std::string& file = found.inputs[i].name;
    documents.push_back({file, {file}, targets_of(options, names[i])});
  }
  if (options.image_list) {
    documents[0].files.clear();
    for (const FoundInput& input : found.inputs) documents[0].files.push_back(input.name);
  }
  return documents;
}

// Text and JSON of several documents follow each other in one stream, as long as no other format
// goes there.
bool is_one_stream(const Options& options) {
  return options.directory.empty() && options.formats.size() == 1 &&
         (options.formats[0] == Format::kText || options.formats[0] == Format::kJson);
}

std::string check_number(const Options& options, size_t documents) {
  if (documents <= 1) return "";
  if (!options.pdf.empty()) {
    return fmt::format("--pdf is for one document at a time, here are {}", documents);
  }
  if (options.directory.empty() && !is_one_stream(options)) {
    return fmt::format("{} documents need --directory DIR for their outputs", documents);
  }
  return "";
}

// All outputs of a run, each with what writes it.
using OutputOwners = std::map<std::string, std::string>;

// Absolute and without detours, so that two spellings of one path are seen to be the same.
std::string plain_path(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::absolute(path, ignored).lexically_normal().string();
}

std::string claim(OutputOwners& owners, const std::string& path, const std::string& owner) {
  const auto [entry, is_new] = owners.try_emplace(plain_path(path), owner);
  if (is_new) return "";
  return fmt::format("{} and {} would both be written to {}", line_name(entry->second),
                     line_name(owner), line_name(path));
}

std::string check_outputs_differ(const Options& options, const Inputs& inputs) {
  OutputOwners owners;
  if (!options.report.empty()) claim(owners, options.report, "the report");
  bool stream_claimed = false;
  for (const InputDocument& document : inputs.documents) {
    for (const InputDocument::Target& target : document.targets) {
      const bool is_stream = is_one_stream(options) && target.path == options.output;
      if (target.path == "-" || (is_stream && stream_claimed)) continue;
      stream_claimed = stream_claimed || is_stream;
      std::string mistake = claim(owners, target.path, document.name);
      if (!mistake.empty()) return mistake;
    }
  }
  return "";
}

std::string check_inputs_stay(const Options& options, const FoundInputs& found,
                              const Inputs& inputs) {
  std::map<FileIdentity, std::string> read;
  for (const FoundInput& input : found.inputs) {
    if (input.name != "-") read.try_emplace(identity_of(input.name), input.name);
  }
  for (const std::string& list : found.lists) read.try_emplace(identity_of(list), list);
  read.erase(FileIdentity());

  std::set<std::string> outputs{options.report};
  for (const InputDocument& document : inputs.documents) {
    for (const InputDocument::Target& target : document.targets) outputs.insert(target.path);
  }
  for (const std::string& output : outputs) {
    if (output.empty() || output == "-") continue;
    const auto overwritten = read.find(identity_of(output));
    if (overwritten == read.end()) continue;
    return fmt::format("{} is an input, it cannot be the output too",
                       line_name(overwritten->second));
  }
  return "";
}

bool has_all_outputs(const InputDocument& document) {
  const auto exists = [](const InputDocument::Target& target) {
    std::error_code ignored;
    return target.path != "-" && std::filesystem::exists(target.path, ignored);
  };
  return std::all_of(document.targets.begin(), document.targets.end(), exists);
}

void skip_existing(Inputs& inputs) {
  const auto done = std::stable_partition(
      inputs.documents.begin(), inputs.documents.end(),
      [](const InputDocument& document) { return !has_all_outputs(document); });
  for (auto document = done; document != inputs.documents.end(); ++document) {
    inputs.skipped.push_back(document->name);
  }
  inputs.documents.erase(done, inputs.documents.end());
}

}  // namespace

Inputs find_inputs(const Options& options) {
  const FoundInputs found = expand_arguments(options);
  Inputs inputs;
  inputs.unreadable = found.unreadable;
  // A document of an image list is never made with pictures missing in its middle.
  const bool is_list_broken = options.image_list && !found.unreadable.empty();
  if (!found.inputs.empty() && !is_list_broken) inputs.documents = make_documents(options, found);

  const size_t number = options.image_list ? 1 : inputs.documents.size() + inputs.unreadable.size();
  inputs.mistake = found.mistake;
  if (inputs.mistake.empty()) inputs.mistake = check_number(options, number);
  if (inputs.mistake.empty()) inputs.mistake = check_inputs_stay(options, found, inputs);
  if (inputs.mistake.empty()) inputs.mistake = check_outputs_differ(options, inputs);
  if (inputs.mistake.empty() && options.skip_existing) skip_existing(inputs);
  return inputs;
}

}  // namespace cli
