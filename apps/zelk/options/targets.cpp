// SPDX-License-Identifier: Apache-2.0
#include "options/targets.h"

#include <filesystem>
#include <map>

#include "options/folders.h"

namespace cli {
namespace {

std::string without_extension(const std::string& path) {
  return std::filesystem::path(path).replace_extension().string();
}

std::string target_path(const Options& options, Format format, const std::string& below) {
  if (!options.directory.empty()) {
    return join_path(options.directory, below + extension_of(format));
  }
  if (options.output.empty() || options.output == "-") return "-";
  if (options.formats.size() == 1) return options.output;
  return without_extension(options.output) + extension_of(format);
}

}  // namespace

const char* extension_of(Format format) {
  switch (format) {
    case Format::kText:
      return ".txt";
    case Format::kJson:
      return ".json";
    case Format::kPdf:
      return ".pdf";
    case Format::kHtml:
      break;
  }
  return ".html";
}

std::vector<InputDocument::Target> targets_of(const Options& options, const std::string& below) {
  std::vector<InputDocument::Target> targets;
  for (const Format format : options.formats) {
    targets.push_back({format, target_path(options, format, below)});
  }
  if (!options.pdf.empty()) targets.push_back({Format::kPdf, options.pdf});
  return targets;
}

std::vector<std::string> distinct_names(const std::vector<std::string>& paths) {
  std::vector<std::string> names;
  names.reserve(paths.size());
  for (const std::string& path : paths) names.push_back(without_extension(path));
  // A name that is kept whole can be the short name of another ("a.png" and "a.png.gif"), so that
  // one round may not be enough; each round lengthens names, and none twice.
  for (bool changed = true; changed;) {
    changed = false;
    std::map<std::string, std::vector<size_t>> users;
    for (size_t i = 0; i < names.size(); ++i) users[names[i]].push_back(i);
    for (const auto& [name, indices] : users) {
      if (indices.size() == 1) continue;
      for (const size_t i : indices) {
        changed = changed || names[i] != paths[i];
        names[i] = paths[i];
      }
    }
  }
  return names;
}

}  // namespace cli
