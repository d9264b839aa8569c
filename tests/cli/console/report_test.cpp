// SPDX-License-Identifier: Apache-2.0
#include "console/report.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <system_error>

#include "cli/console/scripted_run.h"
#include "cli/options/scratch_folder.h"
#include "exchange/error.h"

namespace {

using Json = nlohmann::json;

class ReportFile : public ScratchFolder {
 protected:
  static Json content(const std::string& path) {
    std::ifstream file(path);
    return Json::parse(file);
  }
  static size_t files() {
    const std::filesystem::directory_iterator entries(".");
    return static_cast<size_t>(std::distance(begin(entries), end(entries)));
  }
};

TEST_F(ReportFile, HasItsNameOnlyWhenComplete) {
  cli::Report report("r.json");
  report.document_finished(scripted_documents()[0]);
  EXPECT_FALSE(std::filesystem::exists("r.json"));
  report.run_finished(scripted_totals());
  EXPECT_EQ(report.failure(), "");
  EXPECT_EQ(content("r.json")["documents"].size(), 1U);
  EXPECT_EQ(files(), 1U);
}

TEST_F(ReportFile, OfARunWithoutDocumentsIsValid) {
  cli::Report("r.json").run_finished({});
  EXPECT_EQ(content("r.json")["documents"], Json::array());
}

TEST_F(ReportFile, UnfinishedOneLeavesTheOldAndNothingElse) {
  make_file("r.json", "old");
  { play_run(*std::make_unique<cli::Report>("other.json")); }
  { cli::Report("r.json").document_finished(scripted_documents()[0]); }
  std::ifstream file("r.json");
  std::string old;
  file >> old;
  EXPECT_EQ(old, "old");
  EXPECT_EQ(files(), 2U);
}

TEST_F(ReportFile, CausesOfAnyBytesAreValid) {
  cli::DocumentOutcome document = scripted_documents()[0];
  document.cause = "cannot read \xFF";
  cli::Report report("r.json");
  report.document_finished(document);
  report.run_finished({});
  EXPECT_EQ(content("r.json")["documents"][0]["cause"], "cannot read \\xFF");
}

TEST_F(ReportFile, GrowsOnDiskAndNotInMemory) {
  cli::Report report("r.json");
  for (int i = 0; i < 1000; ++i) report.document_finished(scripted_documents()[1]);
  std::uintmax_t size = 0;
  for (const auto& entry : std::filesystem::directory_iterator(".")) size += entry.file_size();
  EXPECT_GT(size, 300'000U);
}

TEST_F(ReportFile, PlaceThatCannotBeWrittenIsAnError) {
  EXPECT_THROW(cli::Report("none/r.json"), cli::Error);
  std::filesystem::create_directory("folder");
  EXPECT_THROW(cli::Report("folder"), cli::Error);
}

TEST_F(ReportFile, FullDiskIsTold) {
  cli::Report report("/dev/full");
  play_run(report);
  EXPECT_EQ(report.failure(), "/dev/full: No space left on device");
}

TEST_F(ReportFile, LinkStaysALinkAndPermissionsStay) {
  make_file("target.json");
  ASSERT_EQ(chmod("target.json", 0604), 0);
  ASSERT_EQ(symlink("target.json", "r.json"), 0);
  cli::Report report("r.json");
  play_run(report);
  EXPECT_TRUE(std::filesystem::is_symlink("r.json"));
  struct stat info = {};
  ASSERT_EQ(stat("target.json", &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0604U);
  EXPECT_EQ(content("target.json")["documents"].size(), 8U);
}

}  // namespace
