// SPDX-License-Identifier: Apache-2.0
#include "supervisor/run_folder.h"

#include <gtest/gtest.h>

#include <optional>
#include <system_error>

#include "cli/supervisor/test_folder.h"
#include "exchange/error.h"
#include "exchange/files.h"

namespace {

using Names = std::set<std::string>;

TEST(RunFolder, GoesWithAllThatIsInIt) {
  const TestFolder parent;
  {
    const cli::RunFolder folder(parent.path());
    std::filesystem::create_directories(folder.path("deep/er"));
    cli::write_file(folder.path("deep/er/file"), "x");
    EXPECT_EQ(parent.names().size(), 1U);
  }
  EXPECT_EQ(parent.names(), Names());
}

TEST(RunFolder, WhatTheDeadLeftBehindIsRemovedAndTheLivingAreSpared) {
  const TestFolder parent;
  const cli::RunFolder living(parent.path());
  std::filesystem::create_directories(parent.path("zelk-run-killed/worker-1"));
  std::filesystem::create_directories(parent.path("other"));
  const cli::RunFolder folder(parent.path());
  EXPECT_EQ(parent.names(),
            (Names{"other", std::filesystem::path(living.path()).filename().string(),
                   std::filesystem::path(folder.path()).filename().string()}));
}

// It holds texts and pictures of pages, below folders that everybody may enter.
TEST(RunFolder, IsItsOwnersAlone) {
  const TestFolder parent;
  const cli::RunFolder folder(parent.path());
  EXPECT_EQ(std::filesystem::status(folder.path()).permissions(),
            std::filesystem::perms::owner_all);
}

TEST(RunFolder, AParentThatIsNotThereIsNamed) {
  try {
    const cli::RunFolder folder("/nowhere/at/all");
    FAIL() << "no exception";
  } catch (const cli::Error& error) {
    EXPECT_NE(std::string(error.what()).find("/nowhere/at/all"), std::string::npos);
    EXPECT_EQ(error.number(), ENOENT);
  }
}

}  // namespace
