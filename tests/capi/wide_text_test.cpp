// SPDX-License-Identifier: Apache-2.0
// The forms that take wide paths: two work, three answer with a fixed result.
#include "api/zelkAPI.h"
#include "support/Documents.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"

namespace {

class WideText : public testing::Test {
 protected:
  void TearDown() override {
    zelk_clear_images();
    zelk_free_image_document();
    zelk_uninit_engine();
  }
};

std::wstring widen(const std::string& ascii) {
  return std::wstring(ascii.begin(), ascii.end());
}

// What the engine's directory text was taken for, from the line that a failed start prints.
std::string directory_taken(const std::wstring& directory) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(zelk_init_engine_unicode(directory.c_str()), 1);
  const std::string printed = testing::internal::GetCapturedStdout();
  return printed.substr(0, printed.find("libQVEngine.so: dlopen"));
}

TEST_F(WideText, EngineStartsFromAWidePath) {
  const ScriptedEngine fake;
  EXPECT_EQ(zelk_init_engine_unicode(widen(fake.directory).c_str()), 0);
  zelk_uninit_engine();
  EXPECT_EQ(fake.calls.at(0), "init " + fake.directory);
}

TEST_F(WideText, PathOfTheBasicMultilingualPlaneArrivesAsUtf8) {
  EXPECT_EQ(directory_taken(L"/扫描/é/"), "/扫描/é/");
}

TEST_F(WideText, DirectoryThatFillsTheBufferIsReadAs256BytesAndNoFurther) {
  EXPECT_EQ(directory_taken(std::wstring(256, L'd')), std::string(256, 'd'));
  EXPECT_EQ(directory_taken(std::wstring(1000, L'd')), std::string(256, 'd'));
}

TEST_F(WideText, LongDirectoryIsCutAtAWholeCharacter) {
  // 85 characters of three bytes are 255 bytes; the next would not fit.
  std::string expected;
  for (int i = 0; i < 85; ++i) expected += "中";
  EXPECT_EQ(directory_taken(std::wstring(90, L'中')), expected);
}

TEST_F(WideText, DocumentLoadsFromAWidePath) {
  const ScratchFolder folder;
  write_image(folder.path("扫描.png"), 5, 4);
  const std::wstring path = widen(folder.path("")) + L"扫描.png";
  // A picture that is loaded and never recognised.
  const LeaksByContract picture;
  EXPECT_EQ(zelk_load_image_document_unicode(path.c_str(), 200), 1);
}

TEST_F(WideText, DocumentPathIsCutAt256BytesAndTerminated) {
  // A path of exactly 256 bytes is loaded whole; one character more and its extension is cut.
  const ScratchFolder folder;
  const std::string start = folder.path("") + std::string(100, 'd');
  std::filesystem::create_directory(start);
  std::string path = start + "/";
  path += std::string(256 - 4 - path.size(), 'x') + ".png";
  ASSERT_EQ(path.size(), 256U);
  write_image(path, 5, 4);
  {
    // Pictures that are loaded and never recognised.
    const LeaksByContract pictures;
    EXPECT_EQ(zelk_load_image_document_unicode(widen(path).c_str(), 200), 1);
    EXPECT_EQ(zelk_load_image_document_unicode(widen(path + "x").c_str(), 200), 1)
        << "cut to the same";
  }
  const std::string longer = start + "/x" + path.substr(start.size() + 1);
  write_image(longer, 5, 4);
  EXPECT_EQ(zelk_load_image_document_unicode(widen(longer).c_str(), 200), 0) << "cut to .pn";
}

TEST_F(WideText, StubsAnswerFalseOrMinus1AndChangeNothing) {
  ScriptedEngine fake;
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 5, 4);
  ASSERT_EQ(zelk_init_engine(fake.directory.c_str()), 0);
  fake.script->pages = {fake_page("one"), fake_page("two")};
  ASSERT_TRUE(zelk_add_image(folder.path("a.png").c_str()));
  EXPECT_FALSE(zelk_add_image_unicode(widen(folder.path("a.png")).c_str()));
  EXPECT_FALSE(zelk_set_double_document_filename_unicode(widen(folder.path("a.pdf")).c_str()));
  EXPECT_EQ(zelk_save_form_grid_unicode(L"a.png", L"a.grid"), -1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "one") << "one image in the list";
  EXPECT_FALSE(std::filesystem::exists(folder.path("a.pdf")));
  zelk_uninit_engine();
}

TEST_F(WideText, StubsLeaveTheSearchablePdfThatWasNamed) {
  ScriptedEngine fake;
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 5, 4);
  ASSERT_EQ(zelk_init_engine(fake.directory.c_str()), 0);
  fake.script->pages = {fake_page("one")};
  ASSERT_TRUE(zelk_add_image(folder.path("a.png").c_str()));
  ASSERT_TRUE(zelk_set_double_document_filename(folder.path("a.pdf").c_str()));
  EXPECT_FALSE(zelk_set_double_document_filename_unicode(widen(folder.path("b.pdf")).c_str()));
  EXPECT_FALSE(zelk_set_double_document_filename_unicode(L"b.png"));
  EXPECT_FALSE(zelk_set_double_document_filename_unicode(nullptr));
  EXPECT_FALSE(zelk_add_image_unicode(nullptr));
  EXPECT_EQ(zelk_save_form_grid_unicode(nullptr, nullptr), -1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_EQ(read_file(folder.path("a.pdf")).substr(0, 5), "%PDF-");
  EXPECT_FALSE(std::filesystem::exists(folder.path("b.pdf")));
}

}  // namespace
