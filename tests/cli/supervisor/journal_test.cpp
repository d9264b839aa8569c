// SPDX-License-Identifier: Apache-2.0
#include "supervisor/journal.h"

#include <gtest/gtest.h>

#include "cli/supervisor/test_folder.h"
#include "exchange/files.h"

namespace {

constexpr bool kResume = true;
constexpr bool kAnew = false;
const char* const kOrder = "all pages as text";

cli::DocumentOutcome delivered_outcome(const std::string& output) {
  cli::DocumentOutcome outcome;
  outcome.page_count = 3;
  outcome.outputs = {output};
  outcome.pages = {{1, "", "smaller", 1.5, 100}};
  outcome.notice = "1 of 3 pages have text already";
  return outcome;
}

// Leaves a journal with one record and one delivered document behind.
void leave_behind(const TestFolder& folder) {
  cli::Journal journal(folder.path(), kAnew);
  const std::optional<std::string> records = journal.open_document("half");
  ASSERT_TRUE(records.has_value());
  cli::write_file(*records + "/page-000001", "record");
  ASSERT_TRUE(journal.open_document("whole").has_value());
  cli::write_file(folder.path("whole.txt"), "text");
  journal.mark_delivered("whole", kOrder, delivered_outcome(folder.path("whole.txt")));
  journal.keep();
}

TEST(Journal, WithoutAReasonToKeepItItIsGoneAtTheEnd) {
  const TestFolder folder;
  {
    cli::Journal journal(folder.path(), kAnew);
    cli::write_file(*journal.open_document("key") + "/page-000001", "record");
  }
  EXPECT_TRUE(folder.names().empty());
}

TEST(Journal, AResumedRunFindsTheRecordsAndAnotherDoesNot) {
  const TestFolder folder;
  leave_behind(folder);
  {
    cli::Journal journal(folder.path(), kResume);
    EXPECT_EQ(cli::read_file(*journal.open_document("half") + "/page-000001"), "record");
    journal.keep();
  }
  cli::Journal journal(folder.path(), kAnew);
  EXPECT_FALSE(cli::read_file(*journal.open_document("half") + "/page-000001").has_value());
}

TEST(Journal, ADeliveredDocumentIsRememberedWithItsPages) {
  const TestFolder folder;
  leave_behind(folder);
  const cli::Journal journal(folder.path(), kResume);
  const std::optional<cli::DocumentOutcome> outcome = journal.delivered("whole", kOrder);
  ASSERT_TRUE(outcome.has_value());
  EXPECT_EQ(outcome->page_count, 3);
  EXPECT_EQ(outcome->outputs, std::vector<std::string>{folder.path("whole.txt")});
  EXPECT_EQ(outcome->notice, "1 of 3 pages have text already");
  ASSERT_EQ(outcome->pages.size(), 1U);
  EXPECT_EQ(outcome->pages[0].warning, "smaller");
  EXPECT_TRUE(outcome->pages[0].resumed);
  EXPECT_FALSE(journal.delivered("half", kOrder).has_value());
}

TEST(Journal, ADocumentWhoseOutputWasChangedIsDoneAgain) {
  const TestFolder folder;
  leave_behind(folder);
  cli::write_file(folder.path("whole.txt"), "other text");
  EXPECT_FALSE(cli::Journal(folder.path(), kResume).delivered("whole", kOrder).has_value());
  leave_behind(folder);
  std::filesystem::remove(folder.path("whole.txt"));
  EXPECT_FALSE(cli::Journal(folder.path(), kResume).delivered("whole", kOrder).has_value());
}

TEST(Journal, ADocumentOfWhichSomethingElseIsWantedIsDoneAgain) {
  const TestFolder folder;
  leave_behind(folder);
  const cli::Journal journal(folder.path(), kResume);
  EXPECT_FALSE(journal.delivered("whole", "all pages as JSON").has_value());
  EXPECT_TRUE(journal.delivered("whole", kOrder).has_value());
}

TEST(Journal, AClosedDocumentCanBeTakenUpByAnotherRun) {
  const TestFolder folder;
  cli::Journal first(folder.path(), kResume);
  cli::Journal second(folder.path(), kResume);
  ASSERT_TRUE(first.open_document("key").has_value());
  first.close_document("key");
  EXPECT_TRUE(second.open_document("key").has_value());
}

TEST(Journal, ADamagedMarkIsNone) {
  const TestFolder folder;
  leave_behind(folder);
  cli::write_file(folder.path(".zelk-journal/whole/delivered"), "garbage");
  EXPECT_FALSE(cli::Journal(folder.path(), kResume).delivered("whole", kOrder).has_value());
}

TEST(Journal, TwoRunsDoNotShareADocument) {
  const TestFolder folder;
  cli::Journal first(folder.path(), kResume);
  cli::Journal second(folder.path(), kResume);
  EXPECT_TRUE(first.open_document("key").has_value());
  EXPECT_FALSE(second.open_document("key").has_value());
  EXPECT_TRUE(second.open_document("other").has_value());
}

}  // namespace
