// SPDX-License-Identifier: Apache-2.0
// Whole documents: their structure, their repair, their size.
#include <gtest/gtest.h>

#include <cmath>

#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "pdfproducer/gbk_text.h"
#include "pdfproducer/number_text.h"
#include "support/Documents.h"

namespace {

using zelk::pdf::number_text;

TEST(NumberText, LeavesOutWhatCanBeLeftOut) {
  EXPECT_EQ(number_text(0, 2), "0");
  EXPECT_EQ(number_text(-0.001, 2), "0");
  EXPECT_EQ(number_text(12, 2), "12");
  EXPECT_EQ(number_text(100, 0), "100");
  EXPECT_EQ(number_text(12.5, 2), "12.5");
  EXPECT_EQ(number_text(12.345678, 3), "12.346");
  EXPECT_EQ(number_text(0.25, 2), ".25");
  EXPECT_EQ(number_text(-0.25, 2), "-.25");
  EXPECT_EQ(number_text(-3, 2), "-3");
  EXPECT_EQ(number_text(1e7, 2), "10000000");
  EXPECT_EQ(number_text(1e300, 0).size(), 301u);
}

class DocumentFile : public ::testing::Test {
 protected:
  void begin() { ASSERT_EQ(producer.begin(path), 0); }
  void end() {
    ASSERT_TRUE(producer.end()) << producer.text();
    ASSERT_EQ(qpdf_complaint(path), "");
  }

