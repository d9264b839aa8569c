// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_OPTIONS_H
#define ZELK_APPS_OPTIONS_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "options/page_ranges.h"
#include "outputs/outputs.h"

namespace cli {

// What the exit code of the program says. Of several that apply, the first of this list counts:
// 130, 141, 4, 3, 6, 8, 2, 5.
enum ExitCode {
  kAllDone = 0,
  kUsage = 1,
  kSomeInputsUnreadable = 2,
  kNoEngine = 3,
  kOutputFailed = 4,
  kDeliveredWithFailedPages = 5,
  kFailedDocuments = 6,
  kPasswordNeeded = 8,
  kInterrupted = 130,
  kReaderGone = 141,  // what a shell shows for a program that SIGPIPE ended, as this one lets it
};

enum class ProgressStyle { kAutomatic, kQuiet, kJson };

// A document may lack at most this many pages, or this share of its pages, to count as delivered.
struct FailureLimit {
  double amount = 100.0;
  bool is_percent = true;
};

struct Options {
  // recognition
  std::string engine_dir;               // empty: the default engine beside the program
  std::optional<std::string> language;  // for example "eng" or "chi_sim+eng"
  std::optional<int> dpi;               // PDF pages are rendered at 200 without it
  std::int64_t max_pixels = 120'000'000;
  std::string password;
  bool skip_text = false;  // pages of PDFs that have text keep it
  bool strict = false;     // pages with lost parts have failed
  // inputs
  std::vector<std::string> inputs;  // as given: files, folders, @lists, "-"
  bool recursive = false;
  bool image_list = false;  // all inputs are one document
  PageRanges pages;         // empty: all
  // outputs
  std::vector<Format> formats{Format::kText};  // without repetition, in the order of the enum
  std::string output;                          // -o; empty or "-": standard output
  std::string directory;                       // -d; empty: none
  std::string pdf;                             // --pdf FILE; empty: none
  bool page_break = false;                     // form feeds between the pages of texts
  bool skip_existing = false;
  bool resume = false;
  std::string report;  // --report; empty: none
  // workers
  int jobs = 0;             // 0: one for each core available to the process
  int page_timeout = 180;   // seconds
  int memory_limit = 2048;  // MiB for each worker
  int recycle = 500;        // pages after which a worker is replaced
  bool sandbox = true;
  FailureLimit max_failed_pages;
  // what people see
  ProgressStyle progress = ProgressStyle::kAutomatic;
  bool verbose = false;
  bool list_languages = false;
  bool version = false;
};

// The options of a command line or, when there is nothing to run, the text to show and the exit
// code to leave with: help is kAllDone and belongs on standard output, a mistake is kUsage and does
// not.
struct ParsedOptions {
  std::optional<Options> options;
  std::string message;
  ExitCode exit_code = kAllDone;
};

// `results_on_terminal`: standard output, which PDF and HTML are too much for.
ParsedOptions parse_options(int argc, const char* const* argv, bool results_on_terminal = false);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_OPTIONS_H
