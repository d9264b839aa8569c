// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_INPUT_ARGUMENTS_H
#define ZELK_APPS_OPTIONS_INPUT_ARGUMENTS_H

#include <string>
#include <vector>

#include "options/inputs.h"

namespace cli {

// One file that the arguments lead to.
struct FoundInput {
  std::string name;         // the path that it is opened by and that people see; "-"
  std::string relative;     // what its outputs are named after: its path below the folder argument
                            // that it was found in, else its base name; "stdin"
  std::string path;         // absolute and without detours; empty for standard input
  bool is_readable = true;  // those that are not keep their names from the others all the same
};

struct FoundInputs {
  std::vector<FoundInput> inputs;  // with -d each file once
  std::vector<InputComplaint> unreadable;
  std::vector<std::string> lists;  // the files of the @lists
  std::string mistake;             // not empty: usage error
};

// Follows the arguments: lists to their lines, folders to the documents in them.
FoundInputs expand_arguments(const Options& options);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_INPUT_ARGUMENTS_H
