// SPDX-License-Identifier: Apache-2.0
// One page against the engine: the order of calls, and engines that do not keep their word.
#include <climits>
#include <cstring>

#include "process/MainProcess.h"
#include "support/ScriptedEngine.h"

namespace {

class EngineExchange : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(process.init_engine(fake.directory.c_str()), 0);
    fake.calls.clear();
    ASSERT_EQ(image.Init(3, 2, 24, 300), 1);
  }
  void TearDown() override { process.uninit_engine(); }

  int recognize() { return process.recognize_image_file(image, characters, text_dir); }

  ScriptedEngine fake;
  ofd::MainProcess process{};
  zelk::MDIB image;
  std::vector<OCR_CHAR> characters;
  int text_dir = 5;
};

TEST_F(EngineExchange, CallsComeInAFixedOrder) {
  FakePage page = fake_page("ab", "{}");
  page.lines.emplace_back();
  page.lines.push_back({ocr_char('c')});
  fake.script->pages = {page};
  EXPECT_EQ(recognize(), 0);
  EXPECT_EQ(fake.calls, (std::vector<std::string>{
                            "set", "recognize", "lines_num", "line 0 count with 0",
                            "line 0 records with 2", "line 1 count with 0", "line 2 count with 0",
                            "line 2 records with 1", "text", "wide", "json 4096000"}));
  ASSERT_EQ(characters.size(), 3U);
  EXPECT_EQ(characters[2].code, 'c');
  EXPECT_EQ(text_dir, 0) << "engines have no entry point for the direction";
}

TEST_F(EngineExchange, FailedPageStillAddsTextAndAnEmptyJsonEntry) {
  fake.script->pages = {fake_page("partly", "{never}")};
  fake.script->pages[0].code = 9;
  EXPECT_EQ(recognize(), 9);
  EXPECT_EQ(characters.size(), 6U) << "lines are gathered all the same";
  EXPECT_STREQ(process.get_ocr_string(), "partly");
  EXPECT_STREQ(process.get_ocr_string_unicode(), L"partly");
  EXPECT_EQ(process._ocr_array_jsonbuffer, std::vector<std::string>{""});
  EXPECT_EQ(fake.calls.back(), "wide") << "no JSON is asked for";
}

TEST_F(EngineExchange, NullTextIsEmptyText) {
  fake.script->null_text = true;
  process._ocr_string = "before";
  EXPECT_EQ(recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "before");
  EXPECT_STREQ(process.get_ocr_string_unicode(), L"");
}

TEST_F(EngineExchange, NegativeAndAbsurdLineCountsAreNone) {
  fake.script->pages = {fake_page("a")};
  for (const int count : {-1, INT_MIN, INT_MAX, 0}) {
    fake.script->lines_num = [count] { return count; };
    fake.script->line_info = [](int, OCR_CHAR*, int&) { FAIL() << "no line may be asked for"; };
    recognize();
    EXPECT_TRUE(characters.empty()) << count;
  }
}

TEST_F(EngineExchange, NegativeAndAbsurdCharacterCountsAreNone) {
  fake.script->lines_num = [] { return 1; };
  for (const int count : {-1, INT_MIN, INT_MAX, 0}) {
    fake.script->line_info = [count](int, OCR_CHAR* records, int& char_num) {
      EXPECT_EQ(records, nullptr) << "no array may be made for " << count;
      char_num = count;
    };
    recognize();
    EXPECT_TRUE(characters.empty()) << count;
  }
}

TEST_F(EngineExchange, FewerCharactersInTheSecondAnswerAreTakenAsTold) {
  fake.script->lines_num = [] { return 1; };
  fake.script->line_info = [](int, OCR_CHAR* records, int& char_num) {
    char_num = records == nullptr ? 5 : 2;
    if (records != nullptr) records[0] = records[1] = ocr_char('x');
  };
  recognize();
  ASSERT_EQ(characters.size(), 2U);
  EXPECT_EQ(characters[1].code, 'x');
}

TEST_F(EngineExchange, MoreOrNegativeCharactersInTheSecondAnswerAreNone) {
  fake.script->lines_num = [] { return 1; };
  for (const int second : {6, INT_MAX, -1, INT_MIN}) {
    fake.script->line_info = [second](int, OCR_CHAR* records, int& char_num) {
      char_num = records == nullptr ? 5 : second;
    };
    recognize();
    EXPECT_TRUE(characters.empty()) << second;
  }
}

TEST_F(EngineExchange, RecordsThatTheEngineDidNotFillAreZero) {
  fake.script->lines_num = [] { return 1; };
  fake.script->line_info = [](int, OCR_CHAR*, int& char_num) { char_num = 3; };
  recognize();
  ASSERT_EQ(characters.size(), 3U);
  EXPECT_EQ(characters[1].code, 0);
  EXPECT_EQ(characters[1].right, 0);
}

TEST_F(EngineExchange, AllLinesTogetherStayWithinTheBoundOfAPage) {
  fake.script->lines_num = [] { return 3; };
  fake.script->line_info = [](int, OCR_CHAR*, int& char_num) { char_num = 600000; };
  recognize();
  EXPECT_EQ(characters.size(), 600000U) << "the second and third line would pass it";
}

TEST_F(EngineExchange, JsonBufferIsZeroFilled) {
  fake.script->json = [](char* buffer, int length) {
    for (int i = 0; i < length; ++i) {
      if (buffer[i] != 0) return 1;
    }
    std::memcpy(buffer, "zeros", 5);
    return 0;
  };
  recognize();
  EXPECT_STREQ(process.get_ocr_json_buffer(0), "zeros");
}

TEST_F(EngineExchange, JsonWithoutAZeroByteIsTakenUpToTheEndOfTheBuffer) {
  fake.script->json = [](char* buffer, int length) {
    std::memset(buffer, 'j', static_cast<std::size_t>(length));
    return 0;
  };
  recognize();
  EXPECT_EQ(process._ocr_array_jsonbuffer.at(0), std::string(4096000, 'j'));
}

TEST_F(EngineExchange, ResultOfTheJsonCallIsIgnored) {
  fake.script->json = [](char* buffer, int) {
    std::memcpy(buffer, "{}", 2);
    return 77;
  };
  recognize();
  EXPECT_STREQ(process.get_ocr_json_buffer(0), "{}");
}

TEST_F(EngineExchange, RefusedRasterIsRecognisedAllTheSame) {
  fake.script->set_code = 3;
  recognize();
  EXPECT_EQ(fake.calls.at(1), "recognize");
}

}  // namespace
