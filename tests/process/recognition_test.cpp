// SPDX-License-Identifier: Apache-2.0
// The page loop over a document: which pages reach engine and writer, and what is left as results.
#include <climits>

#include "process/MainProcess.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"

namespace {

// A started engine, a document of stand-in pages and, on demand, a stand-in writer.
class Recognition : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(process.init_engine(fake.directory.c_str()), 0); }
  void TearDown() override { process.uninit_engine(); }

  void load(int pages) {
    reader.pages = pages;
    process._reader = new StubReader(reader);
    process._page_num = pages;
  }
  void name_output() {
    process._writer = new StubWriter(writer);
    process._double_document_file_name = "out.pdf";
  }

  ScriptedEngine fake;
  ReaderRecord reader;
  WriterRecord writer;
  ofd::MainProcess process{};
};

TEST_F(Recognition, NothingLoadedIs2AndLeavesNoText) {
  process._ocr_string = "old";
  process._ocr_string_unicode = L"old";
  process._ocr_array_jsonbuffer = {"old"};
  process._json_buffer_unicode = L"old";
  EXPECT_EQ(process.recognize(), 2);
  EXPECT_STREQ(process.get_ocr_string(), "");
  EXPECT_STREQ(process.get_ocr_string_unicode(), L"");
  EXPECT_TRUE(process._ocr_array_jsonbuffer.empty());
  EXPECT_TRUE(process._json_buffer_unicode.empty());
}

TEST_F(Recognition, TextOfPagesFollowsWithoutASeparator) {
  load(2);
  fake.script->pages = {fake_page("first", "{1}"), fake_page("second", "{2}")};
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "firstsecond");
  EXPECT_STREQ(process.get_ocr_string_unicode(), L"firstsecond");
  EXPECT_EQ(process._ocr_array_jsonbuffer, (std::vector<std::string>{"{1}", "{2}"}));
}

TEST_F(Recognition, MissingPageLeavesNoEntry) {
  load(3);
  reader.missing = {1};
  fake.script->pages = {fake_page("one", "{1}"), fake_page("three", "{3}")};
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(reader.asked, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(process._ocr_array_jsonbuffer, (std::vector<std::string>{"{1}", "{3}"}));
  EXPECT_STREQ(process.get_ocr_json_buffer(1), "{3}");
  EXPECT_STREQ(process.get_ocr_string(), "onethree");
}

TEST_F(Recognition, EngineGetsTheTopRowFirstAt24Bits) {
  load(1);
  EXPECT_EQ(process.recognize(), 0);
  const FakeRaster& raster = fake.script->rasters.at(0);
  EXPECT_EQ(raster.width, 5);
  EXPECT_EQ(raster.height, 4);
  EXPECT_EQ(raster.bitcount, 24);
  EXPECT_EQ(raster.line_bytes, 16);
  EXPECT_EQ(raster.imgpro, 1);
  for (unsigned y = 0; y < 4; ++y) {
    for (unsigned x = 0; x < 5; ++x) {
      const unsigned char* const pixel = &raster.bytes[y * 16 + 3 * x];
      EXPECT_EQ(pixel[0], x);
      EXPECT_EQ(pixel[1], y);
      EXPECT_EQ(pixel[2], 0);
    }
    EXPECT_EQ(raster.bytes[y * 16 + 15], 0) << "padding";
  }
}

TEST_F(Recognition, SecondRecognitionReplacesTheResults) {
  load(1);
  fake.script->pages = {fake_page("first"), fake_page("again")};
  process.recognize();
  process.recognize();
  EXPECT_STREQ(process.get_ocr_string(), "again");
  EXPECT_EQ(process._ocr_array_jsonbuffer.size(), 1U);
}

TEST_F(Recognition, SingleImageRecognisedAgainWithoutALoadIsAMissingPage) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 6, 5);
  fake.script->pages = {fake_page("first"), fake_page("second")};
  ASSERT_EQ(process.load_image_document(folder.path("a.png").c_str(), 200), 1);
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "first");
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "");
  EXPECT_TRUE(process._ocr_array_jsonbuffer.empty());
  ASSERT_EQ(process.load_image_document(folder.path("a.png").c_str(), 200), 1);
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "second");
}

TEST_F(Recognition, AfterTheDocumentWasFreedThereIsNothingToRecogniseOrWrite) {
  load(2);
  name_output();
  process.free_image_document();
  ASSERT_EQ(process._page_num, 2);
  EXPECT_EQ(process.recognize(), 2);
  name_output();
  writer.calls.clear();
  EXPECT_EQ(process.recognize(), 2);
  EXPECT_TRUE(writer.calls.empty());
}

