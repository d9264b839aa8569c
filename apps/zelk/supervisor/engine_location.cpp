// SPDX-License-Identifier: Apache-2.0
#include "supervisor/engine_location.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace cli {

const char* const kEngineFile = "libQVEngine.so";

namespace {

// The library keeps the path of the engine in 256 bytes.
constexpr size_t kLongestDirectory = 241;

}  // namespace

std::string program_file() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string engine_directory(const std::string& asked_for) {
  if (!asked_for.empty()) return asked_for.back() == '/' ? asked_for : asked_for + "/";
  const std::filesystem::path folder = std::filesystem::path(program_file()).parent_path();
  // The library folder as installed, then as built.
  for (const char* libraries : {ZELK_LIBRARIES_FROM_PROGRAM, "../lib"}) {
    const std::filesystem::path engine = (folder / libraries / "zelk/engine/").lexically_normal();
    if (access((engine / kEngineFile).c_str(), F_OK) == 0) return engine.string();
  }
  return (folder / ZELK_LIBRARIES_FROM_PROGRAM / "zelk/engine/").lexically_normal().string();
}

std::string missing_engine_reason(const std::string& directory) {
  if (directory.size() > kLongestDirectory) {
    return fmt::format("the path {} has {} bytes, {} are the most", directory, directory.size(),
                       kLongestDirectory);
  }
  const std::string file = directory + kEngineFile;
  if (access(file.c_str(), R_OK) != 0) return fmt::format("{}: {}", file, std::strerror(errno));
  return "";
}

}  // namespace cli
