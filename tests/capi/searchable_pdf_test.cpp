// SPDX-License-Identifier: Apache-2.0
// Searchable PDFs through the shared library, as a host in C would make them: whatever becomes of
// the output, the text is there, and what is thrown passes through frames of C.
#include <sys/resource.h>
#include <csignal>

#include "api/zelkAPI.h"
#include "support/Documents.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"
#include "writers/pdflib.h"

extern "C" int recognize_from_c(int* begun);

namespace {

class SearchablePdf : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(zelk_init_engine(fake.directory.c_str()), 0);
    write_tiff(folder.path("two.tif"), 40, 30, 2);
    fake.script->pages = {fake_page("one"), fake_page("two"), fake_page("three"),
                          fake_page("four")};
    std::filesystem::create_directory(folder.path("out"));
  }
  void TearDown() override {
    zelk_clear_images();
    zelk_free_image_document();
    zelk_uninit_engine();
  }

  void load(const std::string& name) {
    ASSERT_GT(zelk_load_image_document(folder.path(name).c_str(), 200), 0);
    ASSERT_TRUE(zelk_set_double_document_filename(output.c_str()));
  }
  // The message of the error that recognition ends with.
  static std::string error_of_recognition() {
    int begun = 0;
    try {
      recognize_from_c(&begun);
    } catch (const PDFlib::Exception& error) {
      EXPECT_EQ(begun, 1);
      return error.get_errmsg();
    }
    return "no error";
  }
  std::size_t files_beside_output() const {
    const auto entries = std::filesystem::directory_iterator(folder.path("out"));
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
  }

  ScriptedEngine fake;
  ScratchFolder folder;
  const std::string output = folder.path("out/a.pdf");
};

TEST_F(SearchablePdf, RecognitionWritesItBesideTheText) {
  load("two.tif");
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "onetwo");
  EXPECT_EQ(read_file(output).substr(0, 5), "%PDF-");
  EXPECT_EQ(files_beside_output(), 1U) << "no temporary file is left";
}

TEST_F(SearchablePdf, SecondRecognitionWritesItAgainWithTheSameBytes) {
  load("two.tif");
  fake.script->pages = {fake_page("one"), fake_page("two"), fake_page("one"), fake_page("two")};
  EXPECT_EQ(zelk_recognize(), 0);
  const std::string first = read_file(output);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_EQ(read_file(output), first);
}

TEST_F(SearchablePdf, NextDocumentIsWrittenOverTheOneBefore) {
  write_tiff(folder.path("one.tif"), 40, 30, 1);
  {
    const LeaksByContract replaced_document;
    load("two.tif");
  }
  EXPECT_EQ(zelk_recognize(), 0);
  ASSERT_EQ(zelk_load_image_document(folder.path("one.tif").c_str(), 200), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  zelk_free_image_document();
  EXPECT_EQ(zelk_load_image_document(output.c_str(), 72), 1);
}

TEST_F(SearchablePdf, NameEndsWithTheDocumentTheListOrAnotherName) {
  const std::vector<void (*)()> endings = {
      [] { zelk_free_image_document(); }, [] { zelk_clear_images(); },
      [] { EXPECT_FALSE(zelk_set_double_document_filename("other.txt")); }};
  for (const auto& end_name : endings) {
    {
      const LeaksByContract replaced_document;
      load("two.tif");
    }
    end_name();
    ASSERT_EQ(zelk_load_image_document(folder.path("two.tif").c_str(), 200), 2);
    EXPECT_EQ(zelk_recognize(), 0);
    EXPECT_EQ(files_beside_output(), 0U);
    zelk_free_image_document();
  }
}

TEST_F(SearchablePdf, PagesOfAListTakeTheResolutionOfTheLastLoad) {
  write_image(folder.path("a.png"), 100, 50);
  const std::vector<std::pair<int, int>> widths = {{100, 72}, {200, 36}, {0, 100}};
  for (const auto& [resolution, points] : widths) {
    ASSERT_EQ(zelk_load_image_document(folder.path("two.tif").c_str(), resolution), 2);
    zelk_free_image_document();
    zelk_add_image(folder.path("a.png").c_str());
    ASSERT_TRUE(zelk_set_double_document_filename(output.c_str()));
    EXPECT_EQ(zelk_recognize(), 0);
    zelk_clear_images();
    fake.script->rasters.clear();
    ASSERT_EQ(zelk_load_image_document(output.c_str(), 72), 1);
    EXPECT_EQ(zelk_recognize(), 0);
    EXPECT_NEAR(fake.script->rasters.at(0).width, points, 1) << resolution;
    zelk_free_image_document();
  }
}

TEST_F(SearchablePdf, OutputFolderThatDoesNotExistCostsOnlyThePdf) {
  load("two.tif");
  std::filesystem::remove(folder.path("out"));
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "onetwo");
}

