// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_REPORT_H
#define ZELK_APPS_CONSOLE_REPORT_H

#include <cstdio>
#include <memory>
#include <string>

#include "supervisor/events.h"

namespace cli {

// The file of --report, as docs/report.schema.json describes it: every document with its pages, in
// the order in which they were finished, and the totals. It is written while the run goes, under a
// temporary name, and appears under its own when the run has finished, an interrupted one too.
// Pipes and devices are written to directly.
class Report : public RunListener {
 public:
  // Throws Error when no file can be made there.
  explicit Report(const std::string& path);
  ~Report() override;  // without run_finished() nothing stays
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;

  void document_finished(const DocumentOutcome& document) override;
  void run_finished(const RunTotals& totals) override;

  // Why the report is not complete, "PATH: REASON"; empty when all went well so far.
  const std::string& failure() const { return _failure; }

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  void write(const std::string& text);
  void finish();
  void fail(int error);

  std::string _path;
  std::string _temporary_path;  // empty when written to directly
  std::unique_ptr<std::FILE, Close> _file;
  std::string _failure;
  bool _is_first = true;
};

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_REPORT_H