TEST_F(Recognition, NameWithoutAWriterIsNoOutput) {
  load(1);
  process._double_document_file_name = "out.pdf";
  fake.script->pages = {fake_page("text")};
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "text");
}

TEST_F(Recognition, WriterWithoutANameIsNotUsed) {
  load(1);
  name_output();
  process.clear_images();
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_NE(process._writer, nullptr);
  EXPECT_TRUE(writer.calls.empty());
}

TEST_F(Recognition, PagesGoToTheWriterWithTheirCharacters) {
  load(2);
  name_output();
  fake.script->pages = {fake_page("ab"), fake_page("c")};
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(writer.calls, (std::vector<std::string>{"create out.pdf", "page", "page", "close"}));
  ASSERT_EQ(writer.pages.size(), 2U);
  ASSERT_EQ(writer.pages[0].size(), 2U);
  EXPECT_EQ(writer.pages[0][1].code, 'b');
  EXPECT_EQ(writer.pages[1].size(), 1U);
  EXPECT_NE(process._writer, nullptr) << "the writer is kept";
}

TEST_F(Recognition, FailedCreationStopsPagesButNotTheClose) {
  load(2);
  name_output();
  writer.create_result = -2;
  fake.script->pages = {fake_page("a"), fake_page("b")};
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(writer.calls, (std::vector<std::string>{"create out.pdf", "close"}));
  EXPECT_STREQ(process.get_ocr_string(), "ab");
}

TEST_F(Recognition, DocumentWithoutAReadablePageIsClosedAllTheSame) {
  load(1);
  name_output();
  reader.missing = {0};
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_EQ(writer.calls, (std::vector<std::string>{"create out.pdf", "close"}));
}

TEST_F(Recognition, ExceptionOfTheWriterPassesToTheHostWithTheResultsSoFar) {
  load(2);
  name_output();
  writer.throws_on_page = true;
  fake.script->pages = {fake_page("first"), fake_page("second")};
  {
    // The bitmap of the page at which the writer throws.
    const LeaksByContract page_bitmap;
    EXPECT_THROW(process.recognize(), std::runtime_error);
  }
  EXPECT_STREQ(process.get_ocr_string(), "first");
  EXPECT_EQ(process._ocr_array_jsonbuffer.size(), 1U);
  EXPECT_EQ(writer.calls, (std::vector<std::string>{"create out.pdf", "page"}));
}

TEST_F(Recognition, RequestedResolutionIsStampedAsDotsPerMetre) {
  const struct {
    int dots_per_inch;
    unsigned dots_per_meter;
  } cases[] = {{200, 7874},
               {300, 11811},
               {72, 2834},
               {0, 0},
               {INT_MAX, static_cast<unsigned>(INT_MAX)},
               {-200, static_cast<unsigned>(-7874)},
               {INT_MIN, static_cast<unsigned>(INT_MIN)}};
  name_output();
  for (const auto& [dots_per_inch, dots_per_meter] : cases) {
    delete_reader(process._reader);
    load(1);
    process._pdf_resolution = dots_per_inch;
    EXPECT_EQ(process.recognize(), 0);
    EXPECT_EQ(writer.dots_per_meter, (std::vector<unsigned>{dots_per_meter, dots_per_meter}));
  }
}

class EightBitReader : public basereader {
 public:
  virtual ~EightBitReader() = default;
  FIBITMAP* get_cur_image(int) override { return FreeImage_Allocate(5, 4, 8, 0, 0, 0); }
};

TEST_F(Recognition, PageWhoseRasterCannotBeMadeIsMissing) {
  name_output();
  process._reader = new EightBitReader;
  process._page_num = 1;
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_TRUE(process._ocr_array_jsonbuffer.empty());
  EXPECT_EQ(writer.calls, (std::vector<std::string>{"create out.pdf", "close"}));
}

TEST_F(Recognition, WithoutAnEngineEveryPageHasAnEmptyEntry) {
  load(2);
  process.uninit_engine();
  EXPECT_EQ(process.recognize(), 0);
  EXPECT_STREQ(process.get_ocr_string(), "");
  EXPECT_EQ(process._ocr_array_jsonbuffer, (std::vector<std::string>{"", ""}));
}

}  // namespace
