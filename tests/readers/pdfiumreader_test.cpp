// SPDX-License-Identifier: Apache-2.0
#include "readers/pdfiumreader.h"

#include <gtest/gtest.h>

#include "support/Documents.h"
#include "support/LeaksByContract.h"

namespace {

// Readers are deleted as the program does it: PDFium stays initialised.
class OpenPdf {
 public:
  OpenPdf(const std::string& path, int resolution) : reader(new pdfiumreader) {
    pages = reader->load_image(path.c_str(), resolution);
  }
  ~OpenPdf() {
    reader->free_image();
    delete_reader(reader);
  }
  OpenPdf(const OpenPdf&) = delete;
  OpenPdf& operator=(const OpenPdf&) = delete;

  pdfiumreader* const reader;
  int pages = 0;
};

// Width and height of a page at a resolution; 0 x 0 for a missing page.
std::pair<unsigned, unsigned> page_size(const std::string& media_box, int resolution) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{media_box, ""}});
  const OpenPdf pdf(folder.path("a.pdf"), resolution);
  EXPECT_EQ(pdf.pages, 1);
  FIBITMAP* const page = pdf.reader->get_cur_image(0);
  if (page == nullptr) return {0, 0};
  EXPECT_EQ(FreeImage_GetBPP(page), 24U);
  const std::pair<unsigned, unsigned> size{FreeImage_GetWidth(page), FreeImage_GetHeight(page)};
  FreeImage_Unload(page);
  return size;
}

using Size = std::pair<unsigned, unsigned>;

TEST(pdfiumreader, PageSizeIsTruncatedToWholePixels) {
  EXPECT_EQ(page_size("0 0 612 792", 200), Size(1700, 2200));
  EXPECT_EQ(page_size("0 0 612 792", 300), Size(2550, 3300));
  EXPECT_EQ(page_size("0 0 595.276 841.89", 300), Size(2480, 3507));
}

TEST(pdfiumreader, SmallestPageIsOnePixel) {
  EXPECT_EQ(page_size("0 0 1 1", 72), Size(1, 1));
}

TEST(pdfiumreader, PageWithoutPixelsIsMissing) {
  EXPECT_EQ(page_size("0 0 612 792", 0), Size(0, 0));
  EXPECT_EQ(page_size("0 0 612 792", -200), Size(0, 0));
  EXPECT_EQ(page_size("0 0 612 1", 71), Size(0, 0));
}

TEST(pdfiumreader, PageTooLargeForABitmapIsMissing) {
  EXPECT_EQ(page_size("0 0 200000 200000", 200), Size(0, 0));
  EXPECT_EQ(page_size("0 0 612 792", 2147483647), Size(0, 0));
}

TEST(pdfiumreader, PagesAreCountedFromZero) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {PdfPage(), PdfPage(), PdfPage()});
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  EXPECT_EQ(pdf.pages, 3);
  EXPECT_EQ(pdf.reader->_page_num, 3);
  EXPECT_EQ(pdf.reader->_pdf_resolution, 72);
  EXPECT_EQ(pdf.reader->_image_document, "");
  EXPECT_EQ(pdf.reader->get_cur_image(3), nullptr);
  EXPECT_EQ(pdf.reader->get_cur_image(-1), nullptr);
}

TEST(pdfiumreader, EmptyPageIsWhite) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}});
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  FIBITMAP* const page = pdf.reader->get_cur_image(0);
  ASSERT_NE(page, nullptr);
  for (int y = 0; y < 20; ++y) {
    const BYTE* const row = FreeImage_GetScanLine(page, y);
    for (int byte = 0; byte < 90; ++byte) ASSERT_EQ(row[byte], 0xFF);
  }
  FreeImage_Unload(page);
}

TEST(pdfiumreader, TopOfThePageIsTheLastScanLineAndColoursKeepTheirOrder) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", "1 0 0 rg 0 15 30 5 re f"}});
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  FIBITMAP* const page = pdf.reader->get_cur_image(0);
  ASSERT_NE(page, nullptr);
  const BYTE* const top = FreeImage_GetScanLine(page, 19) + 3 * 10;
  const BYTE* const bottom = FreeImage_GetScanLine(page, 0) + 3 * 10;
  EXPECT_EQ(top[0], 0x00) << "blue";
  EXPECT_EQ(top[1], 0x00) << "green";
  EXPECT_EQ(top[2], 0xFF) << "red";
  EXPECT_EQ(bottom[0], 0xFF);
  FreeImage_Unload(page);
}

// A page of three squares side by side: one that is not printed, one that is printed alone, and an
// annotation.
constexpr const char* kSquares = R"(%PDF-1.7
1 0 obj
<< /Type /Catalog /Pages 2 0 R
   /OCProperties << /OCGs [5 0 R 6 0 R] /D << /Order [5 0 R 6 0 R] >> >> >>
endobj
2 0 obj
<< /Type /Pages /Kids [3 0 R] /Count 1 >>
endobj
3 0 obj
<< /Type /Page /Parent 2 0 R /MediaBox [0 0 30 10] /Contents 4 0 R /Annots [7 0 R]
   /Resources << /Properties << /Screen 5 0 R /Paper 6 0 R >> >> >>
