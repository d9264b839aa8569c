// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <utility>

#include "plugins/tesseract/EngineLibrary.h"
#include "script.h"

namespace {

constexpr const char* kEnglish = "english.tif";
constexpr const char* kChinese = "zh-landscape-200-palette.png";
constexpr const char* kMixed = "zh-mixed-serif-200.jpg";

class DefaultEngineReading : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(engine_.start(), 0); }
  void TearDown() override { engine_.uninit_engine(); }
  void expect_no_results() {
    EXPECT_EQ(engine_.get_lines_num(), 0);
    EXPECT_STREQ(engine_.get_result_ex(), "");
    EXPECT_EQ(std::wcslen(engine_.get_result_unicode()), 0U);
    char json[64] = "old";
    EXPECT_NE(engine_.get_result_json(json, sizeof json), 0);
    EXPECT_STREQ(json, "");
  }
  EngineLibrary engine_;
};

TEST_F(DefaultEngineReading, AnEnglishPageReadsLikeItsTruth) {
  EXPECT_EQ(error_rate(truth_of(kEnglish), read(engine_, test_picture(kEnglish))), 0.0);
}

TEST_F(DefaultEngineReading, AChinesePageIsReadWithTheChineseModel) {
  EXPECT_LE(error_rate(truth_of(kChinese), read(engine_, test_picture(kChinese))), 0.03);
}

TEST_F(DefaultEngineReading, AChinesePageWithEnglishWordsKeepsBoth) {
  const std::string text = read(engine_, test_picture(kMixed));
  EXPECT_LE(error_rate(truth_of(kMixed), text), 0.06);
  EXPECT_NE(text.find("为 Linux 5.10 或更高版本"), std::string::npos) << text;
}

TEST_F(DefaultEngineReading, RastersOf1And8And24BitsReadTheSame) {
  const std::string text = read(engine_, test_picture(kEnglish, 24));
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(read(engine_, test_picture(kEnglish, 8)), text);
  EXPECT_EQ(read(engine_, test_picture(kEnglish, 1)), text);
}

TEST_F(DefaultEngineReading, AnImageFileReadsLikeItsRaster) {
  const std::string text = read(engine_, test_picture(kEnglish));
  ASSERT_EQ(engine_.load_image_file((ZELK_TEST_DATA "/" + std::string(kEnglish)).c_str(), 0), 0);
  ASSERT_EQ(engine_.recognize(), 0);
  EXPECT_EQ(engine_.get_result_ex(), text);
}

TEST_F(DefaultEngineReading, TextEndsWithOneLineFeedAndWideTextIsTheSameText) {
  const std::string text = read(engine_, test_picture(kMixed));
  ASSERT_GT(text.size(), 1U);
  EXPECT_EQ(text.back(), '\n');
  EXPECT_NE(text[text.size() - 2], '\n');
  const std::wstring wide = engine_.get_result_unicode();
  EXPECT_EQ(tesseract_engine::to_utf8({wide.begin(), wide.end()}), text);
}

TEST_F(DefaultEngineReading, CellsSpellTheTextLineByLine) {
  const std::string text = read(engine_, test_picture(kMixed));
  std::string spelled;
  for (int i = 0; i < engine_.get_lines_num(); ++i) {
    for (const OCR_CHAR& cell : cells_of_line(engine_, i)) {
      spelled += tesseract_engine::to_utf8({static_cast<char32_t>(cell.code)});
    }
    spelled += '\n';
  }
  std::string lines;  // without the empty lines between paragraphs
  std::unique_copy(text.begin(), text.end(), std::back_inserter(lines),
                   [](char a, char b) { return a == '\n' && b == '\n'; });
  EXPECT_EQ(spelled, lines);
}

TEST_F(DefaultEngineReading, CellsLieOnThePageFromLeftToRightOnOneBottom) {
  const TestRaster page = test_picture(kChinese);
  ASSERT_FALSE(read(engine_, page).empty());
  std::int64_t bottom_before = 0;
  for (int i = 0; i < engine_.get_lines_num(); ++i) {
    const std::vector<OCR_CHAR> cells = cells_of_line(engine_, i);
    ASSERT_FALSE(cells.empty());
    EXPECT_GT(cells.front().bottom, bottom_before);
    bottom_before = cells.front().bottom;
    for (std::size_t c = 0; c < cells.size(); ++c) {
      EXPECT_EQ(cells[c].bottom, bottom_before);
      EXPECT_GE(cells[c].top, 0);
      EXPECT_GE(cells[c].left, c == 0 ? 0 : cells[c - 1].left);
      EXPECT_LE(cells[c].right, page.width);
    }
  }
}

TEST_F(DefaultEngineReading, LinesOutsideTheResultDoNotExist) {
  ASSERT_FALSE(read(engine_, test_picture(kEnglish)).empty());
  OCR_CHAR cell{};
  for (const int id : {-1, engine_.get_lines_num(), 2147483647}) {
    int count = 5;
    EXPECT_FALSE(engine_.get_line_info_ex(id, &cell, count));
    EXPECT_EQ(count, 0);
  }
}

TEST_F(DefaultEngineReading, AnEmptyPageIsReadAsEmptyText) {
  ASSERT_EQ(set_image(engine_, white_page(1000, 1400)), 0);
  EXPECT_EQ(engine_.recognize(), 0);
  EXPECT_EQ(engine_.get_lines_num(), 0);
  EXPECT_STREQ(engine_.get_result_ex(), "");
}

