// SPDX-License-Identifier: Apache-2.0
#include "supervisor/readable_paths.h"

#include <unistd.h>

#include <filesystem>
#include <string_view>
#include <system_error>

#include "supervisor/engine_location.h"

namespace cli {
namespace {

// Libraries, fonts, character sets, time zones; what libraries ask of the machine they run on.
const char* const kSystem[] = {"/usr",
                               "/lib",
                               "/lib64",
                               "/etc/fonts",
                               "/etc/ld.so.cache",
                               "/etc/localtime",
                               "/var/cache/fontconfig",
                               "/proc/cpuinfo",
                               "/proc/meminfo",
                               "/proc/stat",
                               "/sys/devices/system/cpu",
                               "/sys/devices/system/node",
                               "/dev/null",
                               "/dev/zero",
                               "/dev/urandom",
                               "/dev/random"};

void add_with_target(std::vector<std::string>& paths, const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error);
  paths.push_back(absolute.string());
  const std::filesystem::path target = std::filesystem::canonical(absolute, error);
  if (!error && target != absolute) paths.push_back(target.string());
}

}  // namespace

std::vector<std::string> readable_paths(const std::string& engine_dir,
                                        const std::string& engine_data) {
  std::vector<std::string> paths(std::begin(kSystem), std::end(kSystem));
  add_with_target(paths, engine_dir);
  std::error_code error;
  const std::filesystem::path engine = std::filesystem::canonical(engine_dir + kEngineFile, error);
  if (!error) paths.push_back(engine.parent_path().string());
  if (!engine_data.empty()) add_with_target(paths, engine_data);
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text(*variable);
    const std::size_t equals = text.find('=');
    if (!text.starts_with("QV_") || text.substr(equals + 1, 1) != "/") continue;
    add_with_target(paths, text.substr(equals + 1));
  }
  return paths;
}

}  // namespace cli
