// SPDX-License-Identifier: Apache-2.0
#include "console/run_listeners.h"

#include <utility>

#include "console/progress.h"
#include "console/report.h"

namespace cli {

RunListeners::RunListeners(const Options& options, bool results_on_terminal) {
  ProgressSettings settings;
  settings.style = options.progress;
  settings.verbose = options.verbose;
  settings.results_on_terminal = results_on_terminal;
  _listeners.push_back(make_progress(settings));
  if (options.report.empty()) return;
  auto report = std::make_unique<Report>(options.report);
  _report = report.get();
  _listeners.push_back(std::move(report));
}

RunListeners::~RunListeners() = default;

void RunListeners::run_started(int documents) {
  for (const auto& listener : _listeners) listener->run_started(documents);
}

void RunListeners::document_opened(const std::string& name, int wanted) {
  for (const auto& listener : _listeners) listener->document_opened(name, wanted);
}

void RunListeners::page_finished(const std::string& name, const PageOutcome& page) {
  for (const auto& listener : _listeners) listener->page_finished(name, page);
}

void RunListeners::document_finished(const DocumentOutcome& document) {
  for (const auto& listener : _listeners) listener->document_finished(document);
}

void RunListeners::tick() {
  for (const auto& listener : _listeners) listener->tick();
}

void RunListeners::run_finished(const RunTotals& totals) {
  for (const auto& listener : _listeners) listener->run_finished(totals);
}

std::string RunListeners::report_failure() const {
  return _report == nullptr ? "" : _report->failure();
}

}  // namespace cli
