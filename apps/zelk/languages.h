// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_LANGUAGES_H
#define ZELK_APPS_LANGUAGES_H

#include <string>
#include <vector>

namespace cli {

// The folder of the default engine's language data; empty when another engine is in `engine_dir` or
// its settings cannot be read.
std::string language_folder(const std::string& engine_dir);

// The files of the languages in use there, by their settings; those of a list are loaded together.
std::vector<std::string> language_files(const std::string& engine_dir);

// The languages that the default engine with its settings in `engine_dir` can use, one name a line.
// Empty when there are none; `reason` then names what is wrong.
std::string language_list(const std::string& engine_dir, std::string& reason);

}  // namespace cli

#endif  // ZELK_APPS_LANGUAGES_H
