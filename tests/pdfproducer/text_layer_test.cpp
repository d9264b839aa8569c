// SPDX-License-Identifier: Apache-2.0
// What extractors and viewers make of the text under the page image.
#include <FreeImage.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <locale>
#include <random>
#include <set>

#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "pdfproducer/gbk_text.h"
#include "support/Documents.h"

namespace {

using zelk::pdf::GbkCharacter;
using zelk::pdf::GbkDecoder;
using zelk::pdf::GbkPlane;

const std::string kMixed = "Zelk (2024) \\ 100% 扫描件；可搜索。镕喆體國";

std::string without_line_ends(std::string text) {
  std::erase_if(text, [](char c) { return c == '\n' || c == '\f' || c == '\r'; });
  return text;
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++found;
  }
  return found;
}

// Every pair of bytes that is a character.
std::vector<GbkCharacter> all_of_gbk() {
  std::string pairs;
  for (int lead = 0x81; lead <= 0xFE; ++lead) {
    for (int trail = 0x40; trail <= 0xFE; ++trail) {
      if (trail == 0x7F) continue;
      pairs.push_back(static_cast<char>(lead));
      pairs.push_back(static_cast<char>(trail));
    }
  }
  return GbkDecoder().decode(pairs);
}

class TextLayer : public ::testing::Test {
 protected:
  void write(const std::vector<Shown>& text) {
    ASSERT_TRUE(write_document(path, text, make_jpeg(600, 800)));
    ASSERT_EQ(qpdf_complaint(path), "");
  }
  // Bytes shown by one call, as PDFium reads them back.
  std::string shown_as_is(const std::string& bytes) {
    Producer producer;
    EXPECT_EQ(producer.begin(path), 0);
    EXPECT_EQ(producer.load_font(), 0);
    EXPECT_TRUE(producer.begin_page() && producer.set_font(10) && producer.show(bytes, 10, 10));
    EXPECT_EQ(producer.open_image(make_jpeg(600, 100)), 0);
    EXPECT_TRUE(producer.fit_image(0) && producer.end_page() && producer.end());
    EXPECT_EQ(qpdf_complaint(path), "");
    return pdfium_text(path);
  }
  std::string content() const { return page_content(path); }
  std::string to_unicode_map() const {
    std::string map;
    for (int object = 1; map.find("begincmap") == std::string::npos && object < 30; ++object) {
      map = qpdf_object(path, std::to_string(object));
    }
    return map;
  }

  ScratchFolder folder;
  const std::string path = folder.path("a.pdf");
};

TEST_F(TextLayer, ComesBackFromEveryExtractor) {
  write(line_of(kMixed, 20, 100, 12));
  EXPECT_EQ(pdfium_text(path), kMixed);
  EXPECT_EQ(without_line_ends(poppler_text(path)), kMixed);
  EXPECT_EQ(without_line_ends(run("pdftotext -layout '" + path + "' - | sed 's/^ *//'").output),
            kMixed);
}

TEST_F(TextLayer, EveryCharacterOfGbkComesBack) {
  const std::vector<GbkCharacter> all = all_of_gbk();
  ASSERT_GT(all.size(), 21000u);
  std::vector<Shown> page;
  std::set<std::string> expected;
  double x = 0;
  double y = 0;
  for (const GbkCharacter& character : all) {
    expected.insert(to_utf8(character.unicode));
    page.push_back({to_utf8(character.unicode), x, y, 2});
    x = x > 590 ? 0 : x + 2;
    if (x == 0) y += 4;
  }
  write(page);
  std::set<std::string> pdfium;
  for (const auto& character : pdfium_characters(path)) pdfium.insert(to_utf8(character.code));
  const std::vector<std::string> listed = characters_of(poppler_text(path));
  const std::set<std::string> poppler(listed.begin(), listed.end());
  int lost_by_pdfium = 0;
  int lost_by_poppler = 0;
  for (const std::string& character : expected) {
    if (pdfium.count(character) == 0) ++lost_by_pdfium;
    if (poppler.count(character) == 0) ++lost_by_poppler;
  }
  EXPECT_EQ(lost_by_pdfium, 0);
  EXPECT_EQ(lost_by_poppler, 1) << "to poppler the ideographic space is a gap";
  EXPECT_EQ(poppler.count("\u3000"), 0u);
}

TEST_F(TextLayer, EveryAsciiCharacterComesBack) {
  std::string ascii;
  for (char c = '!'; c <= '~'; ++c) ascii.push_back(c);
  write(line_of(ascii, 20, 100, 8));
  EXPECT_EQ(pdfium_text(path), ascii);
  EXPECT_EQ(without_line_ends(poppler_text(path)), ascii);
}

