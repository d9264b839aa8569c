// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>

#include "process/MainProcess.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"

namespace {

TEST(MainProcess, StartsWithNothingLoaded) {
  const ofd::MainProcess process{};
  EXPECT_EQ(process._reader, nullptr);
  EXPECT_EQ(process._writer, nullptr);
  EXPECT_EQ(process._pdf_resolution, 200);
  EXPECT_EQ(process._page_num, 0);
  EXPECT_EQ(process._sys_path, "");
  EXPECT_TRUE(process._array_images.empty());
}

TEST(MainProcess, FailedStartIs1AndKeepsThePath) {
  ofd::MainProcess process{};
  testing::internal::CaptureStdout();
  for (const std::string& directory :
       {std::string("/nowhere/"), fake_directory("lacks_qv_recognize"), fake_directory("refusing"),
        std::string("/elsewhere/")}) {
    EXPECT_EQ(process.init_engine(directory.c_str()), 1) << directory;
    EXPECT_EQ(process._sys_path, directory);
    EXPECT_EQ(process._log_file, directory + "pdf_log.txt");
  }
  EXPECT_NE(testing::internal::GetCapturedStdout(), "");
}

TEST(MainProcess, LogFileNameIsComputedAndNoFileMade) {
  const ScratchFolder folder;
  ofd::MainProcess process{};
  testing::internal::CaptureStdout();
  process.init_engine("/opt/lib/");
  EXPECT_EQ(process._log_file, "/opt/lib/pdf_log.txt");
  process.init_engine("/opt/lib");
  EXPECT_EQ(process._log_file, "/opt/libpdf_log.txt");
  process.init_engine(folder.path("").c_str());
  testing::internal::GetCapturedStdout();
  EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

TEST(MainProcess, NullDirectoryIsAFailedStart) {
  ofd::MainProcess process{};
  testing::internal::CaptureStdout();
  EXPECT_EQ(process.init_engine(nullptr), 1);
  testing::internal::GetCapturedStdout();
}

TEST(MainProcess, SecondStartStopsTheFirstEngineBeforeTheNewOneStarts) {
  ScriptedEngine first("scripted");
  ScriptedEngine second("scripted_too");
  second.script->calls = &first.calls;
  ofd::MainProcess process{};
  ASSERT_EQ(process.init_engine(first.directory.c_str()), 0);
  ASSERT_EQ(process.init_engine(second.directory.c_str()), 0);
  process.uninit_engine();
  EXPECT_EQ(first.calls, (std::vector<std::string>{"init " + first.directory, "uninit",
                                                   "init " + second.directory, "uninit"}));
}

TEST(MainProcess, RestartAfterAFailedStartWorks) {
  const ScriptedEngine fake;
  ofd::MainProcess process{};
  testing::internal::CaptureStdout();
  EXPECT_EQ(process.init_engine("/nowhere/"), 1);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(process.init_engine(fake.directory.c_str()), 0);
  process.uninit_engine();
}

TEST(MainProcess, StoppingTheEngineLeavesDocumentWriterAndResults) {
  const ScriptedEngine fake;
  ReaderRecord reader;
  WriterRecord writer;
  ofd::MainProcess process{};
  process._reader = new StubReader(reader);
  process._writer = new StubWriter(writer);
  process._ocr_string = "text";
  process.add_image("a.png");
  ASSERT_EQ(process.init_engine(fake.directory.c_str()), 0);
  process.uninit_engine();
  EXPECT_NE(process._reader, nullptr);
  EXPECT_NE(process._writer, nullptr);
  EXPECT_EQ(process._array_images.size(), 1U);
  EXPECT_STREQ(process.get_ocr_string(), "text");
  EXPECT_EQ(reader.freed, 0);
}

TEST(MainProcess, DestructionNeitherClosesTheDocumentNorFreesTheImageNorStopsTheEngine) {
  const ScriptedEngine fake;
  ReaderRecord reader;
  WriterRecord writer;
  void* library = nullptr;
  {
    ofd::MainProcess process{};
    ASSERT_EQ(process.init_engine(fake.directory.c_str()), 0);
    library = process._engine._hinst;
    process._reader = new StubReader(reader);
    process._writer = new StubWriter(writer);
  }
  EXPECT_EQ(reader.freed, 0);
  EXPECT_EQ(writer.calls, std::vector<std::string>{"delete"});
  EXPECT_EQ(fake.calls.size(), 1U);
  dlclose(library);
}

}  // namespace