TEST_F(DefaultEngineReading, TinyPagesAreReadWithoutHarm) {
  for (const int bits : {1, 8, 24}) {
    for (const int side : {1, 2, 3, 10, 31}) {
      ASSERT_EQ(set_image(engine_, white_page(side, side, bits)), 0);
      engine_.recognize();
      EXPECT_STREQ(engine_.get_result_ex(), "") << side << " pixels";
    }
  }
}

// Tesseract ends the process on pictures that it has been told are larger than it can hold.
TEST_F(DefaultEngineReading, NoiseOfTheLongestShapesIsReadWithoutHarm) {
  std::mt19937 random(1);
  for (const auto& [width, height] : {std::pair{3, 32767}, {32767, 3}, {200, 300}}) {
    for (int i = 0; i < 3; ++i) {
      TestRaster noise = white_page(width, height);
      for (unsigned char& byte : noise.rows) byte = static_cast<unsigned char>(random());
      ASSERT_EQ(set_image(engine_, noise), 0);
      EXPECT_EQ(engine_.recognize(), 0);
    }
  }
}

TEST_F(DefaultEngineReading, RefusedRastersDropTheImageBefore) {
  const TestRaster good = test_picture(kEnglish);
  const unsigned char* rows = good.rows.data();
  const auto refused = [&](int code, const unsigned char* buffer, int width, int height, int bits,
                           int bytes) {
    EXPECT_EQ(set_image(engine_, good), 0);
    EXPECT_EQ(engine_.recognize(), 0);
    EXPECT_EQ(engine_.set_image_data(buffer, width, height, bits, bytes, 1), code);
    expect_no_results();
    EXPECT_NE(engine_.recognize(), 0);
    expect_no_results();
  };
  refused(2, nullptr, good.width, good.height, 24, good.line_bytes);
  refused(2, rows, 0, 0, 24, 0);
  refused(4, rows, 40000, 1, 1, 5000);
  refused(4, rows, 1, 40000, 1, 4);
  refused(4, rows, 30000, 30000, 1, 3752);
  refused(2, rows, good.width, good.height, 24, good.width);
  refused(2, rows, good.width, good.height, 16, good.line_bytes);
}

TEST_F(DefaultEngineReading, AnImageFileThatCannotBeReadDropsTheImageBefore) {
  ASSERT_EQ(set_image(engine_, test_picture(kEnglish)), 0);
  EXPECT_NE(engine_.load_image_file(ZELK_TEST_DATA "/english.tif.txt", 0), 0);
  EXPECT_NE(engine_.recognize(), 0);
  EXPECT_NE(engine_.load_image_file("/nowhere.png", 0), 0);
  EXPECT_NE(engine_.load_image_file(nullptr, 0), 0);
  expect_no_results();
}

TEST_F(DefaultEngineReading, AnImageFileThatIsTooLargeDropsTheImageBefore) {
  ASSERT_EQ(set_image(engine_, test_picture(kEnglish)), 0);
  EXPECT_EQ(engine_.load_image_file(ZELK_TEST_DATA "/hostile/bomb-30000x30000-1bit.png", 0), 4);
  EXPECT_NE(engine_.recognize(), 0);
  expect_no_results();
}

TEST_F(DefaultEngineReading, ResultsDoNotDependOnThePagesBefore) {
  const std::vector<TestRaster> pages = {test_picture(kEnglish), test_picture(kMixed),
                                         test_picture(kChinese)};
  const auto json_of = [&](const TestRaster& page) {
    read(engine_, page);
    std::string json(4096000, '\0');
    engine_.get_result_json(json.data(), static_cast<int>(json.size()));
    return std::string(json.c_str());
  };
  std::vector<std::string> alone;
  for (const TestRaster& page : pages) {
    engine_.uninit_engine();
    ASSERT_EQ(engine_.start(), 0);
    alone.push_back(json_of(page));
  }
  for (const std::size_t i : {2U, 0U, 1U, 0U, 2U, 1U}) EXPECT_EQ(json_of(pages[i]), alone[i]);
}

TEST_F(DefaultEngineReading, TheTextFileHoldsTheText) {
  const std::string text = read(engine_, test_picture(kEnglish));
  const std::string path = testing::TempDir() + "default_engine_text.txt";
  ASSERT_TRUE(engine_.save_ocrfile(path.c_str()));
  std::ifstream file(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), text);
  std::filesystem::remove(path);
}

TEST_F(DefaultEngineReading, ATextFileThatCannotBeWrittenIsReported) {
  EXPECT_FALSE(engine_.save_ocrfile("/nowhere/text.txt"));
  EXPECT_FALSE(engine_.save_ocrfile(nullptr));
  ASSERT_FALSE(read(engine_, test_picture(kEnglish)).empty());
  EXPECT_FALSE(engine_.save_ocrfile("/dev/full"));
}

TEST_F(DefaultEngineReading, PrintsNothing) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  read(engine_, test_picture(kMixed));
  read(engine_, white_page(3, 3));
  read(engine_, white_page(3000, 20));
  engine_.load_image_file(ZELK_TEST_DATA "/english.tif.txt", 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
