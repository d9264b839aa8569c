// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_VERSIONS_H
#define ZELK_APPS_VERSIONS_H

#include <string>

namespace cli {

// The version of zelk and, line by line, of the libraries in use. They are asked at run time, so
// that the answer is about the files that are loaded and not about those at build time.
std::string version_text(const std::string& engine_dir);

}  // namespace cli

#endif  // ZELK_APPS_VERSIONS_H