endobj
4 0 obj
<< /Length 85 >>
stream
/OC /Screen BDC 0 g 0 0 10 10 re f EMC
/OC /Paper BDC 0 g 10 0 10 10 re f EMC
endstream
endobj
5 0 obj
<< /Type /OCG /Name (Screen)
   /Usage << /Print << /PrintState /OFF >> /View << /ViewState /ON >> >> >>
endobj
6 0 obj
<< /Type /OCG /Name (Paper)
   /Usage << /Print << /PrintState /ON >> /View << /ViewState /OFF >> >> >>
endobj
7 0 obj
<< /Type /Annot /Subtype /Square /Rect [20 0 30 10] /F 4 /AP << /N 8 0 R >> >>
endobj
8 0 obj
<< /Type /XObject /Subtype /Form /BBox [0 0 10 10] /Length 18 >>
stream
0 g 0 0 10 10 re f
endstream
endobj
trailer
<< /Size 9 /Root 1 0 R >>
%%EOF
)";

TEST(pdfiumreader, PageLooksAsPrintedWithoutItsAnnotations) {
  const ScratchFolder folder;
  write_file(folder.path("a.pdf"), kSquares);
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  FIBITMAP* const page = pdf.reader->get_cur_image(0);
  ASSERT_NE(page, nullptr);
  const BYTE* const row = FreeImage_GetScanLine(page, 5);
  EXPECT_EQ(row[3 * 5], 0xFF) << "shown on a screen alone";
  EXPECT_EQ(row[3 * 15], 0x00) << "shown on paper alone";
  EXPECT_EQ(row[3 * 25], 0xFF) << "an annotation";
  FreeImage_Unload(page);
}

TEST(pdfiumreader, TwoCallsForAPageGiveIndependentBitmaps) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}});
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  FIBITMAP* const first = pdf.reader->get_cur_image(0);
  FIBITMAP* const second = pdf.reader->get_cur_image(0);
  EXPECT_NE(first, second);
  FreeImage_Unload(first);
  EXPECT_EQ(FreeImage_GetScanLine(second, 0)[0], 0xFF);
  FreeImage_Unload(second);
}

TEST(pdfiumreader, PageThatCannotBeLoadedIsMissing) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}, {"", ""}, {"0 0 20 30", ""}});
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  ASSERT_EQ(pdf.pages, 3);
  FIBITMAP* const first = pdf.reader->get_cur_image(0);
  EXPECT_EQ(pdf.reader->get_cur_image(1), nullptr);
  FIBITMAP* const third = pdf.reader->get_cur_image(2);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(third, nullptr);
  EXPECT_EQ(FreeImage_GetHeight(third), 30U);
  FreeImage_Unload(first);
  FreeImage_Unload(third);
}

TEST(pdfiumreader, PermissionsDoNotKeepADocumentFromBeingRendered) {
  const OpenPdf pdf(std::string(ZELK_TEST_DATA) + "/zh-en-encrypted-aes256-emptyuser.pdf", 72);
  EXPECT_EQ(pdf.pages, 2);
  FIBITMAP* const page = pdf.reader->get_cur_image(0);
  EXPECT_NE(page, nullptr);
  FreeImage_Unload(page);
}

TEST(pdfiumreader, UnreadableDocumentsGiveNoPages) {
  const ScratchFolder folder;
  write_file(folder.path("text.pdf"), "This is plain text.");
  for (const std::string& path :
       {folder.path("text.pdf"), folder.path("missing.pdf"),
        std::string(ZELK_TEST_DATA) + "/hostile/user-password-aes256.pdf"}) {
    const OpenPdf pdf(path, 150);
    EXPECT_EQ(pdf.pages, 0) << path;
    EXPECT_EQ(pdf.reader->_pdf_resolution, 150) << "kept also when opening failed";
    EXPECT_EQ(pdf.reader->get_cur_image(0), nullptr);
  }
}

TEST(pdfiumreader, FreeingTwiceIsHarmless) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  pdf.reader->free_image();
  EXPECT_EQ(pdf.reader->_pdf_doc, nullptr);
  EXPECT_EQ(pdf.reader->_page_num, 1);
  pdf.reader->free_image();
}

TEST(pdfiumreader, CompleteDestructionLetsTheNextReaderStartAfresh) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}});
  for (int round = 0; round < 2; ++round) {
    pdfiumreader reader;
    ASSERT_EQ(reader.load_image(folder.path("a.pdf").c_str(), 72), 1) << round;
    FIBITMAP* const page = reader.get_cur_image(0);
    EXPECT_NE(page, nullptr) << round;
    FreeImage_Unload(page);
    reader.free_image();
  }
}

TEST(pdfiumreader, DocumentLeftOpenByADeletedReaderDisturbsNoOther) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 30 20", ""}});
  {
    // The document of a reader that is deleted without free_image.
    const LeaksByContract open_document;
    auto* const replaced = new pdfiumreader;
    ASSERT_EQ(replaced->load_image(folder.path("a.pdf").c_str(), 72), 1);
    delete_reader(replaced);
  }
  const OpenPdf pdf(folder.path("a.pdf"), 72);
  FIBITMAP* const page = pdf.reader->get_cur_image(0);
  EXPECT_NE(page, nullptr);
  FreeImage_Unload(page);
}

}  // namespace