TEST_F(SearchablePdf, ListWithoutAReadableFileLeavesNoFile) {
  load("two.tif");
  ASSERT_TRUE(zelk_add_image("/nowhere/a.png"));
  EXPECT_EQ(zelk_recognize(), 0);
  zelk_free_image_document();
  EXPECT_EQ(files_beside_output(), 0U);
}

TEST_F(SearchablePdf, ListAfterAnUnfinishedOneIsWrittenWhole) {
  load("two.tif");
  ASSERT_TRUE(zelk_add_image("/nowhere/a.png"));
  EXPECT_EQ(zelk_recognize(), 0) << "leaves its document open";
  zelk_clear_images();
  ASSERT_TRUE(zelk_set_double_document_filename(output.c_str()));
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_EQ(read_file(output).substr(0, 5), "%PDF-");
  EXPECT_EQ(files_beside_output(), 1U);
}

TEST_F(SearchablePdf, PageTooHighForAJpegIsLeftOutAndTheRestSurvives) {
  // Such a page stays open in the library, which drops it when the next one begins or the document
  // ends.
  FIMULTIBITMAP* const tiff =
      FreeImage_OpenMultiBitmap(FIF_TIFF, folder.path("high.tif").c_str(), TRUE, FALSE, TRUE, 0);
  for (const unsigned height : {20U, 70000U, 30U}) {
    FIBITMAP* const page = make_bitmap(3, height);
    FreeImage_AppendPage(tiff, page);
    FreeImage_Unload(page);
  }
  ASSERT_TRUE(FreeImage_CloseMultiBitmap(tiff, TIFF_NONE));
  load("high.tif");
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "onetwothree");
  zelk_free_image_document();
  EXPECT_EQ(zelk_load_image_document(output.c_str(), 72), 2);
}

TEST_F(SearchablePdf, FullDiskIsAnErrorThatNamesTheFileAndLeavesTheOldOne) {
  write_file(output, "old");
  load("two.tif");
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit usual{};
  getrlimit(RLIMIT_FSIZE, &usual);
  const rlimit full{100, usual.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  const std::string message = error_of_recognition();
  setrlimit(RLIMIT_FSIZE, &usual);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_NE(message.find(output), std::string::npos) << message;
  zelk_free_image_document();
  EXPECT_EQ(read_file(output), "old");
  EXPECT_EQ(files_beside_output(), 1U);
}

TEST_F(SearchablePdf, FolderThatVanishesMeanwhileIsAnErrorAndTheNextDocumentIsWritten) {
  load("two.tif");
  fake.script->lines_num = [this] {
    std::filesystem::remove_all(folder.path("out"));
    return 0;
  };
  const std::string message = error_of_recognition();
  EXPECT_EQ(message, "cannot write '" + output + "': No such file or directory");
  EXPECT_STREQ(zelk_get_ocr_string(), "onetwo") << "the text is not lost";
  fake.script->lines_num = nullptr;
  std::filesystem::create_directory(folder.path("out"));
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "threefour");
  zelk_free_image_document();
  EXPECT_EQ(zelk_load_image_document(output.c_str(), 72), 2);
  EXPECT_EQ(files_beside_output(), 1U);
}

}  // namespace
