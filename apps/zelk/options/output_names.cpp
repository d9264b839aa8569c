// SPDX-License-Identifier: Apache-2.0
#include "options/output_names.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace cli {
namespace {

namespace fs = std::filesystem;

// Names of one document, for y1/a.png: "a", "a.png", "y1/a", "y1/a.png".
enum Length { kShort, kWhole, kInFolder, kWholeInFolder };

struct Naming {
  const FoundInput* input = nullptr;
  Length length = kShort;

  Length longest() const { return input->path.empty() ? kWhole : kWholeInFolder; }

  // `common` is the folder that the longer names begin below.
  std::string name(const fs::path& common) const {
    const bool in_folder = length >= kInFolder;
    const fs::path path =
        in_folder ? fs::path(input->path).lexically_relative(common) : fs::path(input->relative);
    const bool is_whole = length == kWhole || length == kWholeInFolder;
    return is_whole ? path.string() : fs::path(path).replace_extension().string();
  }
};

// The deepest folder that holds all documents whose names tell their folders.
fs::path common_folder(const std::vector<Naming>& namings) {
  fs::path common;
  for (const Naming& naming : namings) {
    if (naming.length < kInFolder) continue;
    const fs::path folder = fs::path(naming.input->path).parent_path();
    if (common.empty()) {
      common = folder;
      continue;
    }
    const auto end =
        std::mismatch(common.begin(), common.end(), folder.begin(), folder.end()).first;
    fs::path shared;
    for (auto part = common.begin(); part != end; ++part) shared /= *part;
    common = shared;
  }
  return common;
}

// Of those that share a name the shortest become longer. False when none can.
bool lengthen(std::vector<Naming>& namings, const std::vector<std::size_t>& users) {
  Length shortest = kWholeInFolder;
  for (const std::size_t user : users) shortest = std::min(shortest, namings[user].length);
  bool changed = false;
  for (const std::size_t user : users) {
    Naming& naming = namings[user];
    if (naming.length != shortest || naming.length >= naming.longest()) continue;
    naming.length = static_cast<Length>(naming.length + 1);
    changed = true;
  }
  return changed;
}

std::vector<std::string> names_of(const std::vector<Naming>& namings) {
  const fs::path common = common_folder(namings);
  std::vector<std::string> names;
  names.reserve(namings.size());
  for (const Naming& naming : namings) names.push_back(naming.name(common));
  return names;
}

}  // namespace

std::vector<std::string> distinct_names(const std::vector<FoundInput>& inputs) {
  std::vector<Naming> namings;
  namings.reserve(inputs.size());
  for (const FoundInput& input : inputs) namings.push_back({&input, kShort});
  // A longer name can be the short one of another document ("a.png" and "a.png.gif"), so that one
  // round may not be enough; each round lengthens names, and none more than three times.
  for (;;) {
    std::vector<std::string> names = names_of(namings);
    std::map<std::string, std::vector<std::size_t>> users;
    for (std::size_t i = 0; i < names.size(); ++i) users[names[i]].push_back(i);
    bool changed = false;
    for (const auto& [name, indices] : users) {
      if (indices.size() > 1 && lengthen(namings, indices)) changed = true;
    }
    if (!changed) return names;
  }
}

}  // namespace cli
