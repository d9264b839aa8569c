// SPDX-License-Identifier: Apache-2.0
// The library file: what it exports, and that it can be opened.
#include <dlfcn.h>
#include <fmt/format.h>

#include <algorithm>

#include "check.h"
#include "elf_symbols.h"

namespace engine_check {
namespace {

constexpr const char* kEntryPoints[] = {
    "qv_init_engine",   "qv_uninit_engine",      "qv_load_image_file",  "qv_set_image_data",
    "qv_recognize",     "qv_get_lines_num",      "qv_get_line_info_ex", "qv_save_ocrfile",
    "qv_get_result_ex", "qv_get_result_unicode", "qv_get_result_json"};

void opens(const Subject& subject, Verdict& verdict) {
  if (dlopen(subject.engine_file().c_str(), RTLD_NOW) == nullptr) {
    // As the library says it.
    verdict.fail(
        fmt::format("{}: dlopen () ERROR, Message({}).", subject.engine_file(), dlerror()));
  }
}

void entry_points(const Subject& subject, Verdict& verdict) {
  void* const library = dlopen(subject.engine_file().c_str(), RTLD_NOW);
  int found = 0;
  for (const char* name : kEntryPoints) {
    if (dlsym(library, name) == nullptr) {
      verdict.fail(fmt::format("no {}", name));
    } else {
      ++found;
    }
  }
  verdict.note(fmt::format("{} entry points", found));
}

void exports(const Subject& subject, Verdict& verdict) {
  const auto names = exported_symbols(subject.engine_file());
  for (const std::string& name : names) {
    if (!name.starts_with("qv_")) verdict.fail(fmt::format("{} is exported", name));
  }
  verdict.note(fmt::format("{} symbols", names.size()));
}

constexpr Check kChecks[] = {
    {"symbols.entry-points", "the eleven functions of qv_engine.h", entry_points, true},
    {"symbols.exports", "no exported symbol but qv_*", exports},
};

}  // namespace

const Check kLibraryOpens{"library", "a library that can be opened", opens};

std::span<const Check> symbol_checks() {
  return kChecks;
}

}  // namespace engine_check
