// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_ENGINE_IDENTITY_H
#define ZELK_APPS_SUPERVISOR_ENGINE_IDENTITY_H

#include <string>

#include "supervisor/engine_location.h"

namespace cli {

// A text that changes when pages may be recognised differently: by another engine, other data,
// other settings of the engine (QV_* in the environment) or another version of this program. Only
// contents count, so that an installation that was copied or moved is the same. Read whole are the
// program, the engine and the data that it is known to use; of any other file in the engine's
// folder at most a mebibyte, spread over the file.
std::string engine_identity(const EngineLocation& engine);

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_ENGINE_IDENTITY_H
