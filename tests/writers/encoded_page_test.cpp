// SPDX-License-Identifier: Apache-2.0
// Pages that are made without a bitmap, against a stand-in library.
#include <FreeImage.h>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "fakes/fake_pdf_library.h"
#include "support/Documents.h"
#include "support/ScriptedEngine.h"
#include "writers/page_jpeg.h"
#include "writers/pdfwriter.h"

namespace {

using Calls = std::vector<std::string>;

class EncodedPage : public testing::Test {
 protected:
  EncodedPage() {
    library.number = 0;
    writer = std::make_unique<pdfwriter>();
    library.calls.clear();
    FreeImage_SetDotsPerMeterX(dib, 3937);  // only the vertical resolution counts
    FreeImage_SetDotsPerMeterY(dib, 11811);
    picture = {encode_page_jpeg(dib), 8, 6, 11811};
  }
  ~EncodedPage() override {
    FreeImage_Unload(dib);
    library = FakePdfLibrary();
  }

  // The calls that add_page makes for the bitmap, and its result.
  Calls calls_for_bitmap(int& result) {
    library.calls.clear();
    result = writer->add_page(dib, text, true);
    return std::exchange(library.calls, {});
  }

  const std::vector<OCR_CHAR> text = {ocr_char(u'a', 1, 0, 2, 4), ocr_char(u'中', 3, 1, 6, 4)};
  FakePdfLibrary& library = fake_pdf_library();
  std::unique_ptr<pdfwriter> writer;
  FIBITMAP* dib = make_bitmap(8, 6);
  PagePicture picture;
};

TEST_F(EncodedPage, MakesTheCallsThatItsBitmapMakes) {
  int result = -1;
  const Calls calls = calls_for_bitmap(result);
  EXPECT_EQ(result, 0);
  EXPECT_EQ(writer->add_encoded_page(picture, text), 0);
  EXPECT_EQ(library.calls, calls);
  ASSERT_EQ(calls.size(), 11U);
  EXPECT_NE(calls[4].find("x=0.240803"), std::string::npos) << "72/299 points a pixel";
}

TEST_F(EncodedPage, FailsAsItsBitmapFails) {
  for (const char* function : {"load_font", "open_image"}) {
    library.numbers = {{function, 1}};
    int result = 0;
    const Calls calls = calls_for_bitmap(result);
    EXPECT_LT(result, 0) << function;
    EXPECT_EQ(writer->add_encoded_page(picture, text), result) << function;
    EXPECT_EQ(library.calls, calls) << function;
  }
}

TEST_F(EncodedPage, WithoutBytesIsLeftToTheLibrary) {
  picture.jpeg.clear();
  EXPECT_EQ(writer->add_encoded_page(picture, {}), 0);
  EXPECT_NE(library.calls.at(3).find("data=, length=0, width=8, height=6"), std::string::npos);
}

TEST_F(EncodedPage, BlankPageHasASizeAndNothingElse) {
  writer->add_blank_page(595.5, 842);
  EXPECT_EQ(library.calls, (Calls{"begin_page_ext(width=595.5, height=842, optlist='')",
                                  "end_page_ext(optlist='')"}));
}

TEST(PageJpeg, IsWhatTheEncoderWritesToAFile) {
  const ScratchFolder folder;
  FIBITMAP* const dib = make_bitmap(30, 20);
  FreeImage_Save(FIF_JPEG, dib, folder.path("page.jpg").c_str(), 0);
  EXPECT_EQ(encode_page_jpeg(dib), read_file(folder.path("page.jpg")));
  FreeImage_Unload(dib);
}

TEST(PageJpeg, IsEmptyForABitmapThatIsTooHigh) {
  FIBITMAP* const dib = make_bitmap(3, 65501);
  EXPECT_EQ(encode_page_jpeg(dib), "");
  FreeImage_Unload(dib);
}

}  // namespace