// MuPDF's text is not compared: before 1.22 it took maps to Unicode amiss, of which it warns.
TEST_F(TextLayer, OpensInMuPdf) {
  write(line_of(kMixed, 20, 100, 12));
  const Outcome drawn = run("mutool draw -q -o '" + folder.path("a.png") + "' '" + path + "'");
  EXPECT_EQ(drawn.status, 0) << drawn.output;
  EXPECT_EQ(drawn.output.find("error"), std::string::npos) << drawn.output;
  EXPECT_NE(read_file(folder.path("a.png")), "");
}

TEST_F(TextLayer, StandsWhereItWasPut) {
  std::mt19937 generator(7);
  const auto random = [&](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(generator);
  };
  std::vector<Shown> page;
  for (int line = 0; line < 40; ++line) {
    const double size = random(6, 21);
    double x = random(0, 50);
    for (const std::string& character : characters_of("Han汉字mix国家")) {
      page.push_back({character, x, 790 - 19.37 * line, size});
      // Engines round to pixels, so the next place is a little off the end of this one.
      x += (character.size() == 1 ? size / 2 : size) + random(-0.36, 0.36);
    }
  }
  write(page);
  const auto characters = pdfium_characters(path);
  std::size_t next = 0;
  for (const PlacedCharacter& character : characters) {
    if (character.code <= ' ') continue;
    ASSERT_LT(next, page.size());
    const Shown& put = page[next++];
    ASSERT_EQ(to_utf8(character.code), put.utf8);
    EXPECT_NEAR(character.x, put.x, 0.21) << next;
    EXPECT_NEAR(character.y, put.y, 0.006) << next;
    EXPECT_NEAR(character.size, put.size, 0.006) << next;
  }
  EXPECT_EQ(next, page.size());
}

TEST_F(TextLayer, AWordThatChangesTheSizeBeginsExactly) {
  std::vector<Shown> page;
  double x = 10;
  for (int word = 0; word < 50; ++word) {
    const double size = 9 + word % 2 * 0.5;
    page.push_back({"W", x, 400, size});
    page.push_back({"x", x + size / 2, 400, size});
    x += size + 0.1;
  }
  write(page);
  std::size_t next = 0;
  for (const PlacedCharacter& character : pdfium_characters(path)) {
    if (character.code != 'W') continue;
    EXPECT_NEAR(character.x, page[2 * next++].x, 0.011);
  }
  EXPECT_EQ(next, 50u);
}

TEST_F(TextLayer, AfterAnImageStandsWhereItWasPut) {
  Producer producer;
  ASSERT_EQ(producer.begin(path), 0);
  ASSERT_EQ(producer.load_font(), 0);
  ASSERT_TRUE(producer.begin_page() && producer.set_font(10) && producer.show("a", 20, 30));
  ASSERT_EQ(producer.open_image(make_jpeg(100, 100)), 0);
  ASSERT_TRUE(producer.fit_image(0) && producer.show("b", 25, 30) && producer.show("c", 60, 70));
  ASSERT_TRUE(producer.end_page() && producer.end());
  const auto characters = pdfium_characters(path);
  ASSERT_GE(characters.size(), 3u);
  EXPECT_NEAR(characters[1].x, 25, 0.01);
  EXPECT_NEAR(characters[1].y, 30, 0.01);
  EXPECT_NEAR(characters.back().x, 60, 0.01);
  EXPECT_NEAR(characters.back().y, 70, 0.01);
}

TEST_F(TextLayer, DeviationsDoNotAddUp) {
  std::vector<Shown> line;
  for (int i = 0; i < 90; ++i) line.push_back({"n", 10 + 6.15 * i, 50, 12});
  write(line);
  std::size_t next = 0;
  for (const PlacedCharacter& character : pdfium_characters(path)) {
    ASSERT_EQ(character.code, u'n');
    EXPECT_NEAR(character.x, line[next++].x, 0.21);
  }
  EXPECT_EQ(next, line.size());
}

// The blank's glyph lies outside the two rows of half-width glyphs.
TEST_F(TextLayer, LatinAndTheBlankAreHalfAsWideAsHan) {
  shown_as_is(to_gbk("a b汉体c體d"));
  std::vector<double> places;
  for (const PlacedCharacter& character : pdfium_characters(path)) places.push_back(character.x);
  const std::vector<double> expected = {10, 15, 20, 25, 35, 45, 50, 60};
  ASSERT_EQ(places.size(), expected.size());
  for (std::size_t i = 0; i < places.size(); ++i) EXPECT_NEAR(places[i], expected[i], 0.01) << i;
}

TEST_F(TextLayer, NeighboursShareOneOperator) {
  write(line_of("neighbours 邻居", 20, 100, 12));
  EXPECT_EQ(count(content(), "Tf"), 1u);
  EXPECT_EQ(count(content(), "Tj"), 1u);
  EXPECT_EQ(count(content(), "TJ"), 0u);
}

