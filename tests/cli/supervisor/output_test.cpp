// SPDX-License-Identifier: Apache-2.0
#include "supervisor/output.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <system_error>

#include "cli/supervisor/test_folder.h"
#include "exchange/error.h"
#include "exchange/files.h"

namespace {

TEST(Output, AppearsCompleteUnderItsNameAndNotBefore) {
  const TestFolder folder;
  std::filesystem::create_directory(folder.path("unfinished"));
  cli::write_file(folder.path("out"), "old");
  chmod(folder.path("out").c_str(), 0640);
  cli::Output output(folder.path("out"), folder.path("unfinished"));
  output.write("new");
  EXPECT_EQ(cli::read_file(folder.path("out")), "old");
  output.finish();
  EXPECT_EQ(cli::read_file(folder.path("out")), "new");
  struct stat info = {};
  ASSERT_EQ(stat(folder.path("out").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640U);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path("unfinished")));
}

TEST(Output, LeavesNoTraceUnfinished) {
  const TestFolder folder;
  { cli::Output(folder.path("out"), folder.path()).write("half"); }
  EXPECT_TRUE(folder.names().empty());
}

TEST(Output, KeepsALinkAndReplacesWhatItNames) {
  const TestFolder folder;
  cli::write_file(folder.path("target"), "old");
  std::filesystem::create_symlink("target", folder.path("link"));
  cli::Output output(folder.path("link"), folder.path());
  output.write("new");
  output.finish();
  EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
  EXPECT_EQ(cli::read_file(folder.path("target")), "new");
}

TEST(Output, WhatCannotBeWrittenIsKnownBefore) {
  const TestFolder folder;
  cli::write_file(folder.path("out"), "old");
  EXPECT_NO_THROW(cli::check_writable(folder.path("out")));
  EXPECT_NO_THROW(cli::check_writable(folder.path("new")));
  EXPECT_THROW(cli::check_writable(folder.path()), cli::Error);
  EXPECT_THROW(cli::check_writable(folder.path("none/out")), cli::Error);
}

}  // namespace
