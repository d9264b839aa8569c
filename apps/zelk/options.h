// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_H
#define ZELK_APPS_OPTIONS_H

#include <optional>
#include <string>
#include <vector>

namespace cli {

// What the exit code of the program says.
enum ExitCode {
  kAllDone = 0,
  kUsage = 1,
  kSomeInputsUnreadable = 2,
  kNoEngine = 3,
  kOutputFailed = 4,
};

enum class Format { kText, kJson };

struct Options {
  std::string engine_dir;               // empty: the default engine beside the library
  int dpi = 200;                        // resolution at which PDF pages are rendered
  std::optional<std::string> language;  // for example "eng" or "chi_sim+eng"
  Format format = Format::kText;
  std::string output;  // empty: standard output
  std::string pdf;     // empty: no searchable PDF
  bool list_languages = false;
  bool version = false;
  std::vector<std::string> files;
};

// The options of a command line or, when there is nothing to run, the text to show and the exit
// code to leave with: help is kAllDone and belongs on standard output, a mistake is kUsage and does
// not.
struct ParsedOptions {
  std::optional<Options> options;
  std::string message;
  ExitCode exit_code = kAllDone;
};

ParsedOptions parse_options(int argc, const char* const* argv);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_H