TEST_F(TextLayer, BytesThatFormNoCharacterAreDropped) {
  EXPECT_EQ(shown_as_is("a\x80"
                        "b\xFF"
                        "c"),
            "abc")
      << "no lead bytes";
  EXPECT_EQ(shown_as_is("a\x81\x20"
                        "b"),
            "a b")
      << "no trail byte behind a lead byte";
  EXPECT_EQ(shown_as_is("ab\xB0"), "ab") << "a lead byte at the end";
  EXPECT_EQ(shown_as_is("a\xAA\xA1"
                        "b"),
            "ab")
      << "a pair without a character";
  EXPECT_EQ(shown_as_is(std::string("a\0b\x01\n\r\x7F"
                                    "c",
                                    8)),
            "abc")
      << "control characters";
}

TEST_F(TextLayer, WithoutACharacterIsNoText) {
  EXPECT_EQ(shown_as_is("\xFF\x80"), "");
  EXPECT_EQ(count(content(), "BT"), 0u);
  EXPECT_EQ(shown_as_is(""), "");
  EXPECT_EQ(read_file(path).find("STSong"), std::string::npos);
}

TEST_F(TextLayer, ZeroLengthMeansTextUpToItsZeroByte) {
  Producer producer;
  ASSERT_EQ(producer.begin(path), 0);
  ASSERT_EQ(producer.load_font(), 0);
  ASSERT_TRUE(producer.begin_page() && producer.set_font(10));
  ASSERT_TRUE(producer.runs([&] { producer.api.PDF_show_xy2(producer.p, "whole", 0, 5, 5); }));
  ASSERT_TRUE(producer.runs([&] { producer.api.PDF_show_xy2(producer.p, "part", 2, 5, 50); }));
  ASSERT_TRUE(producer.runs([&] { producer.api.PDF_show_xy2(producer.p, nullptr, 0, 5, 5); }));
  ASSERT_EQ(producer.open_image(make_jpeg(100, 100)), 0);
  ASSERT_TRUE(producer.fit_image(0) && producer.end_page() && producer.end());
  EXPECT_EQ(pdfium_text(path), "whole\r\npa");
}

TEST_F(TextLayer, IsPaintedBlackBeforeTheImage) {
  write(line_of("under", 20, 100, 12));
  const std::string operators = content();
  const std::size_t black = operators.find("0 0 0 rg");
  const std::size_t text = operators.find("Tj");
  const std::size_t image = operators.find("q 600 0 0 800 0 0 cm/I0 Do Q");
  ASSERT_NE(image, std::string::npos) << operators;
  EXPECT_LT(black, text);
  EXPECT_LT(text, image);
  EXPECT_EQ(operators.find(" Tr"), std::string::npos);
  EXPECT_EQ(operators.find("W n"), std::string::npos);
  EXPECT_EQ(operators.find(" gs"), std::string::npos);
}

// The largest difference between a rendered page and the JPEG that covers it.
int largest_difference(const std::vector<unsigned char>& rendered, std::string jpeg) {
  FIMEMORY* const memory =
      FreeImage_OpenMemory(reinterpret_cast<BYTE*>(jpeg.data()), static_cast<DWORD>(jpeg.size()));
  FIBITMAP* const dib = FreeImage_LoadFromMemory(FIF_JPEG, memory, JPEG_ACCURATE);
  const unsigned width = FreeImage_GetWidth(dib);
  const unsigned height = FreeImage_GetHeight(dib);
  int largest = rendered.size() == std::size_t{4} * width * height ? 0 : 256;
  for (unsigned y = 0; y < height && largest < 256; ++y) {
    const BYTE* const row = FreeImage_GetScanLine(dib, static_cast<int>(height - 1 - y));
    for (unsigned i = 0; i < 3 * width; ++i) {
      const unsigned char shown = rendered[std::size_t{4} * (y * width + i / 3) + i % 3];
      largest = std::max(largest, std::abs(shown - row[i]));
    }
  }
  FreeImage_Unload(dib);
  FreeImage_CloseMemory(memory);
  return largest;
}

TEST_F(TextLayer, ShowsNoTraceThroughTheImage) {
  const std::string jpeg = make_jpeg(150, 100, 100);
  const std::string plain = folder.path("plain.pdf");
  ASSERT_TRUE(write_document(plain, {}, jpeg));
  std::vector<Shown> edges = line_of("MMMMMMMMMMMMMMMMMMM", -3, -4, 12);
  for (const Shown& shown : line_of("国国国国国国国国国", 2, 64, 14)) edges.push_back(shown);
  ASSERT_TRUE(write_document(path, edges, jpeg));
  EXPECT_EQ(pdfium_pixels(path, 150, 100), pdfium_pixels(plain, 150, 100));
  EXPECT_LE(largest_difference(pdfium_pixels(path, 150, 100), jpeg), 2) << "decoders round";
}

