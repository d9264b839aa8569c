// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_MISSING_LANGUAGE_H
#define ZELK_APPS_MISSING_LANGUAGE_H

#include <optional>
#include <string>

namespace cli {

// Why the default engine in `engine_dir` cannot have the languages that it is told to use, with the
// remedy; empty when it can, or when another engine is there. `option` is the value of --lang.
std::string missing_language(const std::string& engine_dir,
                             const std::optional<std::string>& option);

// The Debian package that brings a language; empty for a name that no language has.
std::string language_package(const std::string& name);

}  // namespace cli

#endif  // ZELK_APPS_MISSING_LANGUAGE_H
