// SPDX-License-Identifier: Apache-2.0
#include "console/pace.h"

#include <gtest/gtest.h>

namespace {

cli::PageOutcome page(int number, bool resumed = false) {
  cli::PageOutcome outcome;
  outcome.page = number;
  outcome.resumed = resumed;
  return outcome;
}

TEST(Pace, TimeLeftFollowsFromThePagesWorkedOn) {
  cli::Pace pace;
  pace.start(1, 100.0);
  pace.open("a", 10);
  EXPECT_FALSE(pace.seconds_left(100.0));
  for (int i = 1; i <= 4; ++i) pace.finish_page("a", page(i));
  EXPECT_DOUBLE_EQ(pace.pages_per_second(102.0), 2.0);
  EXPECT_DOUBLE_EQ(pace.seconds_left(102.0).value(), 3.0);
}

TEST(Pace, PagesOfAJournalAreDoneButTellNothingOfTheSpeed) {
  cli::Pace pace;
  pace.start(1, 0.0);
  pace.open("a", 10);
  for (int i = 1; i <= 8; ++i) pace.finish_page("a", page(i, true));
  EXPECT_EQ(pace.pages_done(), 8);
  EXPECT_EQ(pace.pages_per_second(1.0), 0.0);
  pace.finish_page("a", page(9));
  EXPECT_DOUBLE_EQ(pace.seconds_left(1.0).value(), 1.0);
}

TEST(Pace, DocumentsNotOpenedYetCountWithTheMean) {
  cli::Pace pace;
  pace.start(3, 0.0);
  pace.open("a", 4);
  EXPECT_FALSE(pace.is_total_known());
  pace.finish_page("a", page(1));
  pace.finish_page("a", page(2));
  EXPECT_DOUBLE_EQ(pace.seconds_left(1.0).value(), (2 + 2 * 4) / 2.0);
  pace.finish_document("unreadable");
  EXPECT_DOUBLE_EQ(pace.seconds_left(1.0).value(), (2 + 4) / 2.0);
  pace.open("c", 4);
  EXPECT_TRUE(pace.is_total_known());
  EXPECT_EQ(pace.pages_known(), 8);
}

TEST(Pace, PagesThatADocumentLeavesBehindAreNotWaitedFor) {
  cli::Pace pace;
  pace.start(1, 0.0);
  pace.open("a", 10);
  pace.finish_page("a", page(1));
  pace.finish_document("a");
  EXPECT_EQ(pace.pages_known(), 1);
  EXPECT_EQ(pace.documents_done(), 1);
}

TEST(Pace, DocumentGivenTwiceIsTwoDocuments) {
  cli::Pace pace;
  pace.start(2, 0.0);
  pace.open("a", 1);
  pace.open("a", 1);
  EXPECT_TRUE(pace.is_total_known());
  pace.finish_page("a", page(1));
  pace.finish_document("a");
  EXPECT_EQ(pace.pages_known(), 2);
  pace.finish_page("a", page(1));
  pace.finish_document("a");
  EXPECT_EQ(pace.pages_done(), 2);
  EXPECT_EQ(pace.documents_done(), 2);
}

}  // namespace
