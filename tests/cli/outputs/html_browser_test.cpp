// SPDX-License-Identifier: Apache-2.0
// What a browser makes of the page.
#include <nlohmann/json.hpp>

#include "cli/outputs/Records.h"
#include "outputs/utf8_text.h"
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
  std::string shown(const std::string& fragment) { return opened(page, fragment); }
  std::string opened(const std::string& file, const std::string& fragment) {
    const Outcome outcome =
        run("(HOME='" + folder.path("") +
            "' timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-dev-shm-usage"
            " --user-data-dir='" +
            folder.path("profile") + "' --dump-dom 'file://" + file + fragment + "' 2>/dev/null)");
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

  // The page on a screen of this size, which windows cannot be made as small as: `script` sees its
  // window as `frame` and its document as `page`, and what it gives becomes the title.
  std::string on_screen(int width, int height, const std::string& script) {
    const std::string frame = folder.path("frame.html");
    write_file(frame, "<iframe width=" + std::to_string(width) +
                          " height=" + std::to_string(height) + " style='border: 0' srcdoc=\"" +
                          cli::html_escaped(read_file(page)) +
                          "\"></iframe><script>addEventListener('load', () => {"
                          "const frame = frames[0], page = frame.document; document.title = (" +
                          script + ")(); })</script>");
    return opened(frame, "");
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

// Names and words as long as they come, and a search with many hits.
const char* const kFill =
    "() => {"
    "page.querySelector('h1 bdi').textContent = 'a_name_without_any_blank'.repeat(5);"
    "page.querySelector('.text').textContent = 'word'.repeat(100);"
    "page.querySelector('.failures li').append('cause'.repeat(50));"
    "page.getElementById('status').textContent = '1234 of 5678 on 987 pages';";

TEST_F(HtmlInBrowser, PhoneIsReadWithoutScrollingSideways) {
  for (const auto& [width, height] :
       {std::pair(360, 640), std::pair(320, 480), std::pair(640, 360), std::pair(1280, 800)}) {
    const std::string dom = on_screen(
        width, height,
        std::string(kFill) +
            "const root = page.documentElement, edge = root.clientWidth;"
            "const wide = [...page.querySelectorAll('header *, .picture, img, .text, h1, li')]"
            ".filter((item) => item.getBoundingClientRect().right > edge + 1);"
            "return `${root.scrollWidth <= frame.innerWidth && root.scrollWidth <= edge} "
            "${wide.map((item) => item.id || item.tagName + item.className)}`; }");
    EXPECT_TRUE(holds(dom, "<title>true </title>"))
        << width << dom.substr(dom.find("<title>"), 100);
  }
}

TEST_F(HtmlInBrowser, ToolsLeaveAPhoneItsScreen) {
  for (const auto& [width, height] : {std::pair(360, 640), std::pair(640, 360)}) {
    const std::string dom = on_screen(
        width, height,
        std::string(kFill) +
            "frame.scrollTo(0, 900);"
            "let covered = 0; while (covered < frame.innerHeight && "
            "!page.elementFromPoint(frame.innerWidth / 2, covered)?.closest('main')) ++covered;"
            "const query = page.getElementById('query').getBoundingClientRect();"
            "return `${covered < frame.innerHeight / 4} ${query.top >= 0}"
            " ${query.bottom <= covered} ${covered}`; }");
    EXPECT_TRUE(holds(dom, "<title>true true true ")) << dom.substr(dom.find("<title>"), 100);
  }
}

TEST_F(HtmlInBrowser, ArrowKeysGoThroughTheWords) {
  insert(
      "const svg = document.querySelector('svg'); svg.focus(); for (const key of"
      " ['ArrowRight', 'ArrowRight']) svg.dispatchEvent(new KeyboardEvent('keydown', {key}));");
  EXPECT_TRUE(holds(shown(""), ">Crossing, confidence 41 %, box 10, 50 – 60, 70</div>"));
}

}  // namespace
