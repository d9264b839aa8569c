// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_TARGETS_H
#define ZELK_APPS_OPTIONS_TARGETS_H

#include <optional>
#include <string>
#include <vector>

#include "options/inputs.h"

namespace cli {

// Extension of a format's files, with its dot.
const char* extension_of(Format format);

// The format that the extension of a file's name tells, in capitals or not; nothing for others.
std::optional<Format> format_of_name(const std::string& path);

// Where the results of one document go. `below` is the name of its outputs below the folder of -d,
// without an extension; nothing else makes use of it.
std::vector<InputDocument::Target> targets_of(const Options& options, const std::string& below);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_TARGETS_H
