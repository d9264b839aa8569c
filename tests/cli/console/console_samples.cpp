// SPDX-License-Identifier: Apache-2.0
// console_samples report FILE: writes the report of a scripted run.
// console_samples progress: tells of it on standard error, as --progress json does.
#include <string>

#include "cli/console/scripted_run.h"
#include "console/progress.h"
#include "console/report.h"

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "report" && argc == 3) {
    cli::Report report(argv[2]);
    play_run(report);
    return report.failure().empty() ? 0 : 1;
  }
  if (what == "progress") {
    play_run(*cli::make_progress({cli::ProgressStyle::kJson}));
    return 0;
  }
  return 2;
}
