// SPDX-License-Identifier: Apache-2.0
#include "supervisor/worker_log.h"

#include <gtest/gtest.h>

namespace {

TEST(WorkerLog, NothingOfItCommandsATerminal) {
  cli::WorkerLog log;
  EXPECT_EQ(log.add("\x1B[2J\x1B]0;title\x07 one\r\n\ttwo\x7F\n"),
            "\\x1B[2J\\x1B]0;title\\x07 one\\x0D\n\ttwo\\x7F\n");
  EXPECT_EQ(log.add("\xC2\x9B"
                    "1m"),
            "\\xC2\\x9B1m");
  EXPECT_EQ(log.add("\x9B"
                    "2K"),
            "\\x9B2K");
  EXPECT_EQ(log.last_words(),
            "\\x1B[2J\\x1B]0;title\\x07 one\\x0D; \ttwo\\x7F; \\xC2\\x9B1m\\x9B2K");
}

TEST(WorkerLog, TextStaysWhereverItIsCut) {
  const std::string text = "Größe: 扫描 𝔘\n";
  cli::WorkerLog log;
  std::string shown;
  for (const char byte : text) shown += log.add({&byte, 1});
  EXPECT_EQ(shown, text);
}

TEST(WorkerLog, AnEndOfACharacterThatNeverComesHoldsNothingBack) {
  cli::WorkerLog log;
  EXPECT_EQ(log.add("a\xE6"), "a");
  EXPECT_EQ(log.add("b"),
            "\\xE6"
            "b");
}

TEST(WorkerLog, OnlyTheLastWordsAreKept) {
  cli::WorkerLog log;
  for (int line = 0; line < 1000; ++line) log.add("a long line of words\n");
  EXPECT_LE(log.last_words().size(), 5000U);
}

}  // namespace