  ScratchFolder folder;
  const std::string path = folder.path("a.pdf");
  const std::string jpeg = make_jpeg(60, 80);
  Producer producer;
};

TEST_F(DocumentFile, OpensWhateverTheSizeOfAPage) {
  begin();
  for (const double side : {1e300, 1e-300}) {
    ASSERT_TRUE(
        producer.runs([&] { producer.api.PDF_begin_page_ext(producer.p, side, 50, nullptr); }));
    ASSERT_TRUE(producer.runs([&] { producer.api.PDF_end_page_ext(producer.p, nullptr); }));
  }
  end();
  EXPECT_EQ(pdfinfo(path, "Pages"), "2");
}

TEST_F(DocumentFile, OpensInEveryProgram) {
  begin();
  for (int page = 1; page <= 3; ++page) {
    ASSERT_TRUE(add_page(producer, line_of("page " + std::to_string(page), 5, 5, 8), jpeg));
  }
  end();
  EXPECT_EQ(pdfium_pages(path), 3);
  EXPECT_EQ(pdfinfo(path, "Pages"), "3");
  EXPECT_EQ(pdfium_text(path, 1), "page 2");
  EXPECT_EQ(poppler_text(path), "page 1\n\fpage 2\n\fpage 3\n\f");
  const Outcome info = run("mutool info '" + path + "'");
  EXPECT_EQ(info.status, 0);
  EXPECT_NE(info.output.find("Pages: 3"), std::string::npos) << info.output;
  EXPECT_EQ(info.output.find("error"), std::string::npos) << info.output;
}

TEST_F(DocumentFile, FindsEachOfAThousandPages) {
  begin();
  for (int page = 0; page < 1030; ++page) {
    ASSERT_TRUE(add_page(producer, line_of(std::to_string(page), 5, 5, 8), jpeg));
  }
  end();
  EXPECT_EQ(pdfium_pages(path), 1030);
  for (const int page : {0, 31, 32, 999, 1023, 1024, 1029}) {
    EXPECT_EQ(pdfium_text(path, page), std::to_string(page));
  }
  EXPECT_EQ(run("pdftotext -f 1025 -l 1025 '" + path + "' - | head -1").output, "1024\n");
}

TEST_F(DocumentFile, NamesItsMakerAndNoDate) {
  begin();
  ASSERT_TRUE(add_page(producer, {}, jpeg));
  end();
  EXPECT_EQ(pdfinfo(path, "Creator"), "zelk");
  EXPECT_EQ(pdfinfo(path, "Producer").substr(0, 5), "zelk ");
  EXPECT_GT(pdfinfo(path, "Producer").size(), 5u) << "with the version";
  EXPECT_EQ(run("pdfinfo '" + path + "'").output.find("Date"), std::string::npos);
}

TEST_F(DocumentFile, SameCallsMakeTheSameBytes) {
  const std::string other = folder.path("other.pdf");
  for (const std::string& name : {path, other}) {
    ASSERT_TRUE(write_document(name, line_of("same 相同", 5, 5, 8), jpeg));
  }
  EXPECT_EQ(read_file(path), read_file(other));
}

TEST_F(DocumentFile, IdentifierFollowsTheContent) {
  const auto identifier = [&](const std::string& text) {
    EXPECT_TRUE(write_document(path, line_of(text, 5, 5, 8), jpeg));
    const std::string trailer = qpdf_object(path, "trailer");
    return trailer.substr(trailer.find("/ID"), 76);
  };
  const std::string first = identifier("one");
  EXPECT_EQ(first.substr(0, 7), "/ID [ <");
  EXPECT_NE(identifier("two"), first);
  EXPECT_EQ(identifier("one"), first);
}

TEST_F(DocumentFile, FontIsHandle0OnEveryPageOfEveryDocument) {
  for (int document = 0; document < 2; ++document) {
    begin();
    EXPECT_EQ(producer.load_font(), 0);
    EXPECT_EQ(producer.load_font(), 0);
    ASSERT_TRUE(producer.begin_page());
    EXPECT_EQ(producer.load_font(), 0);
    ASSERT_TRUE(add_page(producer, {}, jpeg));
    EXPECT_EQ(producer.load_font(), 0);
    end();
  }
}

TEST_F(DocumentFile, WithoutADocumentThereIsNothingToEnd) {
  EXPECT_TRUE(producer.end());
  begin();
  ASSERT_TRUE(add_page(producer, {}, jpeg));
  end();
  EXPECT_TRUE(producer.end());
  EXPECT_EQ(producer.number(), 0);
}

// The page whose image was refused: the writer leaves it open and goes on.
TEST_F(DocumentFile, UnfinishedPageIsDroppedByTheNextPage) {
  begin();
  ASSERT_EQ(producer.load_font(), 0);
  ASSERT_TRUE(producer.begin_page() && producer.set_font(8) && producer.show("lost", 5, 5));
  ASSERT_EQ(producer.open_image(jpeg), 0);
  ASSERT_EQ(producer.open_image("broken"), -1);
  ASSERT_TRUE(add_page(producer, line_of("kept", 5, 5, 8), jpeg));
  end();
  EXPECT_EQ(poppler_text(path), "kept\n\f");
  EXPECT_EQ(pdfium_pages(path), 1);
}

TEST_F(DocumentFile, UnfinishedPageIsDroppedAtTheEnd) {
  begin();
  ASSERT_TRUE(add_page(producer, line_of("kept", 5, 5, 8), jpeg));
  ASSERT_TRUE(producer.begin_page() && producer.set_font(8) && producer.show("zzz", 5, 5));
  const std::string lost = make_jpeg(33, 44);
  ASSERT_EQ(producer.open_image(lost), 0);
  ASSERT_TRUE(producer.fit_image(0));
  end();
  EXPECT_EQ(poppler_text(path), "kept\n\f");
  EXPECT_EQ(read_file(path).find(lost), std::string::npos) << "nothing of the page remains";
}

TEST_F(DocumentFile, ImagesOpenedBeforeADroppedPageStayOpen) {
  begin();
  ASSERT_EQ(producer.open_image(jpeg), 0);
  ASSERT_TRUE(producer.begin_page());
  ASSERT_EQ(producer.open_image(jpeg), 1);
  ASSERT_TRUE(producer.begin_page());
  EXPECT_FALSE(producer.close_image(1));
  EXPECT_TRUE(producer.fit_image(0) && producer.end_page());
  end();
}

TEST_F(DocumentFile, PageOfGivenSizeNeedsNoImage) {
  begin();
  ASSERT_TRUE(
      producer.runs([&] { producer.api.PDF_begin_page_ext(producer.p, 200, 100.5, nullptr); }));
  ASSERT_TRUE(producer.end_page());
  end();
  EXPECT_EQ(pdfinfo(path, "Page size"), "200 x 100.5 pts");
}

// A PDF must have a page; an error here would end a host in C whose pages could not be read.
TEST_F(DocumentFile, WithoutPagesIsNotWrittenAndTheReasonCanBeAsked) {
  write_file(path, "earlier");
  begin();
  ASSERT_TRUE(producer.begin_page());
  EXPECT_TRUE(producer.end());
  EXPECT_EQ(read_file(path), "earlier");
  EXPECT_EQ(producer.number(), 1016);
  EXPECT_EQ(producer.function(), "PDF_end_document");
  EXPECT_EQ(producer.text(), "'" + path + "' is not written: it has no page");
}

TEST_F(DocumentFile, ManyDocumentsFromOneContext) {
  for (const char* const name : {"1.pdf", "2.pdf", "3.pdf"}) {
    ASSERT_EQ(producer.begin(folder.path(name)), 0);
    ASSERT_TRUE(add_page(producer, line_of(name, 5, 5, 8), jpeg));
    ASSERT_TRUE(producer.end());
    EXPECT_EQ(poppler_text(folder.path(name)), std::string(name) + "\n\f");
  }
}

TEST_F(DocumentFile, TwoContextsWriteSideBySide) {
  Producer other;
  begin();
  ASSERT_EQ(other.begin(folder.path("b.pdf")), 0);
  ASSERT_TRUE(add_page(producer, line_of("one", 5, 5, 8), jpeg));
  ASSERT_TRUE(add_page(other, line_of("two", 5, 5, 8), jpeg));
  ASSERT_TRUE(other.end());
  end();
  EXPECT_EQ(poppler_text(path), "one\n\f");
  EXPECT_EQ(poppler_text(folder.path("b.pdf")), "two\n\f");
}

// Boxes as an engine gives them at 200 dots per inch: whole pixels, each word with a size of its
// own, blanks as high as they leave room.
std::vector<Shown> pixel_layout(const std::vector<std::string>& words, double pixels_per_em) {
  constexpr double kScale = 72.0 / 199;
  std::vector<Shown> page;
  double x = 150;
  double y = 2200;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::vector<std::string> characters = characters_of(words[i]);
    const double odd = static_cast<double>(i % 7);
    const bool latin = characters.front().size() == 1;
    const double cell = (latin ? 0.45 : 1) * pixels_per_em + (latin ? odd * 0.61 : 0.37);
    const double size = std::round(latin ? 2 * cell : cell);
    for (const std::string& character : characters) {
      page.push_back({character, std::round(x) * kScale, y * kScale, size * kScale});
      x += cell;
    }
    if (x > 1450) {
      x = 150;
      y -= 44;
    } else if (latin) {
      page.push_back({" ", std::round(x) * kScale, y * kScale, (18 + odd / 3) * kScale});
      x += 9;
    }
  }
  return page;
}

