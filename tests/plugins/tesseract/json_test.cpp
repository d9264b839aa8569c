// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "plugins/tesseract/EngineLibrary.h"

namespace {

using Json = nlohmann::json;

class DefaultEngineJson : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(engine_.start(), 0); }
  void TearDown() override { engine_.uninit_engine(); }

  // The JSON that fits into `size` bytes; the bytes behind them must stay untouched.
  std::string json(std::size_t size) {
    std::string buffer(size + 16, '\x7F');
    engine_.get_result_json(buffer.data(), static_cast<int>(size));
    EXPECT_EQ(buffer.substr(size), std::string(16, '\x7F'));
    const void* end = std::memchr(buffer.data(), '\0', size);
    EXPECT_TRUE(size == 0 || end != nullptr) << "no zero byte in " << size;
    return end != nullptr ? std::string(buffer.c_str()) : std::string();
  }

  EngineLibrary engine_;
};

// Runs the validator of python3-jsonschema over the text.
bool is_valid(const std::string& json) {
  const std::string path = testing::TempDir() + "default_engine_page.json";
  std::ofstream(path) << json;
  const std::string command = "/usr/bin/python3 -W ignore -m jsonschema -i " + path +
                              " " ZELK_DOCS "/engine-json.schema.json";
  const bool valid = std::system(command.c_str()) == 0;
  std::filesystem::remove(path);
  return valid;
}

TEST_F(DefaultEngineJson, ConformsToItsSchema) {
  for (const char* name : {"english.tif", "zh-mixed-serif-200.jpg"}) {
    ASSERT_FALSE(read(engine_, test_picture(name)).empty());
    EXPECT_TRUE(is_valid(json(4096000))) << name;
  }
  ASSERT_EQ(set_image(engine_, white_page(300, 200)), 0);
  ASSERT_EQ(engine_.recognize(), 0);
  EXPECT_TRUE(is_valid(json(4096000))) << "empty page";
}

TEST(EngineJsonDocumentation, ItsExampleConformsToTheSchema) {
  std::ifstream file(ZELK_DOCS "/engine-json.md");
  const std::string text(std::istreambuf_iterator<char>(file), {});
  const std::size_t begin = text.find("```json\n") + 8;
  const std::string example = text.substr(begin, text.find("```", begin) - begin);
  EXPECT_EQ(Json::parse(example)["engine"]["name"], "zelk-tesseract");
  EXPECT_TRUE(is_valid(example));
}

TEST_F(DefaultEngineJson, TheSchemaRefusesWhatIsNotAsDescribed) {
  ASSERT_FALSE(read(engine_, test_picture("english.tif")).empty());
  Json page = Json::parse(json(4096000));
  page["blocks"][0]["lines"][0]["words"][0]["confidence"] = 101;
  EXPECT_FALSE(is_valid(page.dump()));
}

TEST_F(DefaultEngineJson, BoxesLieInsideOneAnotherAndOnThePage) {
  const TestRaster raster = test_picture("zh-mixed-serif-200.jpg");
  ASSERT_FALSE(read(engine_, raster).empty());
  const Json page = Json::parse(json(4096000));
  EXPECT_EQ(page["page"]["width"], raster.width);
  EXPECT_EQ(page["page"]["height"], raster.height);
  EXPECT_EQ(page["languages"], "chi_sim");
  const auto inside = [](const Json& a, const Json& b) {
    return a[0] >= b[0] && a[1] >= b[1] && a[2] <= b[2] && a[3] <= b[3] && a[0] < a[2] &&
           a[1] < a[3];
  };
  int words = 0;
  for (const Json& block : page["blocks"]) {
    EXPECT_TRUE(inside(block["box"], {0, 0, raster.width, raster.height}));
    for (const Json& line : block["lines"]) {
      EXPECT_TRUE(inside(line["box"], block["box"])) << line;
      for (const Json& word : line["words"]) {
        ++words;
        EXPECT_TRUE(inside(word["box"], line["box"])) << word;
        std::string text;
        for (const Json& character : word["characters"]) text += character["text"];
        EXPECT_EQ(word["text"], text);
      }
    }
  }
  EXPECT_GT(words, 50);
}

TEST_F(DefaultEngineJson, EveryBufferSizeGetsWholeJsonOrNothing) {
  ASSERT_FALSE(read(engine_, test_picture("english.tif")).empty());
  const std::size_t whole = json(4096000).size();
  EXPECT_EQ(json(whole + 1).size(), whole);
  EXPECT_EQ(Json::parse(json(whole))["detail"], "words");
  std::string smallest;
  for (std::size_t size = 0; size <= whole; size += 97) {
    const std::string text = json(size);
    if (text.empty()) continue;
    EXPECT_LT(text.size(), size);
    const Json page = Json::parse(text);
    if (smallest.empty()) smallest = page["detail"];
    EXPECT_NE(page["detail"], "characters");
  }
  EXPECT_EQ(smallest, "lines");
  EXPECT_EQ(json(1), "");
}

TEST_F(DefaultEngineJson, ANullOrEmptyBufferIsLeftAlone) {
  ASSERT_FALSE(read(engine_, test_picture("english.tif")).empty());
  char untouched = 'x';
  EXPECT_NE(engine_.get_result_json(nullptr, 100), 0);
  EXPECT_NE(engine_.get_result_json(&untouched, 0), 0);
  EXPECT_NE(engine_.get_result_json(&untouched, -1), 0);
  EXPECT_EQ(untouched, 'x');
}

}  // namespace
