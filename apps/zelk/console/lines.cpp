// SPDX-License-Identifier: Apache-2.0
#include "console/lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "console/columns.h"
#include "console/outcome_json.h"
#include "exchange/names.h"

namespace cli {
namespace {

std::string counted(int number, const char* thing) {
  return fmt::format("{} {}{}", number, thing, number == 1 ? "" : "s");
}

std::string failed_pages_reason(const DocumentOutcome& document) {
  const auto failed = std::count_if(document.pages.begin(), document.pages.end(),
                                    [](const PageOutcome& page) { return !page.failure.empty(); });
  const int count = static_cast<int>(document.pages.size());
  if (count == 0) return "it could not be recognised";
  if (failed < count) return fmt::format("{} of {} pages could not be read", failed, count);
  return count == 1 ? "the page could not be read"
                    : fmt::format("none of its {} pages could be read", count);
}

// Why a document is not what was asked for; empty when it is.
std::string document_reason(const DocumentOutcome& document) {
  switch (document.state) {
    case DocumentState::kDelivered:
      return document.cause;
    case DocumentState::kSkipped:
    case DocumentState::kInterrupted:
      return "";
    case DocumentState::kPasswordNeeded:
      return document.cause.empty() ? "a password is needed (--password)" : document.cause;
    case DocumentState::kUnreadable:
    case DocumentState::kOutputFailed:
      return document.cause.empty() ? state_name(document.state) : document.cause;
    case DocumentState::kDeliveredWithFailedPages:
    case DocumentState::kFailed:
      break;
  }
  return document.cause.empty() ? failed_pages_reason(document) : document.cause;
}

std::string page_counts(const Pace& pace, const char* between) {
  return fmt::format("{}{}{}{} pages", pace.pages_done(), between, pace.pages_known(),
                     pace.is_total_known() ? "" : "+");
}

std::string bar(const Pace& pace, int width) {
  const int known = std::max(1, pace.pages_known());
  const int filled = static_cast<int>(static_cast<long>(width) * pace.pages_done() / known);
  const size_t done = static_cast<size_t>(std::clamp(filled, 0, width));
  return "[" + std::string(done, '=') + std::string(static_cast<size_t>(width) - done, ' ') + "] ";
}

// Names on the bar are UTF-8, so that their columns can be counted.
std::string bar_name(const std::string& name) {
  return line_name(shown_name(name).text);
}

}  // namespace

std::string clock_time(double seconds) {
  const long whole = std::lround(std::clamp(seconds, 0.0, 1e9));
  if (whole < 3600) return fmt::format("{}:{:02}", whole / 60, whole % 60);
  return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

std::string page_complaint(const std::string& name, const PageOutcome& page) {
  const auto line = [&](const std::string& text) {
    return fmt::format("zelk: {}: page {}: {}\n", line_name(name), page.page, line_name(text));
  };
  std::string lines;
  if (!page.failure.empty()) lines += line(page.failure);
  if (!page.warning.empty()) lines += line("warning: " + page.warning);
  return lines;
}

std::string document_complaint(const DocumentOutcome& document) {
  std::string lines;
  for (const std::string& text : {document.notice, document_reason(document)}) {
    if (text.empty()) continue;
    lines += fmt::format("zelk: {}: {}\n", line_name(document.name), line_name(text));
  }
  return lines;
}

std::string document_line(const DocumentOutcome& document) {
  std::string outputs;
  for (const std::string& output : document.outputs) {
    if (output != "-") outputs += (outputs.empty() ? ": " : ", ") + line_name(output);
  }
  return fmt::format(
      "zelk: {}: {}, {}, {:.1f} s{}\n", line_name(document.name), state_name(document.state),
      counted(static_cast<int>(document.pages.size()), "page"), document.seconds, outputs);
}

std::string bar_line(const Pace& pace, const std::string& document, double now, int columns) {
  const int room = columns - 1;  // the last column makes some terminals begin a new line
  std::string line = page_counts(pace, "/");
  const auto append = [&](const std::string& part) {
    if (columns_of(line) + 2 + columns_of(part) <= room) line += "  " + part;
  };
  const int bar_width = room >= 70 ? 20 : room >= 45 ? 10 : 0;
  if (bar_width > 0) line = bar(pace, bar_width) + line;
  append(fmt::format("{:.1f}/s", pace.pages_per_second(now)));
  const std::optional<double> left = pace.seconds_left(now);
  if (left) append(clock_time(*left) + " left");
  append(fit_columns(bar_name(document), std::max(0, room - columns_of(line) - 2)));
  return fit_columns(line, room);
}

std::string progress_line(const Pace& pace, const std::string& document, double now) {
  const std::optional<double> left = pace.seconds_left(now);
  return fmt::format("zelk: {}, {:.1f} pages/s{}{}\n", page_counts(pace, " of "),
                     pace.pages_per_second(now), left ? ", " + clock_time(*left) + " left" : "",
                     document.empty() ? "" : ", " + line_name(document));
}

std::string summary_line(const RunTotals& totals, const Losses& losses) {
  const auto failed = [](int count) {
    return count == 0 ? "" : fmt::format(" ({} failed)", count);
  };
  const double rate = totals.seconds > 0.0 ? totals.pages / totals.seconds : 0.0;
  return fmt::format(
      "zelk: {}{}{}{}, {}{}, {:.1f} s, {:.1f} pages/s\n", losses.interrupted ? "interrupted: " : "",
      counted(totals.documents, "document"), failed(losses.failed_documents),
      losses.skipped == 0 ? "" : fmt::format(" ({} skipped)", losses.skipped),
      counted(totals.pages, "page"), failed(totals.failed_pages), totals.seconds, rate);
}

}  // namespace cli
