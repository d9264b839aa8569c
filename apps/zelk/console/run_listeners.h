// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_RUN_LISTENERS_H
#define ZELK_APPS_CONSOLE_RUN_LISTENERS_H

#include <memory>
#include <string>
#include <vector>

#include "options/options.h"
#include "supervisor/events.h"

namespace cli {

class Report;

// Everyone whom the options want told of a run: progress on standard error, the report.
class RunListeners : public RunListener {
 public:
  // Throws Error when the report cannot be made.
  RunListeners(const Options& options, bool results_on_terminal);
  ~RunListeners() override;

  void run_started(int documents) override;
  void document_opened(const std::string& name, int wanted) override;
  void page_finished(const std::string& name, const PageOutcome& page) override;
  void document_finished(const DocumentOutcome& document) override;
  void tick() override;
  void run_finished(const RunTotals& totals) override;

  // Why the report is not complete; empty when it is or none is wanted.
  std::string report_failure() const;

 private:
  std::vector<std::unique_ptr<RunListener>> _listeners;
  const Report* _report = nullptr;  // one of them
};

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_RUN_LISTENERS_H
