// SPDX-License-Identifier: Apache-2.0
#include "process/MainProcess.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"

namespace {

class ImageList : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(process.init_engine(fake.directory.c_str()), 0);
    for (const char* name : {"a.png", "b.png", "c.png"}) {
      write_image(folder.path(name), 6, static_cast<unsigned>(name[0] - 'a' + 1));
    }
    fake.script->pages = {fake_page("1", "{1}"), fake_page("2", "{2}"), fake_page("3", "{3}")};
  }
  void TearDown() override { process.uninit_engine(); }

  void add(const std::string& name) { EXPECT_TRUE(process.add_image(folder.path(name).c_str())); }
  void name_output() {
    process._writer = new StubWriter(writer);
    process._double_document_file_name = "out.pdf";
  }

  ScriptedEngine fake;
  ScratchFolder folder;
  WriterRecord writer;
  ofd::MainProcess process{};
};

TEST_F(ImageList, FileThatDoesNotExistIsSkipped) {
  add("a.png");
  add("missing.png");
  add("c.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "12");
  EXPECT_EQ(process._ocr_array_jsonbuffer, (std::vector<std::string>{"{1}", "{2}"}));
  EXPECT_EQ(fake.script->rasters.at(0).height, 1);
  EXPECT_EQ(fake.script->rasters.at(1).height, 3);
}

TEST_F(ImageList, PdfInTheListGivesNothing) {
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  add("a.pdf");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "");
  EXPECT_TRUE(process._ocr_array_jsonbuffer.empty());
}

TEST_F(ImageList, TiffInTheListGivesItsFirstPage) {
  write_tiff(folder.path("three.tif"), 4, 9, 3);
  add("three.tif");
  EXPECT_EQ(process.recognize(), 0);
  ASSERT_EQ(fake.script->rasters.size(), 1U);
  EXPECT_EQ(fake.script->rasters[0].bytes[2], 1) << "colour of the first page";
}

TEST_F(ImageList, ExtensionDoesNotMatter) {
  std::filesystem::rename(folder.path("a.png"), folder.path("scan"));
  add("scan");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "1");
}

TEST_F(ImageList, SamePathTwiceIsRecognisedTwice) {
  add("a.png");
  add("a.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "12");
}

TEST_F(ImageList, ListCanBeRecognisedAgain) {
  add("a.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "2");
}

TEST_F(ImageList, AnythingIsAccepted) {
  EXPECT_TRUE(process.add_image(""));
  EXPECT_TRUE(process.add_image("/nowhere"));
  EXPECT_TRUE(process.add_image(nullptr));
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_TRUE(process._ocr_array_jsonbuffer.empty());
}

TEST_F(ImageList, EmptyListIsNothingToRecognise) {
  process._ocr_string = "old";
  EXPECT_EQ(process.recognize_images(), 2);
  EXPECT_STREQ(process.get_ocr_string(), "");
}

TEST_F(ImageList, ListTakesPrecedenceOverALoadedDocument) {
  ASSERT_EQ(process.load_image_document(folder.path("b.png").c_str(), 200), 1);
  add("c.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(fake.script->rasters.at(0).height, 3);
  process.clear_images();
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(fake.script->rasters.at(1).height, 2);
}

TEST_F(ImageList, LoadingADocumentEmptiesTheList) {
  add("a.png");
  ASSERT_EQ(process.load_image_document(folder.path("b.png").c_str(), 200), 1);
  EXPECT_EQ(process.recognize(), 0);
  ASSERT_EQ(fake.script->rasters.size(), 1U);
  EXPECT_EQ(fake.script->rasters[0].height, 2);
}

TEST_F(ImageList, PagesGoToTheWriterWhichIsThenClosed) {
  name_output();
  add("a.png");
  add("b.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(writer.calls, (std::vector<std::string>{"create out.pdf", "page", "page", "close"}));
}

TEST_F(ImageList, DocumentIsCreatedButNotClosedWhenAllFilesFail) {
  name_output();
  add("missing.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(writer.calls, std::vector<std::string>{"create out.pdf"});
}

TEST_F(ImageList, FailedCreationIsNotClosedEither) {
  name_output();
  writer.create_result = -2;
  add("a.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(writer.calls, std::vector<std::string>{"create out.pdf"});
  EXPECT_STREQ(process.get_ocr_string(), "1");
}

TEST_F(ImageList, ClearingTheListKeepsTheWriterButForgetsItsName) {
  name_output();
  process.clear_images();
  EXPECT_NE(process._writer, nullptr);
  EXPECT_EQ(process._double_document_file_name, "");
  add("a.png");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_TRUE(writer.calls.empty());
}

TEST_F(ImageList, PagesGetTheResolutionOfTheLastLoadThatFoundAReader) {
  name_output();
  add("a.png");
  process.recognize();
  EXPECT_EQ(writer.dots_per_meter.at(0), 7874U) << "200 dots per inch before any load";
  {
    // A picture that is loaded and never recognised.
    const LeaksByContract picture;
    ASSERT_EQ(process.load_image_document(folder.path("b.png").c_str(), 300), 1);
  }
  ASSERT_EQ(process.load_image_document("/nowhere/a.gif", 100), 0);
  add("a.png");
  process.recognize();
  EXPECT_EQ(writer.dots_per_meter.at(0), 11811U);
  ASSERT_EQ(process.load_image_document("/nowhere/a.png", 100), 0);
  add("a.png");
  process.recognize();
  EXPECT_EQ(writer.dots_per_meter.at(0), 3937U) << "its reader was found, its file was not";
}

TEST_F(ImageList, ExceptionOfTheWriterPassesToTheHost) {
  name_output();
  writer.throws_on_page = true;
  add("a.png");
  {
    // The bitmap of the page at which the writer throws.
    const LeaksByContract page_bitmap;
    EXPECT_THROW(process.recognize(), std::runtime_error);
  }
  EXPECT_STREQ(process.get_ocr_string(), "1");
}

}  // namespace
