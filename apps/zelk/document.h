// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_DOCUMENT_H
#define ZELK_APPS_DOCUMENT_H

#include <string>

#include "options.h"
#include "output.h"

namespace cli {

// What a file did not give; empty texts when all is well.
struct Shortfall {
  std::string input;  // of the whole file, when nothing was written, or of some pages
  std::string pdf;    // why there is no searchable PDF although one was asked for
};

// Recognises one file with the engine that is started and writes its result, with the searchable
// PDF beside it. A PDF that cannot be written costs nothing of the text. Throws std::system_error
// when the result cannot be written.
Shortfall recognize_file(const std::string& file, const Options& options, Output& output);

}  // namespace cli

#endif  // ZELK_APPS_DOCUMENT_H
