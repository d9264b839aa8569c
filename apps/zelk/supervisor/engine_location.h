// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_ENGINE_LOCATION_H
#define ZELK_APPS_SUPERVISOR_ENGINE_LOCATION_H

#include <string>
#include <vector>

namespace cli {

// The engine of a run.
struct EngineLocation {
  std::string directory;                // ends in "/"
  std::string data_folder;              // what else it reads; empty when that is not known
  std::vector<std::string> data_files;  // of the languages in use, as far as known
};

// Path of the running program, links resolved.
std::string program_file();

// The directory of the engine, ending in "/": the one asked for, else zelk/engine/ in the library
// folder that belongs to the program's, in a build folder and in an installation, wherever it was
// moved to.
std::string engine_directory(const std::string& asked_for);

// Why there is no engine to start in the directory; empty when there is one.
std::string missing_engine_reason(const std::string& directory);

extern const char* const kEngineFile;

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_ENGINE_LOCATION_H
