// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_REPORT_H
#define ZELK_ENGINE_CHECK_REPORT_H

#include <string>
#include <vector>

#include "check.h"
#include "runner.h"

namespace engine_check {

struct Report {
  std::string engine_file;
  std::string page;  // the image file, empty for the bundled page
  std::vector<Finding> findings;
  std::vector<std::string> not_run;

  Severity worst() const;
};

// One line for a finding, with the line feed.
std::string line_of(const Finding& finding);

// The last line: how many of each kind.
std::string summary_of(const Report& report);

// The whole report as docs/engine-check.schema.json describes it.
std::string json_of(const Report& report);

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_REPORT_H
