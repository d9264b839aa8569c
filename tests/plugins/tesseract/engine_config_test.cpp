// SPDX-License-Identifier: Apache-2.0
#include "engine_config.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace tesseract_engine;
namespace fs = std::filesystem;

class EngineConfigTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* variable : {"QV_LANGUAGES", "QV_TESSDATA", "QV_PAGE_SEGMENTATION"}) {
      unsetenv(variable);
    }
    folder_ = fs::temp_directory_path() / ("engine_config_test." + std::to_string(getpid()));
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string engine_dir() const { return folder_.string() + "/"; }
  void write(const std::string& name, const std::string& text) const {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name) << text;
  }
  StartResult read() { return read_config(engine_dir(), config_); }

  fs::path folder_;
  EngineConfig config_;
};

TEST_F(EngineConfigTest, WithoutFileAndEnvironmentTheDefaultsHold) {
  write("tessdata/eng.traineddata", "");
  ASSERT_TRUE(read().ok());
  EXPECT_EQ(config_.languages, "eng|chi_sim");
  EXPECT_EQ(config_.page_segmentation, 3);
  EXPECT_EQ(config_.tessdata, engine_dir() + "tessdata");
}

TEST_F(EngineConfigTest, FileSetsAllThreeKeysAndMayHoldCommentsAndEmptyLines) {
  write("QVEngine.conf",
        "# settings\n\n  languages =  chi_sim+eng # both at once\r\n"
        "tessdata=/somewhere\npage_segmentation = 11\n");
  ASSERT_TRUE(read().ok());
  EXPECT_EQ(config_.languages, "chi_sim+eng");
  EXPECT_EQ(config_.tessdata, "/somewhere");
  EXPECT_EQ(config_.page_segmentation, 11);
}

TEST_F(EngineConfigTest, EnvironmentOverridesTheFile) {
  write("QVEngine.conf", "languages = eng\ntessdata = /from/file\npage_segmentation = 4\n");
  setenv("QV_LANGUAGES", "chi_sim", 1);
  setenv("QV_TESSDATA", "/from/environment", 1);
  setenv("QV_PAGE_SEGMENTATION", "6", 1);
  ASSERT_TRUE(read().ok());
  EXPECT_EQ(config_.languages, "chi_sim");
  EXPECT_EQ(config_.tessdata, "/from/environment");
  EXPECT_EQ(config_.page_segmentation, 6);
}

TEST_F(EngineConfigTest, AnEmptyVariableCountsAsUnset) {
  write("QVEngine.conf", "languages = chi_sim\n");
  setenv("QV_LANGUAGES", "", 1);
  ASSERT_TRUE(read().ok());
  EXPECT_EQ(config_.languages, "chi_sim");
}

TEST_F(EngineConfigTest, ARelativeDataFolderInTheFileStartsFromTheEngineFolder) {
  write("QVEngine.conf", "tessdata = models\n");
  ASSERT_TRUE(read().ok());
  EXPECT_EQ(config_.tessdata, engine_dir() + "models");
}

TEST_F(EngineConfigTest, AnUnknownKeyIsNamedWithItsLine) {
  write("QVEngine.conf", "languages = eng\nlanguage = eng\n");
  const StartResult result = read();
  EXPECT_EQ(result.code, StartCode::kUnknownSetting);
  EXPECT_EQ(result.message, engine_dir() + "QVEngine.conf:2: unknown setting \"language\"");
}

TEST_F(EngineConfigTest, ALineWithoutEqualsSignIsNamed) {
  write("QVEngine.conf", "languages eng\n");
  const StartResult result = read();
  EXPECT_EQ(result.code, StartCode::kUnknownSetting);
  EXPECT_NE(result.message.find("\"languages eng\""), std::string::npos);
}

TEST_F(EngineConfigTest, AFileThatCannotBeReadIsNamed) {
  fs::create_directory(folder_ / "QVEngine.conf");
  const StartResult result = read();
  EXPECT_EQ(result.code, StartCode::kUnreadableConfig);
  EXPECT_NE(result.message.find("QVEngine.conf"), std::string::npos);
}

TEST_F(EngineConfigTest, PageSegmentationTakesOnlyModesThatReadText) {
  for (const char* value : {"0", "1", "2", "12", "14", "-3", "", "three", "3x"}) {
    write("QVEngine.conf", std::string("page_segmentation = ") + value + "\n");
    EXPECT_EQ(read().code, StartCode::kBadPageSegmentation) << value;
  }
  for (const char* value : {"3", "11", "13"}) {
    write("QVEngine.conf", std::string("page_segmentation = ") + value + "\n");
    EXPECT_TRUE(read().ok()) << value;
  }
}

TEST_F(EngineConfigTest, ABadVariableIsNamed) {
  setenv("QV_PAGE_SEGMENTATION", "auto", 1);
  const StartResult result = read();
  EXPECT_EQ(result.code, StartCode::kBadPageSegmentation);
  EXPECT_EQ(result.message.find("QV_PAGE_SEGMENTATION"), 0U);
}

TEST(LanguageSetting, BarsSeparateAlternativesAndPlusSignsLanguages) {
  EXPECT_EQ(alternatives_of("eng | chi_sim + eng"),
            (std::vector<std::string>{"eng", "chi_sim+eng"}));
  EXPECT_EQ(alternatives_of("script/Latin"), std::vector<std::string>{"script/Latin"});
}

TEST(LanguageSetting, MalformedSettingsHaveNoAlternatives) {
  for (const char* setting :
       {"", "|", "eng|", "eng||chi_sim", "eng+", "+eng", "../eng", "eng chi"}) {
    EXPECT_TRUE(alternatives_of(setting).empty()) << setting;
  }
}

TEST_F(EngineConfigTest, AMissingLanguageIsNamedWithTheFileThatIsMissing) {
  write("data/eng.traineddata", "");
  config_.tessdata = folder_ / "data";
  config_.languages = "eng|xyz+eng";
  const StartResult result = check_languages(config_);
  EXPECT_EQ(result.code, StartCode::kMissingLanguage);
  EXPECT_NE(result.message.find("\"xyz\""), std::string::npos);
  EXPECT_NE(result.message.find("data/xyz.traineddata"), std::string::npos);
}

TEST_F(EngineConfigTest, AnUnreadableDataFolderIsNamed) {
  config_.tessdata = folder_ / "nowhere";
  const StartResult result = check_languages(config_);
  EXPECT_EQ(result.code, StartCode::kUnreadableData);
  EXPECT_NE(result.message.find("nowhere"), std::string::npos);
}

TEST_F(EngineConfigTest, AMalformedLanguageSettingIsQuoted) {
  config_.languages = "eng,chi_sim";
  const StartResult result = check_languages(config_);
  EXPECT_EQ(result.code, StartCode::kBadLanguages);
  EXPECT_NE(result.message.find("\"eng,chi_sim\""), std::string::npos);
}

TEST_F(EngineConfigTest, LanguagesOfAFolderAreSortedAndIncludeSubfolders) {
  for (const char* name : {"eng", "chi_sim", "osd", "equ", "script/Han"}) {
    write("data/" + std::string(name) + ".traineddata", "");
  }
  write("data/readme.txt", "");
  EXPECT_EQ(list_languages(folder_ / "data"),
            (std::vector<std::string>{"chi_sim", "eng", "script/Han"}));
  EXPECT_TRUE(list_languages(folder_ / "nowhere").empty());
}

}  // namespace
