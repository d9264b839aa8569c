// SPDX-License-Identifier: Apache-2.0
#include "console/lines.h"

#include <gtest/gtest.h>

#include "cli/console/scripted_run.h"
#include "console/columns.h"

namespace {

using cli::DocumentOutcome;
using cli::DocumentState;
using cli::PageOutcome;

PageOutcome failed_page(int number) {
  PageOutcome page;
  page.page = number;
  page.failure = "the engine crashed";
  return page;
}

TEST(Lines, FailedPagesAreNamedWithTheirCause) {
  EXPECT_EQ(cli::page_complaint("a.pdf", failed_page(3)),
            "zelk: a.pdf: page 3: the engine crashed\n");
  EXPECT_EQ(cli::page_complaint("a.pdf", PageOutcome()), "");
  PageOutcome page;
  page.page = 2;
  page.warning = "rendered at 90 dots per inch";
  EXPECT_EQ(cli::page_complaint("a\nb", page),
            "zelk: a\\x0Ab: page 2: warning: rendered at 90 dots per inch\n");
}

TEST(Lines, DocumentsAreNamedWithTheReason) {
  std::vector<std::string> complaints;
  for (const DocumentOutcome& document : scripted_documents()) {
    complaints.push_back(cli::document_complaint(document));
  }
  EXPECT_EQ(complaints,
            (std::vector<std::string>{"", "zelk: b\xFF.pdf: 1 of 3 pages could not be read\n",
                                      "zelk: c.png: the file is empty\n",
                                      "zelk: d.pdf: a password is needed (--password)\n",
                                      "zelk: e.pdf: the page could not be read\n",
                                      "zelk: f.pdf: No space left on device\n", "", ""}));
  DocumentOutcome none{"n.pdf", DocumentState::kFailed, "", 2, 0.0, {}, {}};
  none.pages = {failed_page(1), failed_page(2)};
  EXPECT_EQ(cli::document_complaint(none), "zelk: n.pdf: none of its 2 pages could be read\n");
}

TEST(Lines, VerboseLinesTellStatePagesAndOutputs) {
  EXPECT_EQ(cli::document_line(scripted_documents()[0]),
            "zelk: a.png: delivered, 1 page, 0.6 s: out/a.txt, out/a.pdf\n");
}

TEST(Lines, SummaryTellsWhatWasLost) {
  EXPECT_EQ(cli::summary_line({1, 1, 0, 2.0, 0, 0, 0}, {}),
            "zelk: 1 document, 1 page, 2.0 s, 0.5 pages/s\n");
  EXPECT_EQ(cli::summary_line({9, 30, 2, 10.0, 0, 0, 0}, {3, 1, true}),
            "zelk: interrupted: 9 documents (3 failed) (1 skipped), 30 pages (2 failed), 10.0 s, "
            "3.0 pages/s\n");
  EXPECT_NE(cli::summary_line({}, {}).find("0 documents, 0 pages, 0.0 s, 0.0 pages/s"),
            std::string::npos);
}

TEST(Lines, TimesAreThoseOfAClock) {
  EXPECT_EQ(cli::clock_time(7.4), "0:07");
  EXPECT_EQ(cli::clock_time(59.6), "1:00");
  EXPECT_EQ(cli::clock_time(3599.4), "59:59");
  EXPECT_EQ(cli::clock_time(10800.0), "3:00:00");
}

class Bar : public ::testing::Test {
 protected:
  Bar() {
    _pace.start(2, 0.0);
    _pace.open("a.png", 40);
    for (int i = 0; i < 10; ++i) _pace.finish_page("a.png", PageOutcome());
  }
  std::string line(int columns, const std::string& name = "scans/扫描 1.png") const {
    return cli::bar_line(_pace, name, 5.0, columns);
  }
  cli::Pace _pace;
};

TEST_F(Bar, HasAllOnAWideTerminal) {
  EXPECT_EQ(line(100), "[=====               ] 10/40+ pages  2.0/s  0:35 left  scans/扫描 1.png");
}

TEST_F(Bar, LosesPartsOnANarrowOne) {
  EXPECT_EQ(line(60), "[==        ] 10/40+ pages  2.0/s  0:35 left  .../扫描 1.png");
  EXPECT_EQ(line(32), "10/40+ pages  2.0/s  0:35 left");
  EXPECT_EQ(line(30), "10/40+ pages  2.0/s  ...1.png");
  EXPECT_EQ(line(14), "10/40+ pages");
}

TEST_F(Bar, FitsAnyTerminal) {
  for (int columns = 1; columns < 120; ++columns) {
    EXPECT_LT(cli::columns_of(line(columns, "扫描\xFF\x1B[2J very long name of a file.png")),
              columns);
  }
}

TEST_F(Bar, NamesDoNotCommandTheTerminal) {
  EXPECT_EQ(line(120, "\x1B[2J\xFF").find('\x1B'), std::string::npos);
}

TEST_F(Bar, LogsHaveTheSameInALine) {
  EXPECT_EQ(cli::progress_line(_pace, "a.png", 5.0),
            "zelk: 10 of 40+ pages, 2.0 pages/s, 0:35 left, a.png\n");
}

}  // namespace
