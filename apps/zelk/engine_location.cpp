// SPDX-License-Identifier: Apache-2.0
#include "engine_location.h"

#include <dlfcn.h>
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

std::string loaded_from(const char* symbol) {
  Dl_info info = {};
  void* address = dlsym(RTLD_DEFAULT, symbol);
  if (address == nullptr || dladdr(address, &info) == 0) return "";
  std::error_code error;
  const std::filesystem::path file = std::filesystem::canonical(info.dli_fname, error);
  return error ? info.dli_fname : file.string();
}

std::string engine_directory(const std::string& asked_for) {
  if (!asked_for.empty()) return asked_for.back() == '/' ? asked_for : asked_for + "/";
  const std::filesystem::path library = loaded_from("zelk_init_engine");
  return (library.parent_path() / "zelk/engine/").string();
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
