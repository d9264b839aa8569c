// SPDX-License-Identifier: Apache-2.0
// Documents of every kind through the shared library, against a scripted engine.
#include "support/Documents.h"
#include "api/zelkAPI.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"

namespace {

class Documents : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(zelk_init_engine(fake.directory.c_str()), 0); }
  void TearDown() override {
    zelk_clear_images();
    zelk_free_image_document();
    zelk_uninit_engine();
  }
  int load(const std::string& name, int resolution = 72) {
    return zelk_load_image_document(folder.path(name).c_str(), resolution);
  }

  ScriptedEngine fake;
  ScratchFolder folder;
};

TEST_F(Documents, SingleImage) {
  write_image(folder.path("a.bmp"), 9, 7);
  fake.script->pages = {fake_page("image\n", "{\"page\":1}")};
  EXPECT_EQ(load("a.bmp"), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "image\n");
  EXPECT_STREQ(zelk_get_ocr_string_unicode(), L"image\n");
  EXPECT_STREQ(zelk_get_ocr_json_string(0), "{\"page\":1}");
  EXPECT_STREQ(zelk_get_ocr_json_string_unicode(0), L"{\"page\":1}");
}

TEST_F(Documents, SingleImageRecognisedAgainIsAMissingPage) {
  write_image(folder.path("a.png"), 9, 7);
  fake.script->pages = {fake_page("first"), fake_page("second")};
  EXPECT_EQ(load("a.png"), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "");
  EXPECT_STREQ(zelk_get_ocr_json_string(0), "");
}

TEST_F(Documents, TiffOfThreePages) {
  write_tiff(folder.path("three.tif"), 5, 4, 3);
  fake.script->pages = {fake_page("1"), fake_page("2"), fake_page("3")};
  EXPECT_EQ(load("three.tif"), 3);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "123");
  ASSERT_EQ(fake.script->rasters.size(), 3U);
  EXPECT_EQ(fake.script->rasters[2].bytes[2], 3) << "red of the third page";
}

TEST_F(Documents, PdfWithAPageThatCannotBeLoaded) {
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}, {"", ""}, {"0 0 40 20", ""}});
  fake.script->pages = {fake_page("one", "{1}"), fake_page("three", "{3}")};
  EXPECT_EQ(load("a.pdf"), 3);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "onethree");
  EXPECT_STREQ(zelk_get_ocr_json_string(1), "{3}");
  EXPECT_EQ(fake.script->rasters.at(1).width, 40);
}

TEST_F(Documents, ImageList) {
  write_image(folder.path("a.png"), 5, 4);
  write_image(folder.path("c.png"), 5, 6);
  fake.script->pages = {fake_page("a"), fake_page("c")};
  for (const char* name : {"a.png", "b.png", "c.png"}) {
    EXPECT_TRUE(zelk_add_image(folder.path(name).c_str()));
  }
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_STREQ(zelk_get_ocr_string(), "ac");
  EXPECT_STREQ(zelk_get_ocr_json_string(2), "");
}

TEST_F(Documents, TextStaysValidUntilTheNextRecognition) {
  write_tiff(folder.path("a.tif"), 5, 4, 1);
  fake.script->pages = {fake_page("a")};
  EXPECT_EQ(load("a.tif"), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  const char* const text = zelk_get_ocr_string();
  zelk_free_image_document();
  EXPECT_EQ(load("a.tif"), 1);
  EXPECT_STREQ(text, "a");
  EXPECT_STREQ(zelk_get_ocr_string_unicode(), L"") << "loading empties the wide text";
}

TEST_F(Documents, WideJsonOfOneCallEndsWithTheNext) {
  write_tiff(folder.path("a.tif"), 5, 4, 2);
  fake.script->pages = {fake_page("a", "{1}"), fake_page("b", "{2}")};
  EXPECT_EQ(load("a.tif"), 2);
  EXPECT_EQ(zelk_recognize(), 0);
  const std::wstring first = zelk_get_ocr_json_string_unicode(0);
  EXPECT_EQ(first, L"{1}");
  EXPECT_STREQ(zelk_get_ocr_json_string_unicode(1), L"{2}");
}

TEST_F(Documents, WideTextOfTheEngineIsPassedOnAsItIs) {
  write_image(folder.path("a.png"), 5, 4);
  fake.script->pages = {fake_page("a")};
  fake.script->pages[0].wide = {wchar_t{0x1F600}, wchar_t{0xD800}, L'x'};
  EXPECT_EQ(load("a.png"), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_EQ(zelk_get_ocr_string_unicode(), fake.script->pages[0].wide);
}

TEST_F(Documents, FileNamesOfAnyBytesWork) {
  write_image(folder.path("\xFF\xFE name.png"), 5, 4);
  // A picture that is loaded and never recognised.
  const LeaksByContract picture;
  EXPECT_EQ(load("\xFF\xFE name.png"), 1);
}

TEST_F(Documents, FailedLoadEmptiesTheImageList) {
  write_image(folder.path("a.png"), 5, 4);
  for (const char* name : {"missing.tif", "unknown.gif"}) {
    EXPECT_TRUE(zelk_add_image(folder.path("a.png").c_str()));
    EXPECT_EQ(load(name), 0);
    EXPECT_EQ(zelk_recognize(), 2) << name;
  }
}

TEST_F(Documents, PictureOf16BitGreyGivesNoPage) {
  FIBITMAP* const grey = FreeImage_AllocateT(FIT_UINT16, 5, 4, 16, 0, 0, 0);
  ASSERT_TRUE(FreeImage_Save(FIF_PNG, grey, folder.path("a.png").c_str(), 0));
  FreeImage_Unload(grey);
  EXPECT_EQ(load("a.png"), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_TRUE(fake.script->rasters.empty());
}

TEST_F(Documents, ExifOrientationIsNotApplied) {
  write_image(folder.path("plain.jpg"), 40, 20);
  const std::string plain = read_file(folder.path("plain.jpg"));
  // Behind the first marker, a TIFF directory with one tag: orientation 6, to be turned clockwise.
  const std::string exif(
      "\xFF\xE1\0\x22"
      "Exif\0\0MM\0*\0\0\0\x08\0\x01"
      "\x01\x12\0\x03\0\0\0\x01\0\x06\0\0\0\0\0\0",
      36);
  write_file(folder.path("a.jpg"), plain.substr(0, 2) + exif + plain.substr(2));
  FIBITMAP* const turned = FreeImage_Load(FIF_JPEG, folder.path("a.jpg").c_str(), JPEG_EXIFROTATE);
  ASSERT_EQ(FreeImage_GetWidth(turned), 20U) << "who asks for it gets it";
  FreeImage_Unload(turned);
  EXPECT_EQ(load("a.jpg"), 1);
  EXPECT_EQ(zelk_recognize(), 0);
  EXPECT_EQ(fake.script->rasters.at(0).width, 40);
}

TEST_F(Documents, PdfPagesOfNoResolutionAreLeftOut) {
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  for (const int resolution : {0, -200}) {
    EXPECT_EQ(load("a.pdf", resolution), 1);
    EXPECT_EQ(zelk_recognize(), 0);
    EXPECT_TRUE(fake.script->rasters.empty());
    zelk_free_image_document();
  }
}

}  // namespace
