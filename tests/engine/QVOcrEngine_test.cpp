// SPDX-License-Identifier: Apache-2.0
#include "engine/QVOcrEngine.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "support/ScriptedEngine.h"

namespace {

// Starts an engine and returns its result with what was printed.
struct Start {
  explicit Start(QVOcrEngine& engine, const std::string& directory) {
    testing::internal::CaptureStdout();
    result = engine.init_engine(directory.c_str());
    printed = testing::internal::GetCapturedStdout();
  }
  int result = 0;
  std::string printed;
};

bool is_mapped(const std::string& directory) {
  void* const library = dlopen((directory + "libQVEngine.so").c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (library != nullptr) dlclose(library);
  return library != nullptr;
}

int filled_slots(const QVOcrEngine& engine) {
  const bool filled[] = {
      engine._qv_init_engine != nullptr,         engine._qv_uninit_engine != nullptr,
      engine._qv_load_image_file != nullptr,     engine._qv_set_image_data != nullptr,
      engine._qv_recognize != nullptr,           engine._qv_get_lines_num != nullptr,
      engine._qv_get_line_info_ex != nullptr,    engine._qv_save_ocrfile != nullptr,
      engine._qv_get_result_ex != nullptr,       engine._qv_get_result_unicode != nullptr,
      engine._qv_get_image_direction != nullptr, engine._qv_set_auto_rotate != nullptr,
      engine._qv_get_result_json != nullptr,     engine._qv_save_form_grid != nullptr};
  return static_cast<int>(std::count(std::begin(filled), std::end(filled), true));
}

TEST(QVOcrEngine, ConstructionLoadsNothing) {
  const QVOcrEngine engine;
  EXPECT_EQ(engine._hinst, nullptr);
  EXPECT_FALSE(engine._load_succssed);
  EXPECT_EQ(filled_slots(engine), 0);
}

TEST(QVOcrEngine, StartFillsElevenSlotsAndPrintsNothing) {
  QVOcrEngine engine;
  const Start start(engine, fake_directory("fixed"));
  EXPECT_EQ(start.result, 0);
  EXPECT_EQ(start.printed, "");
  EXPECT_TRUE(engine._load_succssed);
  EXPECT_NE(engine._hinst, nullptr);
  EXPECT_EQ(filled_slots(engine), 11);
  engine.uninit_engine();
}

TEST(QVOcrEngine, EngineReceivesTheDirectoryTextItself) {
  const ScriptedEngine fake;
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake.directory.c_str()), 0);
  engine.uninit_engine();
  EXPECT_EQ(fake.calls, (std::vector<std::string>{"init " + fake.directory, "uninit"}));
}

TEST(QVOcrEngine, DirectoryWithoutTrailingSlashFailsToOpen) {
  QVOcrEngine engine;
  const Start start(engine, "/opt/ocr");
  EXPECT_EQ(start.result, -1);
  EXPECT_EQ(start.printed,
            "/opt/ocrlibQVEngine.so: dlopen () ERROR, Message(/opt/ocrlibQVEngine.so: cannot open "
            "shared object file: No such file or directory).\n");
  EXPECT_EQ(engine._hinst, nullptr);
  EXPECT_EQ(filled_slots(engine), 0);
}

TEST(QVOcrEngine, EmptyDirectoryHandsTheBareNameToTheLoader) {
  QVOcrEngine engine;
  const Start start(engine, "");
  EXPECT_EQ(start.result, -1);
  EXPECT_EQ(start.printed.rfind("libQVEngine.so: dlopen () ERROR, Message(libQVEngine.so: ", 0), 0U)
      << start.printed;
}

TEST(QVOcrEngine, DirectoryOf241BytesStillFitsTheBuffer) {
  QVOcrEngine engine;
  const std::string directory(241, 'd');
  const Start start(engine, directory);
  EXPECT_EQ(start.result, -1);
  EXPECT_NE(start.printed.find("cannot open shared object file"), std::string::npos)
      << start.printed;
}

