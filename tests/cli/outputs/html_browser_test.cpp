// SPDX-License-Identifier: Apache-2.0
// What a browser makes of the page.
#include <nlohmann/json.hpp>

#include "cli/outputs/Records.h"
#include "pdfproducer/Tools.h"

namespace {

class HtmlInBrowser : public Records {
 protected:
  HtmlInBrowser() {
    nlohmann::json two = nlohmann::json::parse(one_word_json("zebra", 97));
    auto& words = two["blocks"][0]["lines"][0]["words"];
    two["blocks"][0]["lines"][0]["text"] = "zebra <b>Crossing</b>";
    words[0]["characters"] = {{{"box", {10, 20, 22, 40}}, {"confidence", 88}, {"text", "z"}}};
    words.push_back(words[0]);
    words[1] = {{"box", {10, 50, 60, 70}}, {"confidence", 41}, {"text", "Crossing"}};
    add(with_picture(recognised("", two.dump()), 100, 80));
    add(with_picture(failed("crashed"), 100, 80));
    add(with_picture(recognised("斑马\n线 and a cros-\nsing"), 100, 80));
    write_html(order, page, {});
  }

  // The document once it has been loaded, at an address that ends in `fragment`. What a test looks
  // at is made before that, in the page's own script or in the one of insert: nothing waits for a
  // clock or for a frame to be drawn.
  std::string shown(const std::string& fragment) {
    const Outcome outcome =
        run("(HOME='" + folder.path("") +
            "' timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage"
            " --user-data-dir='" +
            folder.path("profile") + "' --dump-dom 'file://" + page + fragment + "' 2>/dev/null)");
    EXPECT_EQ(outcome.status, 0);
    return outcome.output;
  }
  // Runs a script in the page, in place of the policy that would not let it.
  void insert(const std::string& script) {
    std::string html = read_file(page);
    const std::size_t policy = html.find("<meta http-equiv");
    html.erase(policy, html.find('>', policy) + 1 - policy);
    html.insert(html.rfind("</body>"),
                "<script>addEventListener('load', () => {" + script + "})</script>");
    write_file(page, html);
  }

  const std::string page = folder.path("page.html");
};

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(HtmlInBrowser, LaysTheWordsOverThePicturesAndTintsTheDoubtful) {
  const std::string dom = shown("");
  EXPECT_TRUE(holds(dom, "viewBox=\"0 0 100 80\"")) << dom;
  EXPECT_TRUE(holds(dom, "class=\"words\" d=\"M10 20H70V40H10ZM10 50H60V70H10Z\""));
  EXPECT_TRUE(holds(dom, "class=\"characters\" d=\"M10 20H22V40H10Z\""));
  EXPECT_TRUE(holds(dom, "class=\"poor\" d=\"M10 50H60V70H10Z\""));
  EXPECT_TRUE(holds(dom, "<span class=\"poor\">Crossing</span>"));
  EXPECT_FALSE(holds(dom, "<mark"));
}

TEST_F(HtmlInBrowser, SearchInTheAddressMarksTextAndPicture) {
  const std::string dom = shown("#q=ZEB");
  EXPECT_TRUE(holds(dom, "<mark class=\"current\">zeb</mark>ra &lt;b&gt;")) << dom;
  EXPECT_TRUE(holds(dom, "class=\"current\" d=\"M10 20H22V40H10Z\"")) << "the character found";
  EXPECT_TRUE(holds(dom, ">1 of 1 on 1 page</output>"));
}

TEST_F(HtmlInBrowser, SearchFindsWhatALineEndDivides) {
  EXPECT_TRUE(holds(shown("#q=%E6%96%91%E9%A9%AC%E7%BA%BF"), "斑马\n线</mark> and"));
}

TEST_F(HtmlInBrowser, NextLeadsToTheHitOnAnotherPage) {
  insert("document.getElementById('next').click();");
  const std::string dom = shown("#q=crossing");
  EXPECT_TRUE(holds(dom, "<mark class=\"\"><span class=\"poor\">Crossing</span></mark>")) << dom;
  EXPECT_TRUE(holds(dom, "<mark class=\"current\">cros-\nsing</mark>"));
  // The picture left behind is marked when it comes into view, which may not have been yet.
  EXPECT_TRUE(holds(dom, ">2 of 2 on 2 pages</output>"));
}

TEST_F(HtmlInBrowser, SearchTakesSyntaxAsText) {
  EXPECT_TRUE(holds(shown("#q=%3Cb%3E"), "<mark class=\"current\">&lt;b&gt;</mark>"));
  insert(
      "document.title = ['#q=.*', '#q=(', '#q=%5C', '#q=z%7Ca', '#q=%25%F'].map((query) => {"
      "history.replaceState(null, '', query); dispatchEvent(new Event('hashchange'));"
      "return document.getElementById('status').textContent; }).join();");
  EXPECT_TRUE(holds(shown("#q=zebra"), "<title>no hits,no hits,no hits,no hits,no hits</title>"));
}

TEST_F(HtmlInBrowser, PointerShowsTextConfidenceAndBox) {
  insert(
      "const svg = document.querySelector('svg'), box = svg.getBoundingClientRect();"
      "svg.dispatchEvent(new PointerEvent('pointermove', {clientX: box.left + box.width * .15,"
      "clientY: box.top + box.height * .3}));");
  const std::string dom = shown("");
  EXPECT_TRUE(holds(dom, "<b>zebra</b><br><span>confidence 97 %, box 10, 20 – 70, 40</span>"))
      << dom;
  EXPECT_TRUE(holds(dom, "<b>z</b><br><span>confidence 88 %, box 10, 20 – 22, 40</span>"));
}

TEST_F(HtmlInBrowser, ArrowKeysGoThroughTheWords) {
  insert(
      "const svg = document.querySelector('svg'); svg.focus(); for (const key of"
      " ['ArrowRight', 'ArrowRight']) svg.dispatchEvent(new KeyboardEvent('keydown', {key}));");
  EXPECT_TRUE(holds(shown(""), ">Crossing, confidence 41 %, box 10, 50 – 60, 70</div>"));
}

}  // namespace
