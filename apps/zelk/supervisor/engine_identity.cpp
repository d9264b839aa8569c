// SPDX-License-Identifier: Apache-2.0
#include "supervisor/engine_identity.h"

#include <unistd.h>

#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>

#include "exchange/files.h"
#include "supervisor/engine_location.h"

namespace cli {
namespace {

constexpr std::uintmax_t kSmall = std::uintmax_t{1} << 20;

std::string identity_of(const std::filesystem::directory_entry& file) {
  std::error_code ignored;
  const std::string name = file.path().filename().string();
  const std::uintmax_t size = file.file_size(ignored);
  if (size <= kSmall || name == kEngineFile)
    return name + " " + digest_of_file(file.path().string());
  const auto changed = file.last_write_time(ignored).time_since_epoch().count();
  return name + " " + std::to_string(size) + " " + std::to_string(changed);
}

}  // namespace

std::string engine_identity(const std::string& engine_dir) {
  std::set<std::string> facts;  // sorted
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(engine_dir, ignored)) {
    if (entry.is_regular_file(ignored)) facts.insert(identity_of(entry));
  }
  for (char** variable = environ; *variable != nullptr; ++variable) {
    if (std::string_view(*variable).starts_with("QV_")) facts.insert(*variable);
  }
  std::string text;
  for (const std::string& fact : facts) text += fact + "\n";
  return digest_of_text(text);
}

}  // namespace cli