TEST(QVOcrEngine, DirectoryTooLongForTheBufferIsAFailedOpen) {
  QVOcrEngine engine;
  for (const std::size_t length : {242U, 256U, 70000U}) {
    const std::string directory(length, 'd');
    const Start start(engine, directory);
    EXPECT_EQ(start.result, -1);
    EXPECT_EQ(start.printed, directory +
                                 "libQVEngine.so: dlopen () ERROR, Message(no directory text of at "
                                 "most 241 bytes).\n");
    EXPECT_EQ(engine._hinst, nullptr);
    EXPECT_EQ(filled_slots(engine), 0);
  }
}

TEST(QVOcrEngine, NullDirectoryIsAFailedOpen) {
  QVOcrEngine engine;
  testing::internal::CaptureStdout();
  EXPECT_EQ(engine.init_engine(nullptr), -1);
  EXPECT_EQ(
      testing::internal::GetCapturedStdout().rfind("(null)libQVEngine.so: dlopen () ERROR", 0), 0U);
}

TEST(QVOcrEngine, FailedOpenLeavesStaleSlotsAsTheyWere) {
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake_directory("fixed").c_str()), 0);
  engine.uninit_engine();
  const Start start(engine, "/nowhere/");
  EXPECT_EQ(start.result, -1);
  EXPECT_EQ(filled_slots(engine), 1);
  EXPECT_NE(engine._qv_get_result_json, nullptr);
}

TEST(QVOcrEngine, SecondStartWithoutAStopDoesNothing) {
  const ScriptedEngine fake;
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake.directory.c_str()), 0);
  void* const library = engine._hinst;
  EXPECT_EQ(engine.init_engine(fake_directory("fixed").c_str()), 0);
  EXPECT_EQ(engine._hinst, library);
  EXPECT_FALSE(is_mapped(fake_directory("fixed")));
  engine.uninit_engine();
  EXPECT_EQ(fake.calls.size(), 2U);
}

TEST(QVOcrEngine, StopClearsAllSlotsButTheOneForJson) {
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake_directory("fixed").c_str()), 0);
  engine.uninit_engine();
  EXPECT_EQ(engine._hinst, nullptr);
  EXPECT_FALSE(engine._load_succssed);
  EXPECT_EQ(filled_slots(engine), 1);
  EXPECT_NE(engine._qv_get_result_json, nullptr);
  EXPECT_FALSE(is_mapped(fake_directory("fixed")));
}

TEST(QVOcrEngine, StopOfANeverStartedEngineDoesNothing) {
  QVOcrEngine engine;
  engine.uninit_engine();
  EXPECT_EQ(engine._hinst, nullptr);
  EXPECT_EQ(filled_slots(engine), 0);
}

TEST(QVOcrEngine, StopSkipsAnEmptySlot) {
  const ScriptedEngine fake;
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake.directory.c_str()), 0);
  engine._qv_uninit_engine = nullptr;
  engine.uninit_engine();
  EXPECT_EQ(fake.calls.size(), 1U);
  EXPECT_FALSE(engine._load_succssed);
}

TEST(QVOcrEngine, DestructionLeavesTheEngineRunning) {
  const ScriptedEngine fake;
  void* library = nullptr;
  {
    QVOcrEngine engine;
    ASSERT_EQ(engine.init_engine(fake.directory.c_str()), 0);
    library = engine._hinst;
  }
  EXPECT_EQ(fake.calls.size(), 1U);
  dlclose(library);
}

TEST(QVOcrEngine, RefusedStartClosesTheLibraryAndYieldsMinus3) {
  QVOcrEngine engine;
  const Start start(engine, fake_directory("refusing"));
  EXPECT_EQ(start.result, -3);
  EXPECT_EQ(start.printed, "_qv_init_engine errcode: 7 \n");
  EXPECT_FALSE(is_mapped(fake_directory("refusing")));
  EXPECT_NE(engine._hinst, nullptr) << "the handle keeps its stale value";
  EXPECT_EQ(filled_slots(engine), 0);
  EXPECT_FALSE(engine._load_succssed);
  void* const stale = engine._hinst;
  engine.uninit_engine();
  EXPECT_EQ(engine._hinst, stale) << "a stop after a failed start does nothing";
}

