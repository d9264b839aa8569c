// SPDX-License-Identifier: Apache-2.0
// The calls that the writer makes into the PDF library, against a stand-in library.
#include "writers/pdfwriter.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <new>

#include "fakes/fake_pdf_library.h"
#include "support/Documents.h"
#include "support/ScriptedEngine.h"

namespace {

bool refuses_blocks = false;

}  // namespace

// Stands before the C library's function wherever this program itself calls it.
extern "C" void* __real_calloc(std::size_t count, std::size_t size);
extern "C" void* __wrap_calloc(std::size_t count, std::size_t size) {
  return refuses_blocks ? nullptr : __real_calloc(count, size);
}

namespace {

using Calls = std::vector<std::string>;

constexpr std::int64_t kFarLeft = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kFarRight = std::numeric_limits<std::int64_t>::max();

class PdfWriter : public testing::Test {
 protected:
  PdfWriter() {
    library.number = 0;
    writer = std::make_unique<pdfwriter>();
    library.calls.clear();
  }
  ~PdfWriter() override {
    FreeImage_Unload(dib);
    library = FakePdfLibrary();
  }

  void page(unsigned width, unsigned height, unsigned dots_per_meter) {
    FreeImage_Unload(dib);
    dib = make_bitmap(width, height);
    FreeImage_SetDotsPerMeterX(dib, 3937);  // only the vertical resolution counts
    FreeImage_SetDotsPerMeterY(dib, dots_per_meter);
  }

  // What setfont and show_xy are called with for one character.
  Calls shown(const OCR_CHAR& character) {
    library.calls.clear();
    EXPECT_EQ(writer->add_page(dib, {character}, true), 0);
    return {library.calls.at(3), library.calls.at(4)};
  }

