// SPDX-License-Identifier: Apache-2.0
// Engine start and stop, bad arguments and odd states, through the shared library.
#include <climits>

#include "api/zelkAPI.h"
#include "support/Documents.h"
#include "support/ScriptedEngine.h"

namespace {

// Leaves the library without engine, document and list, whatever a test did.
class CInterface : public testing::Test {
 protected:
  void TearDown() override {
    zelk_clear_images();
    zelk_free_image_document();
    zelk_uninit_engine();
  }
};

TEST_F(CInterface, StartFromADirectoryWithoutAnEngineFailsAndTheNextOneSucceeds) {
  const ScratchFolder folder;
  testing::internal::CaptureStdout();
  EXPECT_EQ(zelk_init_engine(folder.path("").c_str()), 1);
  EXPECT_NE(testing::internal::GetCapturedStdout().find("dlopen () ERROR"), std::string::npos);
  EXPECT_EQ(zelk_init_engine(fake_directory("fixed").c_str()), 0);
}

TEST_F(CInterface, StopBeforeAnyStartDoesNothing) {
  zelk_uninit_engine();
  zelk_uninit_engine();
}

TEST_F(CInterface, DirectoryTooLongForTheBufferIsAFailedStart) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(zelk_init_engine(std::string(100000, 'd').c_str()), 1);
  testing::internal::GetCapturedStdout();
}

TEST_F(CInterface, NullArgumentsGiveTheFailureValue) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(zelk_init_engine(nullptr), 1);
  EXPECT_EQ(zelk_init_engine_unicode(nullptr), 1);
  testing::internal::GetCapturedStdout();
  EXPECT_EQ(zelk_load_image_document(nullptr, 200), 0);
  EXPECT_EQ(zelk_load_image_document_unicode(nullptr, 200), 0);
  EXPECT_FALSE(zelk_set_double_document_filename(nullptr));
  EXPECT_FALSE(zelk_set_double_document_filename_unicode(nullptr));
  EXPECT_TRUE(zelk_add_image(nullptr));
  EXPECT_FALSE(zelk_add_image_unicode(nullptr));
  EXPECT_EQ(zelk_save_form_grid(nullptr, nullptr), 1);
  EXPECT_EQ(zelk_save_form_grid_unicode(nullptr, nullptr), -1);
  EXPECT_EQ(zelk_recognize(), 0) << "the null entry of the list is skipped";
}

TEST_F(CInterface, JsonIndexOutOfRangeIsEmptyTextNeverNull) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 4, 4);
  ASSERT_EQ(zelk_init_engine(fake_directory("fixed").c_str()), 0);
  ASSERT_EQ(zelk_load_image_document(folder.path("a.png").c_str(), 200), 1);
  ASSERT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_json_string(0), "{}");
  for (const int page : {-1, 1, INT_MIN, INT_MAX}) {
    ASSERT_NE(zelk_get_ocr_json_string(page), nullptr);
    EXPECT_STREQ(zelk_get_ocr_json_string(page), "");
    ASSERT_NE(zelk_get_ocr_json_string_unicode(page), nullptr);
    EXPECT_STREQ(zelk_get_ocr_json_string_unicode(page), L"");
  }
}

TEST_F(CInterface, RecognitionBeforeAnEngineIsStartedGivesEmptyPages) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 4, 4);
  ASSERT_EQ(zelk_load_image_document(folder.path("a.png").c_str(), 200), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "");
  EXPECT_STREQ(zelk_get_ocr_json_string(0), "");
}

TEST_F(CInterface, RecognitionAfterTheEngineWasStoppedGivesEmptyPages) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 4, 4);
  ASSERT_EQ(zelk_init_engine(fake_directory("fixed").c_str()), 0);
  zelk_uninit_engine();
  ASSERT_EQ(zelk_load_image_document(folder.path("a.png").c_str(), 200), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "");
}

TEST_F(CInterface, RecognitionAfterTheDocumentWasFreedIs2) {
  const ScratchFolder folder;
  write_tiff(folder.path("a.tif"), 4, 4, 2);
  ASSERT_EQ(zelk_init_engine(fake_directory("fixed").c_str()), 0);
  ASSERT_EQ(zelk_load_image_document(folder.path("a.tif").c_str(), 200), 2);
  EXPECT_EQ(zelk_recognize(), 0);
  zelk_free_image_document();
  EXPECT_STREQ(zelk_get_ocr_string(), "fixed\nfixed\n") << "results outlive the document";
  EXPECT_EQ(zelk_recognize(), 2);
  EXPECT_STREQ(zelk_get_ocr_string(), "");
}

TEST_F(CInterface, FormGridIs1WithoutAnEngineAnd2WithOne) {
  ScriptedEngine fake;
  EXPECT_EQ(zelk_save_form_grid("a.png", "a.grid"), 1);
  ASSERT_EQ(zelk_init_engine(fake.directory.c_str()), 0);
  EXPECT_EQ(zelk_save_form_grid("a.png", "a.grid"), 2);
  fake.script->load_code = 1;
  EXPECT_EQ(zelk_save_form_grid("a.png", "a.grid"), 1);
  zelk_uninit_engine();
}

TEST_F(CInterface, NullPathOfAFormGridIsTheEnginesToAnswer) {
  ScriptedEngine fake;
  ASSERT_EQ(zelk_init_engine(fake.directory.c_str()), 0);
  fake.script->load_code = 1;
  fake.calls.clear();
  EXPECT_EQ(zelk_save_form_grid(nullptr, nullptr), 1);
  EXPECT_EQ(fake.calls, std::vector<std::string>{"load null 0"});
  zelk_uninit_engine();
}

TEST_F(CInterface, NoFunctionPrintsWhileAllIsWell) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 4, 4);
  testing::internal::CaptureStdout();
  ASSERT_EQ(zelk_init_engine(fake_directory("fixed").c_str()), 0);
  ASSERT_EQ(zelk_load_image_document(folder.path("a.png").c_str(), 200), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  zelk_free_image_document();
  zelk_uninit_engine();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
