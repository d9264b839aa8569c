// SPDX-License-Identifier: Apache-2.0
// The text that PDF pages hold, through DocumentPages.
#include <gtest/gtest.h>

#include "support/Documents.h"
#include "worker/document_pages.h"
#include "writers/pdfwriter.h"

namespace {

using cli::DocumentPages;
using cli::PageText;

// A page with a font /F; `keys` are further entries of the page.
PdfPage text_page(const std::string& content, const std::string& box = "0 0 400 200",
                  const std::string& keys = "") {
  return {box +
              "] /Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
              ">> >> >> " +
              keys + " /ArtBox [" + box,
          content};
}

std::optional<PageText> text_of(const PdfPage& page, int dots_per_inch = 72) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {page});
  return DocumentPages(folder.path("a.pdf"), {}, "").text(0, dots_per_inch);
}

std::string letters_of(const PageText& text) {
  std::string letters;
  for (const OCR_CHAR& character : text.characters) letters += static_cast<char>(character.code);
  return letters;
}

TEST(PdfText, IsReadInLines) {
  const auto text =
      text_of(text_page("BT /F 20 Tf 50 150 Td (Hello world) Tj 0 -50 Td (again) Tj ET"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->text, "Hello world\nagain\n");
  EXPECT_EQ(letters_of(*text), "Hello worldagain");
}

TEST(PdfText, StandsInPixelsOfTheRenderedPage) {
  for (const int dots_per_inch : {72, 144}) {
    const int scale = dots_per_inch / 72;
    const auto text = text_of(text_page("BT /F 20 Tf 50 150 Td (Hello) Tj ET"), dots_per_inch);
    ASSERT_TRUE(text);
    ASSERT_EQ(text->characters.size(), 5U);
    EXPECT_NEAR(static_cast<double>(text->characters[0].left), 50 * scale, 2 * scale);
    // H 722, e 556, l 222, l 222, o 556 thousandths of 20 points.
    EXPECT_NEAR(static_cast<double>(text->characters[4].right), 95.6 * scale, 2 * scale);
    for (const OCR_CHAR& character : text->characters) {
      EXPECT_NEAR(static_cast<double>(character.bottom), 50 * scale, scale) << "the baseline";
      EXPECT_LT(character.top, character.bottom);
    }
  }
}

TEST(PdfText, FollowsRotationAndCropping) {
  // 30 points right of the crop box's left edge and 40 below its top, seen upright.
  const std::string content = "BT /F 20 Tf 0 1 -1 0 90 80 Tm (Hello) Tj ET";
  const auto text =
      text_of(text_page(content, "0 0 400 600", "/Rotate 90 /CropBox [50 50 300 500]"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->text, "Hello\n");
  ASSERT_EQ(text->characters.size(), 5U);
  EXPECT_NEAR(static_cast<double>(text->characters[0].left), 30, 3);
  EXPECT_NEAR(static_cast<double>(text->characters[4].right), 75.6, 3);
  for (const OCR_CHAR& character : text->characters) EXPECT_NEAR(double(character.bottom), 40, 2);
}

TEST(PdfText, OutsideTheCropBoxIsLeftOut) {
  const std::string content = "BT /F 20 Tf 60 150 Td (in) Tj 200 0 Td (out) Tj ET";
  const auto text = text_of(text_page(content, "0 0 400 200", "/CropBox [50 50 200 200]"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->text, "in\n");
}

TEST(PdfText, InvisibleTextIsText) {
  const auto text = text_of(text_page("BT 3 Tr /F 20 Tf 50 150 Td (layer) Tj ET"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->text, "layer\n");
}

TEST(PdfText, PageWithoutAVisibleCharacterHasNone) {
  EXPECT_FALSE(text_of(text_page("")));
  EXPECT_FALSE(text_of(text_page("0 0 10 10 re f")));
  EXPECT_FALSE(text_of(text_page("BT /F 20 Tf 50 150 Td (   ) Tj 0 -30 Td (\\240) Tj ET")));
}

TEST(PdfText, MissingPageHasNone) {
  DocumentPages pages(std::string(ZELK_TEST_DATA) + "/hostile/missing-page-object.pdf", {}, "");
  EXPECT_FALSE(pages.text(1, 200));
  EXPECT_EQ(pages.text(2, 200)->text, "Third page survives\n");
  EXPECT_FALSE(pages.text(2, 0));
  EXPECT_FALSE(pages.text(2, 2147483647));
}

TEST(PdfText, HyphenEndsItsLine) {
  const auto text = text_of(
      text_page("BT /F 20 Tf 50 150 Td (This is hyphen-) Tj 0 -24 Td (ated in the middle) Tj ET"));
  ASSERT_TRUE(text);
  EXPECT_EQ(text->text, "This is hyphen-\nated in the middle\n");
  EXPECT_NE(text->characters.front().bottom, text->characters.back().bottom);
}

// The text layer that is written from a page's text holds that text.
std::string read_back(const std::string& path, int page) {
  const ScratchFolder folder;
  {
    DocumentPages pages(path, {}, "");
    const cli::PreparedPage prepared = pages.prepare(page);
    FreeImage_SetDotsPerMeterX(prepared.bitmap.get(), 7874);
    FreeImage_SetDotsPerMeterY(prepared.bitmap.get(), 7874);
    pdfwriter writer;
    EXPECT_EQ(writer.create_document(folder.path("b.pdf").c_str()), 0);
    EXPECT_EQ(writer.add_page(prepared.bitmap.get(), pages.text(page, 200)->characters, true), 0);
    writer.close_document();
  }
  const auto text = DocumentPages(folder.path("b.pdf"), {}, "").text(0, 200);
  return text ? text->text : "";
}

TEST(PdfText, LayerWrittenFromItReadsBack) {
  const std::string path = std::string(ZELK_TEST_DATA) + "/zh-en-encrypted-aes256-emptyuser.pdf";
  for (const int page : {0, 1}) {
    const std::string text = DocumentPages(path, {}, "").text(page, 200)->text;
    EXPECT_GT(text.size(), 400U);
    EXPECT_EQ(read_back(path, page), text) << page;
  }
}

}  // namespace
