// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_READABLE_PATHS_H
#define ZELK_APPS_SUPERVISOR_READABLE_PATHS_H

#include <string>
#include <vector>

namespace cli {

// What workers in their sandbox may read: system libraries and fonts, the engine's directory, links
// resolved, the paths that its settings in the environment name (QV_*), and `engine_data`, unless
// it is empty. Documents are not among it: they come through the scratch folder.
std::vector<std::string> readable_paths(const std::string& engine_dir,
                                        const std::string& engine_data);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_READABLE_PATHS_H
