// SPDX-License-Identifier: Apache-2.0
#include "options/targets.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "options/folders.h"

namespace cli {
namespace {

std::string target_path(const Options& options, Format format, const std::string& below) {
  if (!options.directory.empty()) {
    return join_path(options.directory, below + extension_of(format));
  }
  if (options.output.empty() || options.output == "-") return "-";
  if (options.formats.size() == 1) return options.output;
  return std::filesystem::path(options.output).replace_extension().string() + extension_of(format);
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

std::optional<Format> format_of_name(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (extension == ".htm") return Format::kHtml;
  for (const Format format : {Format::kText, Format::kJson, Format::kPdf, Format::kHtml}) {
    if (extension == extension_of(format)) return format;
  }
  return {};
}

std::vector<InputDocument::Target> targets_of(const Options& options, const std::string& below) {
  std::vector<InputDocument::Target> targets;
  for (const Format format : options.formats) {
    targets.push_back({format, target_path(options, format, below), false});
  }
  if (!options.pdf.empty()) targets.push_back({Format::kPdf, options.pdf, false});
  return targets;
}

}  // namespace cli
