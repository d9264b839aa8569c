// SPDX-License-Identifier: Apache-2.0
#include <regex>

#include "cli/outputs/Records.h"

namespace {

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++found;
  }
  return found;
}

class HtmlOutput : public Records {
 protected:
  std::string html() { return written_by(cli::write_html); }
};

TEST_F(HtmlOutput, HoldsEveryPageWithItsPictureItsTextAndItsBoxes) {
  add(with_picture(recognised("", one_word_json("zebra")), 100, 80));
  add(with_picture(recognised("plain text"), 50, 40));
  const std::string page = html();
  EXPECT_EQ(progress, 2);
  EXPECT_EQ(count(page, "<section "), 2U);
  EXPECT_EQ(count(page, "<img src=\"data:image/jpeg;base64,/9j/"), 2U);
  EXPECT_NE(page.find("alt=\"Picture of page 2\""), std::string::npos);
  EXPECT_NE(page.find(" lang=\"en\">zebra\n</div>"), std::string::npos);
  EXPECT_NE(page.find(">plain text</div>"), std::string::npos);
  EXPECT_NE(page.find("{\"words\":[0,5,10,20,70,40,97],\"characters\":[]}"), std::string::npos);
  EXPECT_NE(page.find("<p>2 pages</p>"), std::string::npos);
  EXPECT_EQ(page.find("aria-label=\"Failed pages\""), std::string::npos);
}

TEST_F(HtmlOutput, TellsTheNameOfTheDocumentAndNotWhereItLay) {
  order.file = "/home/somebody/secret project/scan.pdf";
  add(with_picture(recognised("text", one_word_json("word")), 100, 80));
  const std::string page = html();
  EXPECT_EQ(page.find("somebody"), std::string::npos);
  EXPECT_EQ(page.find("secret project"), std::string::npos);
  EXPECT_NE(page.find("<title>scan.pdf</title>"), std::string::npos);
}

TEST_F(HtmlOutput, NeedsNothingFromElsewhere) {
  add(with_picture(recognised("text", one_word_json("word")), 100, 80));
  const std::string page = html();
  const std::regex addresses("(src|href|action|srcset|poster)=\"([^\"]{0,40})|url\\(|@import");
  for (std::sregex_iterator at(page.begin(), page.end(), addresses), end; at != end; ++at) {
    const std::string address = (*at)[2];
    EXPECT_TRUE(address.starts_with("data:image/jpeg") || address.starts_with("#")) << at->str();
  }
  EXPECT_NE(page.find("content=\"default-src 'none'; img-src data:;"), std::string::npos);
}

TEST_F(HtmlOutput, FailedPagesComeFirstAndAreLinked) {
  add(recognised("fine"));
  add(with_picture(failed("killed by signal 11"), 60, 40));
  add(failed("too slow"));
  order.page_count = 9;
  const std::string page = html();
  const std::size_t list = page.find("aria-label=\"Failed pages\"");
  ASSERT_LT(list, page.find("<section "));
  EXPECT_NE(page.find("<li><a href=\"#page-2\">Page 2</a>: killed by signal 11</li>\n"
                      "<li><a href=\"#page-3\">Page 3</a>: too slow</li>"),
            std::string::npos);
  EXPECT_NE(page.find("id=\"page-3\""), std::string::npos);
  EXPECT_NE(page.find("<p>3 pages of 9, 2 failed</p>"), std::string::npos);
  EXPECT_EQ(count(page, "class=\"page failed\""), 2U);
  EXPECT_EQ(count(page, "<img "), 1U);
}

TEST_F(HtmlOutput, WarningsAreShown) {
  cli::PageRecord record = recognised("text");
  record.warning = "rendered at <100> dots per inch";
  add(record);
  EXPECT_NE(html().find("<p class=\"warning\">rendered at &lt;100&gt; dots per inch</p>"),
            std::string::npos);
}

TEST_F(HtmlOutput, HostileTextAndNamesStayText) {
  const std::string attack =
      "</script><script>alert(1)</script>\"'>]]>--><img src=x onerror=y>@PAGES@";
  order.file = "<script>alert(1)<img>@PAGES@.pdf";
  add(recognised("", one_word_json(attack)));
  add(recognised(attack));
  cli::PageRecord record = failed(attack);
  record.warning = attack;
  add(record);
  const std::string page = html();
  EXPECT_EQ(count(page, "<script"), 4U) << "three pages and the program";
  EXPECT_EQ(count(page, "</script>"), 4U);
  EXPECT_EQ(page.find("<img"), std::string::npos);
  EXPECT_EQ(page.find("alert(1)<"), std::string::npos);
  EXPECT_EQ(count(page, "<section "), 3U) << "values are not expanded again";
  EXPECT_EQ(count(page, "&lt;/script&gt;&lt;script&gt;alert(1)"), 5U);
  EXPECT_EQ(count(page, "&lt;script&gt;alert(1)&lt;img&gt;@PAGES@.pdf"), 2U);
}

TEST_F(HtmlOutput, BytesThatAreNotUtf8AreReplacedAndNamesEscaped) {
  order.file = "caf\xE9.pdf";
  add(recognised(std::string("a\0\xFF", 3)));
  const std::string page = html();
  EXPECT_NE(page.find("<title>caf\\xE9.pdf</title>"), std::string::npos);
  EXPECT_NE(page.find(">a\uFFFD\uFFFD</div>"), std::string::npos);
  EXPECT_EQ(page.find('\0'), std::string::npos);
}

TEST_F(HtmlOutput, SameRecordsGiveTheSameBytes) {
  add(with_picture(recognised("text", one_word_json("word")), 100, 80));
  const std::string first = html();
  EXPECT_EQ(html(), first);
}

}  // namespace
