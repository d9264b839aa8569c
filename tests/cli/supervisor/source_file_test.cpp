// SPDX-License-Identifier: Apache-2.0
#include "supervisor/source_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "cli/supervisor/test_folder.h"
#include "exchange/error.h"
#include "exchange/files.h"

namespace {

using cli::Descriptor;
using cli::SourceFile;

constexpr bool kKeep = true;
constexpr bool kForget = false;

std::string content(const Descriptor& descriptor) {
  char buffer[100];
  const ssize_t count = read(descriptor.number(), buffer, sizeof buffer);
  return {buffer, static_cast<std::size_t>(std::max<ssize_t>(0, count))};
}

class SourceFileTest : public testing::Test {
 protected:
  SourceFileTest() { cli::write_file(path, "content"); }

  TestFolder folder;
  std::string path = folder.path("scan.pdf");
};

TEST_F(SourceFileTest, IsGivenForReadingOnly) {
  for (const bool keep : {kKeep, kForget}) {
    const Descriptor descriptor = SourceFile(path, keep).open();
    EXPECT_EQ(fcntl(descriptor.number(), F_GETFL) & O_ACCMODE, O_RDONLY);
    EXPECT_EQ(content(descriptor), "content");
  }
}

TEST_F(SourceFileTest, GetsNoSecondNameAndStaysUnchanged) {
  struct stat before = {};
  stat(path.c_str(), &before);
  SourceFile(path, kKeep).open();
  struct stat after = {};
  stat(path.c_str(), &after);
  EXPECT_EQ(after.st_nlink, 1U);
  EXPECT_EQ(after.st_ctim.tv_sec, before.st_ctim.tv_sec);
  EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
}

TEST_F(SourceFileTest, StaysTheOneThatWasOpenedFirst) {
  SourceFile file(path, kKeep);
  file.open();
  std::filesystem::remove(path);
  cli::write_file(path, "another");
  EXPECT_EQ(content(file.open()), "content");
  std::filesystem::remove(path);
  EXPECT_EQ(content(file.open()), "content");
}

TEST_F(SourceFileTest, FlagsAndPlacesAreNotShared) {
  SourceFile file(path, kKeep);
  const Descriptor first = file.open();
  fcntl(first.number(), F_SETFL, fcntl(first.number(), F_GETFL) | O_DIRECT | O_APPEND);
  content(first);
  const Descriptor second = file.open();
  EXPECT_EQ(fcntl(second.number(), F_GETFL) & O_APPEND, 0);
  EXPECT_EQ(content(second), "content");
}

TEST_F(SourceFileTest, CanBeReplaced) {
  cli::write_file(folder.path("decrypted"), "decrypted");
  SourceFile file(path, kKeep);
  file.open();
  file.replace(folder.path("decrypted"));
  EXPECT_EQ(content(file.open()), "decrypted");
}

TEST_F(SourceFileTest, APipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
  EXPECT_TRUE(SourceFile(folder.path("pipe"), kKeep).open().is_open());
}

TEST_F(SourceFileTest, WhatIsMissingIsNamed) {
  try {
    SourceFile(folder.path("none"), kKeep).open();
    FAIL() << "no exception";
  } catch (const cli::Error& error) {
    EXPECT_EQ(error.number(), ENOENT);
    EXPECT_NE(std::string(error.what()).find("none"), std::string::npos);
  }
}

}  // namespace
