// SPDX-License-Identifier: Apache-2.0
#include "console/progress.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/ioctl.h>

#include <string>

#include "cli/console/scripted_run.h"

namespace {

using cli::ProgressStyle;

// What a run writes to a pipe or a pseudo-terminal. Time stands still unless a test moves it.
class ProgressOutput : public ::testing::Test {
 protected:
  ~ProgressOutput() override {
    for (const int descriptor : {_reading, _writing}) {
      if (descriptor >= 0) close(descriptor);
    }
  }

  std::unique_ptr<cli::RunListener> on_pipe(cli::ProgressSettings settings) {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_NONBLOCK), 0);
    return listener(settings, ends[0], ends[1]);
  }

  std::unique_ptr<cli::RunListener> on_terminal(cli::ProgressSettings settings) {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    EXPECT_TRUE(grantpt(master) == 0 && unlockpt(master) == 0);
    const int terminal = open(ptsname(master), O_RDWR | O_NOCTTY);
    struct winsize size = {};
    size.ws_col = 100;
    EXPECT_EQ(ioctl(terminal, TIOCSWINSZ, &size), 0);
    return listener(settings, master, terminal);
  }

  std::string written() {
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(_reading, buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<size_t>(count));
    }
    return text;
  }

  double _now = 1000.0;

 private:
  std::unique_ptr<cli::RunListener> listener(cli::ProgressSettings settings, int reading,
                                             int writing) {
    _reading = reading;
    _writing = settings.descriptor = writing;
    return cli::make_progress(settings, [this] { return _now; });
  }

  int _reading = -1;
  int _writing = -1;
};

size_t count(const std::string& text, const std::string& part) {
  size_t number = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++number;
  return number;
}

void play_one_page(cli::RunListener& listener) {
  listener.run_started(1);
  listener.document_opened("a.png", 1);
  listener.page_finished("a.png", {});
  listener.document_finished({"a.png", cli::DocumentState::kDelivered, "", 1, 0.1, {}, {{}}});
  listener.run_finished({1, 1, 0, 0.1, 0, 0, 1});
}

TEST_F(ProgressOutput, ShortRunOffATerminalSaysNothing) {
  play_one_page(*on_pipe({}));
  EXPECT_EQ(written(), "");
}

TEST_F(ProgressOutput, LossesAreToldWithASummary) {
  play_run(*on_pipe({}));
  const std::string text = written();
  EXPECT_EQ(text.find("zelk: b\xFF.pdf: page 3: it took longer than 180 seconds\n"), 0U) << text;
  EXPECT_NE(text.find("\nzelk: c.png: the file is empty\n"), std::string::npos);
  EXPECT_TRUE(
      text.ends_with("zelk: interrupted: 8 documents (4 failed) (1 skipped), "
                     "7 pages (2 failed), 370.5 s, 0.0 pages/s\n"))
      << text;
  EXPECT_EQ(text.find('\r'), std::string::npos);
}

TEST_F(ProgressOutput, LongRunOffATerminalHasALineEveryTenSeconds) {
  const auto listener = on_pipe({});
  listener->run_started(1);
  listener->document_opened("a.pdf", 1000);
  for (int second = 1; second <= 60; ++second) {
    _now += 1.0;
    listener->page_finished("a.pdf", {});
    listener->tick();
  }
  const std::string text = written();
  EXPECT_EQ(count(text, "\n"), 6U) << text;
  EXPECT_EQ(text.find("zelk: 10 of 1000 pages, 1.0 pages/s, 16:30 left, a.pdf\n"), 0U) << text;
}

TEST_F(ProgressOutput, QuietRunHasComplaintsOnly) {
  play_run(*on_pipe({ProgressStyle::kQuiet}));
  const std::string text = written();
  EXPECT_NE(text.find("zelk: c.png: the file is empty\n"), std::string::npos);
  EXPECT_EQ(text.find("documents"), std::string::npos);
  EXPECT_EQ(count(text, "\n"), 9U) << text;
}

TEST_F(ProgressOutput, VerboseRunHasALineForEachDocument) {
  play_run(*on_pipe({ProgressStyle::kAutomatic, true}));
  EXPECT_NE(written().find("zelk: g.pdf: skipped, 0 pages, 0.0 s\n"), std::string::npos);
}

TEST_F(ProgressOutput, BarIsRedrawnTenTimesASecondAtMost) {
  const auto listener = on_terminal({});
  listener->run_started(1);
  listener->document_opened("a.pdf", 1000);
  for (int i = 0; i < 1000; ++i) {
    _now += 0.001;
    listener->page_finished("a.pdf", {});
  }
  const size_t drawn = count(written(), "\r\x1B[K[");
  EXPECT_GE(drawn, 9U);
  EXPECT_LE(drawn, 11U);
}

TEST_F(ProgressOutput, ComplaintsAndSummaryClearTheBarFirst) {
  const auto listener = on_terminal({});
  listener->run_started(1);
  listener->document_opened("a.pdf", 2);
  listener->page_finished("a.pdf", {1, "it crashed", "", 0.0, 0, false});
  _now += 1.0;
  listener->tick();
  listener->run_finished({1, 2, 1, 1.0, 0, 0, 1});
  const std::string text = written();
  EXPECT_NE(text.find("\r\x1B[Kzelk: a.pdf: page 1: it crashed"), std::string::npos) << text;
  EXPECT_NE(text.find("\r\x1B[Kzelk: 1 document, 2 pages (1 failed)"), std::string::npos) << text;
}

TEST_F(ProgressOutput, NoBarIsDrawnIntoResults) {
  cli::ProgressSettings settings;
  settings.results_on_terminal = true;
  play_one_page(*on_terminal(settings));
  EXPECT_EQ(written(), "");
}

TEST_F(ProgressOutput, ReaderThatHasGoneIsNoMatter) {
  const int full = open("/dev/full", O_WRONLY);
  cli::ProgressSettings settings;
  settings.descriptor = full;
  play_run(*cli::make_progress(settings));
  close(full);
}

}  // namespace
