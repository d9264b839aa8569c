// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_ENGINE_IDENTITY_H
#define ZELK_APPS_SUPERVISOR_ENGINE_IDENTITY_H

#include <string>

namespace cli {

// A text that changes when the results of the engine in a directory may: from its library, the
// small files beside it (settings), the sizes and dates of the large ones (models), and the
// variables of the environment that set it up (QV_*).
std::string engine_identity(const std::string& engine_dir);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_ENGINE_IDENTITY_H