TEST(QVOcrEngine, StartAfterARefusedStartRunsTheWholeSequence) {
  const ScriptedEngine fake;
  fake.script->init_code = 3;
  QVOcrEngine engine;
  EXPECT_EQ(Start(engine, fake.directory).result, -3);
  fake.script->init_code = 0;
  EXPECT_EQ(Start(engine, fake.directory).result, 0);
  engine.uninit_engine();
  EXPECT_EQ(fake.calls, (std::vector<std::string>{"init " + fake.directory,
                                                  "init " + fake.directory, "uninit"}));
}

struct MissingEntry {
  const char* symbol;
  const char* message;
};

class QVOcrEngineMissingEntry : public testing::TestWithParam<MissingEntry> {};

TEST_P(QVOcrEngineMissingEntry, IsNamedAndYieldsMinus2) {
  const std::string directory = fake_directory(std::string("lacks_") + GetParam().symbol);
  QVOcrEngine engine;
  const Start start(engine, directory);
  EXPECT_EQ(start.result, -2);
  // The loader remembers a failed look-up only until the next one succeeds.
  const bool last = std::strcmp(GetParam().symbol, "qv_get_result_json") == 0;
  const std::string head = std::string(GetParam().message) + "\n" +
                           (last ? "get function adress ERROR, Message(" + directory
                                 : "dlsym get interface api address is null ERROR, Message((null)");
  EXPECT_EQ(start.printed.rfind(head, 0), 0U) << start.printed;
  EXPECT_EQ(std::count(start.printed.begin(), start.printed.end(), '\n'), 2);
  EXPECT_EQ(start.printed.substr(start.printed.size() - 3), ").\n");
  EXPECT_FALSE(is_mapped(directory));
  EXPECT_NE(engine._hinst, nullptr) << "the handle keeps its stale value";
  EXPECT_FALSE(engine._load_succssed);
  EXPECT_EQ(filled_slots(engine), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Each, QVOcrEngineMissingEntry,
    testing::Values(MissingEntry{"qv_init_engine", "qv_init_engine = NULL"},
                    MissingEntry{"qv_uninit_engine", "qv_uninit_engine = NULL"},
                    MissingEntry{"qv_load_image_file", "qv_load_image_file = NULL"},
                    MissingEntry{"qv_set_image_data", "qv_set_image_data = NULL"},
                    MissingEntry{"qv_recognize", "qv_recognize = NULL"},
                    MissingEntry{"qv_get_lines_num", "qv_get_lines_num == NULL"},
                    MissingEntry{"qv_get_line_info_ex", "qv_get_line_info_ex = NULL"},
                    MissingEntry{"qv_save_ocrfile", "_qv_save_ocrfile = NULL"},
                    MissingEntry{"qv_get_result_ex", "_qv_get_result_ex = NULL"},
                    MissingEntry{"qv_get_result_unicode", "_qv_get_result_unicode = NULL"},
                    MissingEntry{"qv_get_result_json", "_qv_get_result_json = NULL"}),
    [](const auto& entry) { return entry.param.symbol; });

TEST(QVOcrEngine, WithoutAnEngineEachCallGivesItsFixedValue) {
  QVOcrEngine engine;
  testing::internal::CaptureStdout();
  EXPECT_EQ(engine.load_image_file("a.png", 0), -1);
  EXPECT_EQ(engine.set_image_data(nullptr, 1, 1, 24, 4, 1), -1);
  EXPECT_EQ(engine.recognize(), -1);
  EXPECT_TRUE(engine.save_ocrfile("a.txt"));
  EXPECT_EQ(engine.get_lines_num(), 0);
  int count = 42;
  EXPECT_FALSE(engine.get_line_info_ex(0, nullptr, count));
  EXPECT_EQ(count, 42);
  EXPECT_EQ(engine.get_result_ex(), nullptr);
  EXPECT_EQ(engine.get_result_unicode(), nullptr);
  engine.set_auto_rotate(true);
  EXPECT_EQ(engine.get_image_direction(), 0);
  char buffer[4] = {'a', 'b', 'c', 'd'};
  EXPECT_EQ(engine.get_result_json(buffer, 4), 3);
  EXPECT_EQ(std::string(buffer, 4), "abcd");
  EXPECT_FALSE(engine.save_form_grid("a.grid"));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(QVOcrEngine, StartedEngineHasNoDirectionNoAutoRotateAndNoFormGrid) {
  const ScriptedEngine fake;
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake.directory.c_str()), 0);
  const std::size_t calls = fake.calls.size();
  EXPECT_EQ(engine.get_image_direction(), 0);
  engine.set_auto_rotate(true);
  EXPECT_FALSE(engine.save_form_grid("a.grid"));
  EXPECT_EQ(fake.calls.size(), calls);
  engine.uninit_engine();
}

