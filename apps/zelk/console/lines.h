// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_LINES_H
#define ZELK_APPS_CONSOLE_LINES_H

#include <string>

#include "console/pace.h"
#include "supervisor/events.h"

namespace cli {

// What people read while a run goes. Lines end with a line feed, the bar does not.

// "0:07", "12:34", "3:00:00".
std::string clock_time(double seconds);

// "zelk: scan.pdf: page 3: it took longer than 180 seconds", and the same for its warning; empty
// for a page without either.
std::string page_complaint(const std::string& name, const PageOutcome& page);

// "zelk: none.png: No such file or directory"; empty for a document that was delivered whole,
// skipped or interrupted.
std::string document_complaint(const DocumentOutcome& document);

// "zelk: scan.pdf: delivered, 3 pages, 4.1 s: out/scan.txt"
std::string document_line(const DocumentOutcome& document);

// One line that fits into a terminal of so many columns.
std::string bar_line(const Pace& pace, const std::string& document, double now, int columns);

// The same for logs: "zelk: 42 of 100 pages, 2.1 pages/s, 0:28 left, scans/letter.png"
std::string progress_line(const Pace& pace, const std::string& document, double now);

// Documents that the run could not deliver whole.
struct Losses {
  int failed_documents = 0;
  int skipped = 0;
  bool interrupted = false;
};

std::string summary_line(const RunTotals& totals, const Losses& losses);

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_LINES_H