// Numbers as some countries write them: 1.234,5.
class CommaForPoint : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST_F(TextLayer, IsTheSameInALocaleWithAComma) {
  const std::vector<Shown> line = line_of("12.5 dots", 1020.25, 100.75, 11.5);
  write(line);
  const std::string expected = read_file(path);
  ASSERT_EQ(run("localedef -i de_DE -f UTF-8 '" + folder.path("de_DE.UTF-8") + "'").status, 0);
  setenv("LOCPATH", folder.path("").c_str(), 1);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
  const bool written = write_document(path, line, make_jpeg(600, 800));
  std::locale::global(before);
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");
  ASSERT_TRUE(written);
  EXPECT_EQ(read_file(path), expected);
}

TEST_F(TextLayer, NamesTheFontsThatItUses) {
  write(line_of("国 only", 20, 100, 12));
  EXPECT_EQ(count(run("pdffonts '" + path + "'").output, "STSong-Light"), 1u);
  write(line_of("國 added 国", 20, 100, 12));
  const std::string fonts = run("pdffonts '" + path + "'").output;
  EXPECT_NE(fonts.find("STSong-Light-GB-EUC-H"), std::string::npos) << fonts;
  EXPECT_NE(fonts.find("STSong-Light-GBK-EUC-H"), std::string::npos) << fonts;
  EXPECT_EQ(count(fonts, "no  no  yes"), 2u) << "neither embedded nor a subset, with a map\n"
                                             << fonts;
}

TEST_F(TextLayer, MapsTheCharactersUsedAndNoOthers) {
  write(line_of("abcx 汉", 20, 100, 12));
  const std::string map = to_unicode_map();
  EXPECT_NE(map.find("<61><63><0061>"), std::string::npos) << map;
  EXPECT_NE(map.find("<78><0078>"), std::string::npos) << map;
  EXPECT_NE(map.find("<20><0020>"), std::string::npos) << map;
  EXPECT_NE(map.find("<BABA><6C49>"), std::string::npos) << map;
  EXPECT_EQ(count(map, "<00"), 4u) << map;
}

// A reader may count up in the last byte alone.
TEST_F(TextLayer, RangesOfTheMapEndWithALastByteOf255) {
  const std::vector<GbkCharacter> all = all_of_gbk();
  const auto pair = std::adjacent_find(all.begin(), all.end(), [](const auto& a, const auto& b) {
    return b.code == a.code + 1 && b.unicode == a.unicode + 1 && b.unicode % 256 == 0 &&
           a.plane == b.plane;
  });
  ASSERT_NE(pair, all.end());
  write(line_of(to_utf8(pair[0].unicode) + to_utf8(pair[1].unicode), 20, 100, 12));
  EXPECT_EQ(count(to_unicode_map(), "beginbfrange"), 0u);
  EXPECT_NE(to_unicode_map().find("2 beginbfchar"), std::string::npos);
}

TEST_F(TextLayer, PlacesBeyondSenseAreBroughtBack) {
  write({{"a", 1e300, -1e300, 1e300}, {"b", 5, 5, 1e-300}, {"c", -9.3e18, 4e9, 9.3e18}});
  EXPECT_EQ(content().find('e', content().find("Tf")), std::string::npos);
  EXPECT_EQ(run("mutool draw -q -o '" + folder.path("a.png") + "' '" + path + "'").status, 0);
  EXPECT_EQ(pdfium_pages(path), 1);
}

TEST(GbkText, TellsWhichFontHoldsACharacter) {
  const auto decoded = GbkDecoder().decode(to_gbk("A国國"));
  ASSERT_EQ(decoded.size(), 3u);
  EXPECT_EQ(decoded[0].plane, GbkPlane::kGb2312);
  EXPECT_EQ(decoded[1].plane, GbkPlane::kGb2312);
  EXPECT_EQ(decoded[2].plane, GbkPlane::kExtension);
  EXPECT_EQ(decoded[2].unicode, u'國');
  int gb2312 = 0;
  for (const GbkCharacter& character : all_of_gbk()) {
    if (character.plane != GbkPlane::kGb2312) continue;
    ++gb2312;
    EXPECT_GE(character.code >> 8, 0xA1);
    EXPECT_LE(character.code >> 8, 0xF7);
    EXPECT_GE(character.code & 0xFF, 0xA1);
  }
  EXPECT_EQ(gb2312, 7445) << "GB 2312 has 682 symbols and 6,763 ideographs";
}

}  // namespace
