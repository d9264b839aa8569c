// SPDX-License-Identifier: Apache-2.0
#include "console/progress.h"

#include <sys/ioctl.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <string_view>
#include <utility>

#include "console/json_progress.h"
#include "console/lines.h"
#include "console/message_stream.h"
#include "console/pace.h"

namespace cli {
namespace {

constexpr double kSecondsBetweenBars = 0.1;
constexpr double kSecondsBetweenLines = 10.0;
constexpr std::string_view kClearLine = "\r\x1B[K";

int terminal_columns(int descriptor) {
  struct winsize size = {};
  const bool known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : 80;
}

class PlainProgress : public RunListener {
 public:
  PlainProgress(const ProgressSettings& settings, Clock clock)
      : _settings(settings),
        _clock(std::move(clock)),
        _is_terminal(isatty(settings.descriptor) == 1 && !settings.results_on_terminal),
        _is_quiet(settings.style == ProgressStyle::kQuiet) {}

  void run_started(int documents) override {
    const double now = _clock();
    _pace.start(documents, now);
    _last_shown = _is_terminal ? now - kSecondsBetweenBars : now;
    tick();
  }

  void document_opened(const std::string& name, int wanted) override {
    _pace.open(name, wanted);
    _current = name;
    tick();
  }

  void page_finished(const std::string& name, const PageOutcome& page) override {
    _pace.finish_page(name, page);
    _current = name;
    say(page_complaint(name, page));
    tick();
  }

  void document_finished(const DocumentOutcome& document) override {
    _pace.finish_document(document.name);
    say(document_complaint(document));
    if (_settings.verbose) say(document_line(document));
    count(document.state);
    tick();
  }

  void tick() override {
    if (_is_quiet) return;
    const double now = _clock();
    if (now - _last_shown < (_is_terminal ? kSecondsBetweenBars : kSecondsBetweenLines)) return;
    _last_shown = now;
    if (_is_terminal) {
      draw_bar(now);
    } else {
      say(progress_line(_pace, _current, now));
    }
  }

  void run_finished(const RunTotals& totals) override {
    clear_bar();
    if (_is_quiet || totals.is_reader_gone) return;
    const bool is_worth_telling = totals.documents > 1 || totals.failed_pages > 0 ||
                                  _losses.failed_documents > 0 || _losses.interrupted;
    if (_is_terminal || is_worth_telling) say(summary_line(totals, _losses));
  }

 private:
  void count(DocumentState state) {
    switch (state) {
      case DocumentState::kDelivered:
      case DocumentState::kDeliveredWithFailedPages:
        break;
      case DocumentState::kSkipped:
        ++_losses.skipped;
        break;
      case DocumentState::kInterrupted:
        _losses.interrupted = true;
        break;
      case DocumentState::kUnreadable:
      case DocumentState::kPasswordNeeded:
      case DocumentState::kFailed:
      case DocumentState::kOutputFailed:
        ++_losses.failed_documents;
    }
  }

  void draw_bar(double now) {
    const int columns = terminal_columns(_settings.descriptor);
    write_message(_settings.descriptor,
                  std::string(kClearLine) + bar_line(_pace, _current, now, columns));
    _bar_is_drawn = true;
  }

  void clear_bar() {
    if (std::exchange(_bar_is_drawn, false)) write_message(_settings.descriptor, kClearLine);
  }

  void say(const std::string& lines) {
    if (lines.empty()) return;
    clear_bar();
    write_message(_settings.descriptor, lines);
  }

  ProgressSettings _settings;
  Clock _clock;
  bool _is_terminal;
  bool _is_quiet;
  Pace _pace;
  Losses _losses;
  std::string _current;  // the document that was heard of last
  double _last_shown = 0.0;
  bool _bar_is_drawn = false;
};

}  // namespace

double monotonic_seconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(now).count();
}

std::unique_ptr<RunListener> make_progress(const ProgressSettings& settings, Clock clock) {
  if (settings.style == ProgressStyle::kJson) return make_json_progress(settings.descriptor);
  return std::make_unique<PlainProgress>(settings, std::move(clock));
}

}  // namespace cli
