// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "engine_config.h"
#include "plugins/tesseract/EngineLibrary.h"

namespace {

namespace fs = std::filesystem;
using tesseract_engine::StartCode;

class DefaultEngineStart : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::path(testing::TempDir()) / ("default_engine." + std::to_string(getpid()));
    fs::create_directories(folder_ / "data");
  }
  void TearDown() override { fs::remove_all(folder_); }

  void configure(const std::string& text) const {
    std::ofstream(folder_ / "QVEngine.conf") << text;
  }

  // Starting gives this code and prints one line, on standard error, that names `what`; nothing
  // works afterwards, and a start with good settings does.
  void expect_failure(StartCode code, const std::string& what) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(engine_.start(folder_.string() + "/"), static_cast<int>(code));
    const std::string message = testing::internal::GetCapturedStderr();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 1) << message;
    EXPECT_NE(message.find(what), std::string::npos) << message;

    EXPECT_NE(set_image(engine_, white_page(100, 100)), 0);
    EXPECT_NE(engine_.recognize(), 0);
    EXPECT_STREQ(engine_.get_result_ex(), "");
    EXPECT_EQ(engine_.start(), 0);
    engine_.uninit_engine();
  }

  fs::path folder_;
  EngineLibrary engine_;
};

TEST_F(DefaultEngineStart, AnUnknownKeyIsNamed) {
  configure("lang = eng\n");
  expect_failure(StartCode::kUnknownSetting, "\"lang\"");
}

TEST_F(DefaultEngineStart, AnUnreadableSettingsFileIsNamed) {
  fs::create_directory(folder_ / "QVEngine.conf");
  expect_failure(StartCode::kUnreadableConfig, "QVEngine.conf");
}

TEST_F(DefaultEngineStart, ABadSegmentationIsNamed) {
  configure("page_segmentation = 99\n");
  expect_failure(StartCode::kBadPageSegmentation, "99");
}

TEST_F(DefaultEngineStart, AMalformedLanguageSettingIsNamed) {
  configure("languages = eng;chi_sim\n");
  expect_failure(StartCode::kBadLanguages, "eng;chi_sim");
}

TEST_F(DefaultEngineStart, AnUnreadableDataFolderIsNamed) {
  configure("tessdata = nowhere\n");
  expect_failure(StartCode::kUnreadableData, "nowhere");
}

TEST_F(DefaultEngineStart, OneMissingLanguageOfSeveralIsNamed) {
  configure("languages = eng+tlh\n");
  expect_failure(StartCode::kMissingLanguage, "\"tlh\"");
}

TEST_F(DefaultEngineStart, DamagedLanguageDataIsNamed) {
  std::ofstream(folder_ / "data" / "bad.traineddata") << "not a model";
  configure("languages = bad\ntessdata = data\n");
  expect_failure(StartCode::kLanguageNotLoaded, "\"bad\"");
}

TEST_F(DefaultEngineStart, LanguagesOfTheSettingsFileAreUsed) {
  configure("languages = chi_sim  # whatever the page\n");
  ASSERT_EQ(engine_.start(folder_.string() + "/"), 0);
  ASSERT_FALSE(read(engine_, test_picture("english.tif")).empty());
  std::string json(4096000, '\0');
  engine_.get_result_json(json.data(), static_cast<int>(json.size()));
  EXPECT_NE(json.find("\"languages\":\"chi_sim\""), std::string::npos);
  engine_.uninit_engine();
}

TEST_F(DefaultEngineStart, ANullFolderIsTheEmptyText) {
  EXPECT_EQ(engine_.init_engine(nullptr), 0);
  engine_.uninit_engine();
}

TEST_F(DefaultEngineStart, NothingWorksBeforeTheStartAndNothingBreaks) {
  OCR_CHAR cell{};
  int count = 7;
  EXPECT_NE(set_image(engine_, white_page(10, 10)), 0);
  EXPECT_NE(engine_.load_image_file(ZELK_TEST_DATA "/english.tif", 0), 0);
  EXPECT_NE(engine_.recognize(), 0);
  EXPECT_EQ(engine_.get_lines_num(), 0);
  EXPECT_FALSE(engine_.get_line_info_ex(0, &cell, count));
  EXPECT_EQ(count, 0);
  EXPECT_FALSE(engine_.save_ocrfile((folder_ / "text").c_str()));
  EXPECT_STREQ(engine_.get_result_ex(), "");
  EXPECT_EQ(engine_.get_result_unicode()[0], L'\0');
  char json[8] = "old";
  EXPECT_NE(engine_.get_result_json(json, sizeof json), 0);
  EXPECT_STREQ(json, "");
  engine_.uninit_engine();
}

}  // namespace
