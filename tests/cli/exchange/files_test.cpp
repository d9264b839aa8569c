// SPDX-License-Identifier: Apache-2.0
#include "exchange/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "exchange/error.h"

namespace {

// Something that keeps whoever opens it waiting lies where a file is expected.
class NoFiles : public testing::Test {
 protected:
  NoFiles() {
    std::string name = (std::filesystem::temp_directory_path() / "zelk-test-XXXXXX").string();
    folder = mkdtemp(name.data());
    pipe = folder + "/pipe";
    EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  }
  ~NoFiles() override { std::filesystem::remove_all(folder); }

  std::string folder;
  std::string pipe;
};

TEST_F(NoFiles, AreNotRead) {
  for (const std::string& path : {pipe, folder, std::string("/dev/zero")}) {
    EXPECT_FALSE(cli::read_file(path).has_value()) << path;
    EXPECT_THROW(cli::digest_of_file(path), cli::Error) << path;
  }
}

TEST_F(NoFiles, AreReplacedAndNotWrittenInto) {
  cli::write_file(pipe, "text");
  EXPECT_EQ(cli::read_file(pipe), "text");
}

TEST_F(NoFiles, AreNotMoved) {
  EXPECT_THROW(cli::move_file(pipe, folder + "/moved"), cli::Error);
}

TEST_F(NoFiles, ALinkIsReplacedAndItsTargetIsLeftAlone) {
  cli::write_file(folder + "/target", "target");
  std::filesystem::create_symlink("target", folder + "/link");
  cli::write_file(folder + "/link", "text");
  EXPECT_EQ(cli::read_file(folder + "/target"), "target");
  EXPECT_EQ(cli::read_file(folder + "/link"), "text");
}

}  // namespace