  FakePdfLibrary& library = fake_pdf_library();
  std::unique_ptr<pdfwriter> writer;
  FIBITMAP* dib = make_bitmap(8, 6);
};

TEST_F(PdfWriter, DocumentStartsWithTheHostEncoding) {
  EXPECT_EQ(writer->create_document("out.pdf"), 0);
  EXPECT_EQ(library.calls, (Calls{"set_parameter(key='hypertextencoding', value='host')",
                                  "begin_document(filename='out.pdf', len=0, optlist='')"}));
  EXPECT_EQ(writer->_document_filename, "");
}

TEST_F(PdfWriter, NullNameIsMinus1AndCallsNothing) {
  EXPECT_EQ(writer->create_document(nullptr), -1);
  EXPECT_TRUE(library.calls.empty());
}

TEST_F(PdfWriter, OutputThatCannotBeOpenedIsMinus2) {
  library.numbers["begin_document"] = -1;
  EXPECT_EQ(writer->creat_pdf_file("out.pdf"), -1);
  EXPECT_EQ(writer->create_document("out.pdf"), -2);
  library.numbers["begin_document"] = 5;
  EXPECT_EQ(writer->create_document("out.pdf"), 0) << "only -1 is a failure";
}

TEST_F(PdfWriter, PageDrawsTextFirstAndTheImageOverIt) {
  page(8, 6, 2835);  // 72 dots per inch
  EXPECT_EQ(writer->add_page(dib, {ocr_char(u'a', 1, 0, 2, 4), ocr_char(u'中', 3, 1, 6, 4)}, true),
            0);
  ASSERT_EQ(library.calls.size(), 11U);
  const Calls text(library.calls.begin(), library.calls.begin() + 7);
  EXPECT_EQ(text,
            (Calls{"load_font(fontname='STSong-Light', len=0, encoding='GB-EUC-H', optlist='')",
                   "begin_page_ext(width=0, height=0, optlist='')",
                   "setcolor(fstype='fill', colorspace='rgb', c1=0, c2=0, c3=0, c4=0)",
                   "setfont(font=0, fontsize=4)", "show_xy2(text='a', len=1, x=1, y=2)",
                   "setfont(font=0, fontsize=3)", "show_xy2(text='\xD6\xD0', len=2, x=3, y=2)"}));
  EXPECT_EQ(
      library.calls[7].rfind("open_image(imagetype='jpeg', source='memory', data='\xFF\xD8", 0),
      0U);
  EXPECT_NE(library.calls[7].find(", width=8, height=6, components=3, bpc=8, params='')"),
            std::string::npos);
  const Calls end(library.calls.begin() + 8, library.calls.end());
  EXPECT_EQ(end, (Calls{"fit_image(image=0, x=0, y=0, optlist='adjustpage')",
                        "close_image(image=0)", "end_page_ext(optlist='')"}));
}

TEST_F(PdfWriter, ImageIsTheEncodersJpegOfTheBitmap) {
  const ScratchFolder folder;
  FreeImage_Save(FIF_JPEG, dib, folder.path("page.jpg").c_str(), 0);
  const std::string jpeg = read_file(folder.path("page.jpg"));
  ASSERT_EQ(writer->add_page(dib, {}, true), 0);
  std::string shown;
  for (const char byte : jpeg) shown += byte == '\0' ? std::string("\\0") : std::string(1, byte);
  EXPECT_NE(library.calls.at(3).find("data='" + shown + "', length=" + std::to_string(jpeg.size())),
            std::string::npos);
}

TEST_F(PdfWriter, PageWithoutCharactersHasTheImageOnlyAndStillSetsTheColour) {
  EXPECT_EQ(writer->add_page(dib, {}, true), 0);
  EXPECT_EQ(library.calls.size(), 7U);
  EXPECT_EQ(library.calls.at(2).rfind("setcolor(", 0), 0U);
}

TEST_F(PdfWriter, ResolutionIsTruncatedToWholeDotsPerInch) {
  const OCR_CHAR character = ocr_char(u'a', 100, 0, 0, 1);
  const struct {
    unsigned dots_per_meter;
    const char* x;
  } cases[] = {{11811, "x=24.0803"},  // 300 dots per inch read back as 299
               {7874, "x=36.1809"},   // 200 as 199
               {2835, "x=100"},       // 72
               {40, "x=7200"}};       // 1
  for (const auto& [dots_per_meter, x] : cases) {
    page(8, 6, dots_per_meter);
    EXPECT_NE(shown(character)[1].find(x), std::string::npos) << shown(character)[1];
  }
}

TEST_F(PdfWriter, WorkedExampleAt300DotsPerInch) {
  page(1, 3508, 11811);
  const Calls calls = shown(ocr_char(u'a', 100, 200, 0, 260));
  EXPECT_EQ(calls, (Calls{"setfont(font=0, fontsize=14.4482)",
                          "show_xy2(text='a', len=1, x=24.0803, y=782.127)"}));
}

TEST_F(PdfWriter, WithoutAResolutionAPixelIsAPoint) {
  for (const unsigned dots_per_meter : {0U, 1U, 39U}) {
    page(8, 6, dots_per_meter);
    EXPECT_EQ(shown(ocr_char(u'a', 3, 1, 0, 5)),
              (Calls{"setfont(font=0, fontsize=4)", "show_xy2(text='a', len=1, x=3, y=1)"}));
  }
}

TEST_F(PdfWriter, FontSizeIsTheHeightOfTheBoxWhicheverEdgeIsHigher) {
  page(8, 100, 0);
  EXPECT_EQ(shown(ocr_char(u'a', 0, 10, 0, 30))[0], "setfont(font=0, fontsize=20)");
  EXPECT_EQ(shown(ocr_char(u'a', 0, 30, 0, 10))[0], "setfont(font=0, fontsize=20)");
  EXPECT_EQ(shown(ocr_char(u'a', 0, 30, 0, 30))[0], "setfont(font=0, fontsize=1)");
}

TEST_F(PdfWriter, BaselineStaysOnThePage) {
  page(8, 100, 0);
  EXPECT_NE(shown(ocr_char(u'a', 0, 0, 0, 150))[1].find("y=0)"), std::string::npos);
  EXPECT_NE(shown(ocr_char(u'a', 0, 0, 0, -50))[1].find("y=100)"), std::string::npos);
  // Below 72 dots per inch a height in points can pass the bound, which is in pixels.
  page(8, 100, 1417);  // 35 dots per inch after truncation
  EXPECT_NE(shown(ocr_char(u'a', 0, 0, 0, 20))[1].find("y=100)"), std::string::npos);
  EXPECT_NE(shown(ocr_char(u'a', 0, 0, 0, 80))[1].find("y=41.1429)"), std::string::npos);
}

TEST_F(PdfWriter, BoxesAtTheLimitsOf64BitsSaturate) {
  page(8, 100, 0);
  EXPECT_EQ(shown(ocr_char(u'a', kFarLeft, kFarLeft, 0, kFarRight)),
            (Calls{"setfont(font=0, fontsize=9.22337e+18)",
                   "show_xy2(text='a', len=1, x=-9.22337e+18, y=0)"}));
  EXPECT_EQ(shown(ocr_char(u'a', kFarRight, kFarRight, 0, kFarLeft)),
            (Calls{"setfont(font=0, fontsize=9.22337e+18)",
                   "show_xy2(text='a', len=1, x=9.22337e+18, y=100)"}));
}

TEST_F(PdfWriter, CharacterThatGbkLacksIsHandedOverAsTheTranscodingLeavesIt) {
  EXPECT_NE(shown(ocr_char(u'é'))[1].find("text='\xA8\xA6'"), std::string::npos);
  EXPECT_NE(shown(ocr_char(u'ñ'))[1].find("text='', len=0"), std::string::npos);
  EXPECT_NE(shown(ocr_char(0xD83D))[1].find("text='?'"), std::string::npos) << "half a pair";
  EXPECT_NE(shown(ocr_char(u'镕'))[1].find("text='\xE9\x46'"), std::string::npos);
}

TEST_F(PdfWriter, CodeZeroIsNotSkipped) {
  EXPECT_NE(shown(ocr_char(0))[1].find("show_xy2(text='', len=0"), std::string::npos);
}

TEST_F(PdfWriter, FlagHasNoMeaning) {
  ASSERT_EQ(writer->add_page(dib, {ocr_char(u'a')}, true), 0);
  const Calls with_flag = library.calls;
  library.calls.clear();
  ASSERT_EQ(writer->add_page(dib, {ocr_char(u'a')}, false), 0);
  EXPECT_EQ(library.calls, with_flag);
}

TEST_F(PdfWriter, AnyFontHandleButZeroIsMinus1BeforeThePageIsBegun) {
  for (const int handle : {-1, 1, 7}) {
    library.calls.clear();
    library.numbers["load_font"] = handle;
    EXPECT_EQ(writer->add_page(dib, {ocr_char(u'a')}, true), -1);
    EXPECT_EQ(library.calls.size(), 1U);
  }
}

TEST_F(PdfWriter, AnyImageHandleButZeroIsMinus3AndLeavesThePageOpen) {
  for (const int handle : {-1, 1}) {
    library.calls.clear();
    library.numbers["open_image"] = handle;
    EXPECT_EQ(writer->add_page(dib, {}, true), -3);
    EXPECT_EQ(library.calls.size(), 4U) << "nothing follows open_image";
  }
}

TEST_F(PdfWriter, BitmapThatCannotBecomeAJpegIsOfferedWithLengthZero) {
  page(3, 70000, 7874);
  EXPECT_EQ(writer->add_page(dib, {}, true), 0) << "the library decides";
  EXPECT_NE(library.calls.at(3).find("data=, length=0, width=3, height=70000"), std::string::npos)
      << library.calls.at(3);
}

TEST_F(PdfWriter, ErrorOfTheLibraryPassesToTheCaller) {
  library.errnum = 2100;
  library.errmsg = "wrong scope";
  library.apiname = "PDF_begin_page_ext";
  library.raises = "begin_page_ext";
  EXPECT_THROW(writer->add_page(dib, {}, true), PDFlib::Exception);
  library.raises = "end_document";
  EXPECT_THROW(writer->close_document(), PDFlib::Exception);
}

TEST_F(PdfWriter, MemoryThatRunsOutForTheTextIsBadAlloc) {
  refuses_blocks = true;
  EXPECT_THROW(writer->add_page(dib, {OCR_CHAR()}, true), std::bad_alloc);
  refuses_blocks = false;
}

TEST_F(PdfWriter, ClosingEndsTheDocumentWhetherOneIsOpenOrNot) {
  writer->close_document();
  EXPECT_EQ(library.calls, Calls{"end_document(optlist='')"});
}

TEST_F(PdfWriter, DestructionDeletesTheContextWithoutEndingTheDocument) {
  writer->create_document("out.pdf");
  library.calls.clear();
  writer.reset();
  ASSERT_EQ(library.calls.size(), 1U);
  EXPECT_EQ(library.calls[0].rfind("delete", 0), 0U) << library.calls[0];
}

TEST_F(PdfWriter, FailedConstructionReachesTheCreator) {
  library.refuses_context = true;
  EXPECT_THROW(pdfwriter(), PDFlib::Exception);
}

}  // namespace
