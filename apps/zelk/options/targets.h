// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_TARGETS_H
#define ZELK_APPS_OPTIONS_TARGETS_H

#include <string>
#include <vector>

#include "options/inputs.h"

namespace cli {

// Extension of a format's files, with its dot.
const char* extension_of(Format format);

// Where the results of one document go. `below` is the name of its outputs below the folder of -d,
// without an extension; nothing else makes use of it.
std::vector<InputDocument::Target> targets_of(const Options& options, const std::string& below);

// One name for each of the paths, all different where that can be had: the path without its
// extension, or the whole path where others would get the same.
std::vector<std::string> distinct_names(const std::vector<std::string>& paths);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_TARGETS_H