TEST(QVOcrEngine, ForwardersPassArgumentsAndResultsUnchanged) {
  ScriptedEngine fake;
  QVOcrEngine engine;
  ASSERT_EQ(engine.init_engine(fake.directory.c_str()), 0);
  fake.calls.clear();
  fake.script->load_code = 11;
  fake.script->set_code = 12;
  fake.script->pages = {fake_page("ab", "[1]")};
  fake.script->pages[0].code = 13;
  EXPECT_EQ(engine.load_image_file("a.png", 5), 11);
  const unsigned char raster[8] = {1, 2, 3, 0, 4, 5, 6, 0};
  EXPECT_EQ(engine.set_image_data(raster, 1, 2, 24, 4, 9), 12);
  EXPECT_EQ(engine.recognize(), 13);
  EXPECT_EQ(engine.get_lines_num(), 1);
  OCR_CHAR records[2] = {};
  int count = 2;
  EXPECT_TRUE(engine.get_line_info_ex(0, records, count));
  EXPECT_EQ(count, 2);
  EXPECT_EQ(records[1].code, 'b');
  EXPECT_FALSE(engine.save_ocrfile("a.txt"));
  EXPECT_STREQ(engine.get_result_ex(), "ab");
  EXPECT_STREQ(engine.get_result_unicode(), L"ab");
  char json[8] = {};
  EXPECT_EQ(engine.get_result_json(json, 8), 0);
  EXPECT_STREQ(json, "[1]");
  engine.uninit_engine();
  const FakeRaster& seen = fake.script->rasters.at(0);
  EXPECT_EQ(seen.bytes, std::vector<unsigned char>(raster, raster + 8));
  EXPECT_EQ(seen.imgpro, 9);
  EXPECT_EQ(fake.calls, (std::vector<std::string>{"load a.png 5", "set", "recognize", "lines_num",
                                                  "line 0 records with 2", "save a.txt", "text",
                                                  "wide", "json 8", "uninit"}));
}

TEST(QVOcrEngine, ForwardersTestOnlyTheirOwnSlot) {
  QVOcrEngine engine;
  engine._qv_recognize = [] { return 5; };
  EXPECT_EQ(engine.recognize(), 5) << "although no engine is started";
  EXPECT_EQ(engine.get_lines_num(), 0);
}

TEST(QVOcrEngine, OcrCharRecordsLie40BytesApart) {
  OCR_CHAR records[2];
  const auto* const bytes = reinterpret_cast<const char*>(records);
  EXPECT_EQ(reinterpret_cast<const char*>(&records[1]) - bytes, 40);
  EXPECT_EQ(reinterpret_cast<const char*>(&records[0].code) - bytes, 32);
  EXPECT_EQ(sizeof records[0].code, 2U);
}

}  // namespace