std::size_t size_without_image(const std::string& path, const std::vector<Shown>& page) {
  const std::string jpeg = make_jpeg(16, 16, 200);
  EXPECT_TRUE(write_document(path, page, jpeg));
  return read_file(path).size() - jpeg.size();
}

TEST_F(DocumentFile, TwoThousandLatinCharactersTakeLessThan6000Bytes) {
  std::vector<std::string> words;
  for (const char letter : read_file(ZELK_TEST_DATA "/../../LICENSE").substr(300, 2400)) {
    if (letter == ' ' || letter == '\n') {
      if (words.empty() || !words.back().empty()) words.emplace_back();
    } else {
      if (words.empty()) words.emplace_back();
      words.back() += letter;
    }
  }
  if (words.back().empty()) words.pop_back();
  std::vector<Shown> page = pixel_layout(words, 25);
  ASSERT_GE(page.size(), 2000u);
  page.resize(2000);
  const std::size_t size = size_without_image(path, page);
  RecordProperty("bytes", static_cast<int>(size));
  EXPECT_LT(size, 6000u);
}

TEST_F(DocumentFile, TwoThousandChineseCharactersTakeLessThan9000Bytes) {
  // 500 ideographs, the n-th one used in proportion to 1/n, as in running text.
  std::vector<std::string> line(1);
  unsigned state = 1;
  const double log_of_all = std::log(500.0);
  for (int i = 0; i < 2000; ++i) {
    state = state * 1664525u + 1013904223u;
    const int rank = static_cast<int>(std::exp(log_of_all * (state >> 8) / (1 << 24)));
    const int row = 16 + rank * 37 % 40;
    const int cell = 1 + rank * 53 % 89;
    const std::string gbk = {static_cast<char>(0xA0 + row), static_cast<char>(0xA0 + cell)};
    line.back() += to_utf8(zelk::pdf::GbkDecoder().decode(gbk).at(0).unicode);
    if (i % 33 == 32) line.emplace_back();
  }
  const std::vector<Shown> page = pixel_layout(line, 40);
  ASSERT_EQ(page.size(), 2000u);
  const std::size_t size = size_without_image(path, page);
  RecordProperty("bytes", static_cast<int>(size));
  EXPECT_LT(size, 9000u);
}

}  // namespace
