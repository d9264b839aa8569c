// SPDX-License-Identifier: Apache-2.0
#include "supervisor/engine_identity.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "cli/supervisor/test_folder.h"
#include "exchange/files.h"

namespace {

namespace fs = std::filesystem;

// An engine with a model in a folder below it and language data elsewhere.
class EngineIdentity : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(folder.path("engine/models"));
    fs::create_directories(folder.path("data"));
    cli::write_file(folder.path("engine/libQVEngine.so"), "engine");
    cli::write_file(folder.path("engine/models/large"), large);
    cli::write_file(folder.path("data/eng.traineddata"), "english");
  }
  void TearDown() override { unsetenv("QV_MODEL"); }

  std::string identity(const std::string& at = "") const {
    const std::string root = folder.path() + "/" + at;
    return cli::engine_identity({root + "engine/", root + "data", {root + "data/eng.traineddata"}});
  }

  TestFolder folder;
  std::string large = std::string(5 << 20, 'm');
};

TEST_F(EngineIdentity, StaysTheSameForACopyOfAnotherDate) {
  const std::string before = identity();
  fs::create_directory(folder.path("moved"));
  fs::copy(folder.path("engine"), folder.path("moved/engine"), fs::copy_options::recursive);
  fs::copy(folder.path("data"), folder.path("moved/data"), fs::copy_options::recursive);
  fs::last_write_time(folder.path("moved/engine/models/large"), fs::file_time_type());
  EXPECT_EQ(identity("moved/"), before);
}

TEST_F(EngineIdentity, ChangesWithTheEngine) {
  const std::string before = identity();
  cli::write_file(folder.path("engine/libQVEngine.so"), "Engine");
  EXPECT_NE(identity(), before);
}

TEST_F(EngineIdentity, ChangesWithLanguageDataOutsideOfTheEnginesFolder) {
  const std::string before = identity();
  cli::write_file(folder.path("data/eng.traineddata"), "English");
  EXPECT_NE(identity(), before);
}

TEST_F(EngineIdentity, ChangesWithALargeModelOfTheSameSizeAndDate) {
  const std::string before = identity();
  const std::string path = folder.path("engine/models/large");
  const auto date = fs::last_write_time(path);
  cli::write_file(path, std::string(large.size(), 'n'));
  fs::last_write_time(path, date);
  EXPECT_NE(identity(), before);
  large.back() = 'x';
  cli::write_file(path, large);
  EXPECT_NE(identity(), before) << "the end counts";
}

TEST_F(EngineIdentity, ChangesWithWhatTheEnvironmentNames) {
  setenv("QV_MODEL", folder.path("data").c_str(), 1);
  const std::string before = identity();
  cli::write_file(folder.path("data/more"), "more");
  EXPECT_NE(identity(), before);
  setenv("QV_MODEL", "fast", 1);
  const std::string named = identity();
  setenv("QV_MODEL", "best", 1);
  EXPECT_NE(identity(), named);
}

}  // namespace
