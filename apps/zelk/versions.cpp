// SPDX-License-Identifier: Apache-2.0
#include "versions.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <cstdlib>
#include <memory>

#include "exchange/names.h"
#include "supervisor/engine_location.h"

namespace cli {
namespace {

// The file from which the object that holds a symbol was loaded; empty when there is none.
std::string loaded_from(const char* symbol) {
  Dl_info info = {};
  void* const address = dlsym(RTLD_DEFAULT, symbol);
  return address == nullptr || dladdr(address, &info) == 0 ? "" : info.dli_fname;
}

using VersionFunction = const char* (*)();
using AllocatedVersionFunction = char* (*)();

template <typename Function>
Function find(void* library, const char* symbol) {
  return reinterpret_cast<Function>(dlsym(library, symbol));
}

std::string line(const char* name, const std::string& value) {
  return value.empty() ? "" : fmt::format("  {:<10}{}\n", name, line_name(value));
}

// What the engine stands on, if it stands on the libraries that can be asked: looking up a symbol
// in the engine's handle searches the libraries that it needs too.
std::string engine_versions(const std::string& directory) {
  const std::string reason = missing_engine_reason(directory);
  if (!reason.empty()) return line("engine", "none, " + reason);
  const std::string file = directory + kEngineFile;
  void* engine = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (engine == nullptr) return line("engine", fmt::format("none, {}", dlerror()));

  std::string text = line("engine", file);
  if (const auto tesseract = find<VersionFunction>(engine, "TessVersion")) {
    text += line("Tesseract", tesseract());
  }
  if (const auto leptonica = find<AllocatedVersionFunction>(engine, "getLeptonicaVersion")) {
    const std::unique_ptr<char, decltype(&std::free)> version(leptonica(), &std::free);
    if (version) text += line("Leptonica", version.get());
  }
  return text;  // the engine stays open: libraries below it do not like to be unloaded
}

}  // namespace

std::string version_text(const std::string& engine_dir) {
  const auto free_image = find<VersionFunction>(RTLD_DEFAULT, "FreeImage_GetVersion");
  return "zelk " ZELK_VERSION "\n" + line("program", program_file()) +
         line("FreeImage", free_image == nullptr ? "" : free_image()) +
         line("PDFium", loaded_from("FPDF_InitLibrary")) + engine_versions(engine_dir);
}

}  // namespace cli
