// SPDX-License-Identifier: Apache-2.0
// @list files with any bytes in them: their lines lead to documents or complaints, one by one.
#include <unistd.h>

#include <filesystem>

#include "file_in_memory.h"
#include "fuzz_input.h"
#include "options/input_arguments.h"
#include "options/inputs.h"

namespace {

struct Names {
  std::size_t all = 0;  // lines that name something: neither empty nor a comment
  std::size_t folders = 0;
};

Names names_in(std::string_view text) {
  Names names;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    std::error_code ignored;
    names.all += !line.empty() && !line.starts_with('#') ? 1 : 0;
    names.folders += std::filesystem::is_directory(line, ignored) ? 1 : 0;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return names;
}

// Relative names find nothing, absolute ones a system without documents.
void enter_empty_folder() {
  static const bool done = [] {
    std::string folder = scratch_path("XXXXXX");
    return mkdtemp(folder.data()) != nullptr && chdir(folder.c_str()) == 0 &&
           rmdir(folder.c_str()) == 0;
  }();
  require(done, "there is a folder to work in");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  enter_empty_folder();
  cli::Options options;
  options.image_list = input.below(2) == 0;
  const std::string_view text = input.rest();
  options.inputs = {"@" + file_in_memory(text)};
  const cli::FoundInputs found = cli::expand_arguments(options);
  const std::size_t told = found.inputs.size() + found.unreadable.size();
  const Names names = names_in(text);
  require(told > 0, "a list is never passed over");
  if (text.find('\0') == std::string_view::npos) {  // else it is no list, which is told once
    require(told >= names.all, "every name becomes an input or a complaint");
    require(names.folders > 0 || found.inputs.size() <= names.all, "and one input at most");
  }
  require(cli::find_inputs(options).documents.size() <= found.inputs.size(), "no input is made up");
  return 0;
}
