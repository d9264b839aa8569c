// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_DOCUMENT_H
#define ZELK_APPS_DOCUMENT_H

#include <string>

#include "options.h"
#include "output.h"

namespace cli {

// Recognises one file with the engine that is started and writes its result. Returns what could not
// be read: of the whole file, when nothing was written, or of some pages; empty when all is well.
// Throws std::system_error when the result cannot be written.
std::string recognize_file(const std::string& file, const Options& options, Output& output);

}  // namespace cli

#endif  // ZELK_APPS_DOCUMENT_H
