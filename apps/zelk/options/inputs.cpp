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
#include "options/output_names.h"
#include "options/targets.h"

namespace cli {
namespace {

std::vector<InputDocument> make_documents(const Options& options, const FoundInputs& found) {
  if (options.image_list) {
    const std::string name = distinct_names({found.inputs[0]})[0];
    InputDocument document{found.inputs[0].name, {}, targets_of(options, name)};
    for (const FoundInput& input : found.inputs) document.files.push_back(input.name);
    return {document};
  }
  const std::vector<std::string> names = distinct_names(found.inputs);
  std::vector<InputDocument> documents;
  for (size_t i = 0; i < names.size(); ++i) {
    if (!found.inputs[i].is_readable) continue;
    const std::string& file = found.inputs[i].name;
    documents.push_back({file, {file}, targets_of(options, names[i])});
  }
  return documents;
}

bool holds_several_documents(Format format) {
  return format == Format::kText || format == Format::kJson;
}

// Documents for which only one file is named follow each other in it.
void share_files(const Options& options, std::vector<InputDocument>& documents) {
  if (documents.size() < 2 || !options.directory.empty()) return;
  for (InputDocument& document : documents) {
    for (InputDocument::Target& target : document.targets) target.is_shared = target.path != "-";
  }
}

std::string check_number(const Options& options, size_t documents) {
  if (documents <= 1) return "";
  if (!options.pdf.empty()) {
    return fmt::format(
        "--pdf is for one document at a time, here are {}: use --format pdf --directory DIR",
        documents);
  }
  if (!options.directory.empty()) return "";
  const auto single =
      std::find_if_not(options.formats.begin(), options.formats.end(), holds_several_documents);
  if (single == options.formats.end()) return "";
  return fmt::format("{} documents need --directory DIR: one {} holds one document", documents,
                     *single == Format::kPdf ? "PDF" : "HTML file");
}

// All outputs of a run, each with what writes it.
using OutputOwners = std::map<std::string, std::string>;

std::string claim(OutputOwners& owners, const std::string& path, const std::string& owner) {
  const auto [entry, is_new] = owners.try_emplace(plain_path(path), owner);
  if (is_new) return "";
  return fmt::format("{} and {} would both be written to {}", line_name(entry->second),
                     line_name(owner), line_name(path));
}

std::string check_outputs_differ(const Options& options, const Inputs& inputs) {
  OutputOwners owners;
  if (!options.report.empty()) claim(owners, options.report, "the report");
  for (const InputDocument& document : inputs.documents) {
    const bool is_first = &document == &inputs.documents.front();
    for (const InputDocument::Target& target : document.targets) {
      if (target.path == "-" || (target.is_shared && !is_first)) continue;
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
  share_files(options, inputs.documents);
  if (inputs.mistake.empty()) inputs.mistake = check_inputs_stay(options, found, inputs);
  if (inputs.mistake.empty()) inputs.mistake = check_outputs_differ(options, inputs);
  if (inputs.mistake.empty() && options.skip_existing) skip_existing(inputs);
  return inputs;
}

}  // namespace cli
