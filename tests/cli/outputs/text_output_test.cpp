// SPDX-License-Identifier: Apache-2.0
#include <system_error>

#include "cli/outputs/Records.h"
#include "exchange/error.h"

namespace {

class TextOutput : public Records {
 protected:
  std::string text() { return written_by(cli::write_text); }
};

TEST_F(TextOutput, IsThePagesTextsOneAfterAnotherAsTheyAre) {
  add(recognised("first\n"));
  add(recognised("no line feed"));
  add(recognised(std::string("\f\xFF\0end", 6)));
  EXPECT_EQ(text(), std::string("first\nno line feed\f\xFF\0end", 24));
  EXPECT_EQ(progress, 3);
}

TEST_F(TextOutput, FailedPagesContributeNothing) {
  add(recognised("first\n"));
  cli::PageRecord partial = failed("crashed");
  partial.text = "half a pa";
  add(partial);
  add(recognised("third\n"));
  EXPECT_EQ(text(), "first\nthird\n");
  EXPECT_EQ(progress, 3);
}

TEST_F(TextOutput, PageBreaksStandBetweenAllPagesAndNowhereElse) {
  order.page_break = true;
  add(recognised("one\fpage\n"));
  add(failed("crashed"));
  add(recognised(""));
  add(recognised("last"));
  EXPECT_EQ(text(), "one\npage\n\f\f\flast");
}

TEST_F(TextOutput, ReplacesWhatWasThere) {
  write_file(path, "a longer text that was there before");
  add(recognised("new"));
  EXPECT_EQ(text(), "new");
}

TEST_F(TextOutput, DamagedAndMissingRecordsAreNamed) {
  add(recognised("text"));
  for (const bool missing : {false, true}) {
    missing ? std::filesystem::remove(order.pages[0]) : (write_file(order.pages[0], "zelk"), true);
    try {
      text();
      ADD_FAILURE() << "no exception";
    } catch (const std::runtime_error& error) {
      EXPECT_NE(std::string(error.what()).find(order.pages[0]), std::string::npos) << error.what();
    }
  }
}

TEST_F(TextOutput, FullDiskAndMissingFolderAreErrorsThatNameTheFile) {
  add(recognised(std::string(100000, 'x')));
  for (const std::string& name : {std::string("/dev/full"), folder.path("none/out")}) {
    for (const Writer write : {cli::write_text, cli::write_json, cli::write_html}) {
      try {
        write(order, name, {});
        ADD_FAILURE() << name;
      } catch (const cli::Error& error) {
        EXPECT_EQ(error.number(), name == "/dev/full" ? ENOSPC : ENOENT);
        EXPECT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
      }
    }
  }
}

}  // namespace
