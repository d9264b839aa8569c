// SPDX-License-Identifier: Apache-2.0
#include "supervisor/engine_identity.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string_view>
#include <system_error>

#include "exchange/error.h"
#include "exchange/files.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

// What a file costs at most: models of hundreds of mebibytes would delay every run. Training a
// model anew changes its numbers everywhere, so that samples tell.
constexpr std::uintmax_t kSamples = 16;
constexpr std::uintmax_t kSampleSize = std::uintmax_t{64} << 10;
constexpr std::size_t kMostFiles = 4096;  // in the engine's folder; no engine has nearly as many

// A file that cannot be read says so later, to whoever needs it.
std::string whole_digest(const std::string& path) {
  try {
    return digest_of_file(path);
  } catch (const Error& error) {
    return std::to_string(error.number());
  }
}

std::string sampled_digest(const fs::path& path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);
  if (error) return "";
  if (size <= kSamples * kSampleSize) return whole_digest(path.string());
  std::ifstream file(path, std::ios::binary);
  std::string bytes(kSamples * kSampleSize, '\0');
  for (std::uintmax_t sample = 0; sample < kSamples; ++sample) {
    const std::uintmax_t from = (size - kSampleSize) / (kSamples - 1) * sample;
    file.seekg(static_cast<std::streamoff>(sample + 1 == kSamples ? size - kSampleSize : from));
    file.read(bytes.data() + sample * kSampleSize, static_cast<std::streamsize>(kSampleSize));
  }
  return fmt::format("{} {}", size, digest_of_text(bytes));
}

using Facts = std::set<std::string>;  // sorted

void add_folder(Facts& facts, const std::string& folder) {
  std::error_code error;
  std::size_t count = 0;
  fs::recursive_directory_iterator entry(folder, error);
  for (; !error && entry != fs::recursive_directory_iterator() && count < kMostFiles;
       entry.increment(error)) {
    std::error_code ignored;
    if (!entry->is_regular_file(ignored)) continue;
    ++count;
    const std::string name = entry->path().lexically_relative(folder).string();
    facts.insert(fmt::format("file {} {}", name, sampled_digest(entry->path())));
  }
}

void add_environment(Facts& facts) {
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text(*variable);
    const std::size_t equals = std::min(text.find('='), text.size());
    if (!text.starts_with("QV_")) continue;
    // A path says nothing; what lies there does.
    const std::string value(text.substr(std::min(equals + 1, text.size())));
    std::error_code ignored;
    const bool is_file = value.starts_with('/') && fs::is_regular_file(value, ignored);
    const bool is_folder = value.starts_with('/') && fs::is_directory(value, ignored);
    const std::string shown = is_file ? sampled_digest(value) : is_folder ? "" : value;
    facts.insert(fmt::format("{}={}", text.substr(0, equals), shown));
    if (is_folder) add_folder(facts, value);
  }
}

}  // namespace

std::string engine_identity(const EngineLocation& engine) {
  Facts facts = {"program " + whole_digest(program_file()),
                 "engine " + whole_digest(engine.directory + kEngineFile)};
  for (const std::string& file : engine.data_files) {
    facts.insert(fmt::format("data {} {}", fs::path(file).filename().string(), whole_digest(file)));
  }
  add_folder(facts, engine.directory);
  add_environment(facts);
  std::string text;
  for (const std::string& fact : facts) text += fact + "\n";
  return digest_of_text(text);
}

}  // namespace cli
