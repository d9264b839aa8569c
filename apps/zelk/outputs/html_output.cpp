// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>
#include <nettle/base64.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "exchange/files.h"
#include "exchange/names.h"
#include "outputs/html_files.h"
#include "outputs/output_file.h"
#include "outputs/outputs.h"
#include "outputs/page_reading.h"
#include "outputs/utf8_text.h"

namespace cli {
namespace {

using Values = std::map<std::string_view, std::function<void(OutputFile&)>>;

// Writes a template with its values. What a value writes is not looked through again.
void expand(std::string_view text, const Values& values, OutputFile& file) {
  for (;;) {
    const std::size_t mark = text.find('@');
    file.write(text.substr(0, mark));
    if (mark == std::string_view::npos) return;
    const std::size_t end = text.find('@', mark + 1);
    values.at(text.substr(mark + 1, end - mark - 1))(file);
    text.remove_prefix(end + 1);
  }
}

std::function<void(OutputFile&)> value(std::string text) {
  return [text = std::move(text)](OutputFile& file) { file.write(text); };
}

std::string shown(std::string_view text) {
  return html_escaped(displayable(text));
}

std::string base64(std::string_view bytes) {
  std::string text(BASE64_ENCODE_RAW_LENGTH(bytes.size()), '\0');
  base64_encode_raw(text.data(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
  return text;
}

// The policy admits the one script by its digest: text that passed for a script would not run.
std::string script_digest() {
  const std::string hexadecimal = digest_of_text(kScriptJs);
  std::string digest;
  for (std::size_t at = 0; at < hexadecimal.size(); at += 2) {
    digest += static_cast<char>(std::stoi(hexadecimal.substr(at, 2), nullptr, 16));
  }
  return base64(digest);
}

// Seven numbers a piece, for the script: start, length, left, top, right, bottom, confidence.
std::string numbers(const std::vector<PlacedText>& pieces) {
  std::string text = "[";
  for (const PlacedText& piece : pieces) {
    const auto& [left, top, right, bottom] = piece.box;
    text += fmt::format("{}{},{},{},{},{},{},{}", text.size() > 1 ? "," : "", piece.start,
                        piece.length, left, top, right, bottom, piece.confidence);
  }
  return text + "]";
}

std::string picture(const PageRecord& record) {
  if (record.jpeg.empty()) return "<p class=\"blank\">There is no picture of this page.</p>";
  return fmt::format(
      "<img src=\"data:image/jpeg;base64,{}\" width=\"{}\" height=\"{}\" alt=\"Picture of page "
      "{}\" "
      "loading=\"lazy\" decoding=\"async\">",
      base64(record.jpeg), record.width, record.height, record.page);
}

std::string notes(const PageRecord& record) {
  std::string text;
  if (!record.failure.empty()) {
    text += "<p class=\"failure\">This page failed: " + shown(record.failure) + "</p>\n";
  }
  if (!record.warning.empty()) text += "<p class=\"warning\">" + shown(record.warning) + "</p>\n";
  return text;
}

void write_section(const PageRecord& record, OutputFile& file) {
  const bool recognised = record.failure.empty();
  const PageReading page = recognised ? read_page(record) : PageReading();
  const bool sized = page.width > 0 && page.height > 0;
  const std::string language =
      page.language.empty() ? "" : fmt::format(" lang=\"{}\"", page.language);
  expand(kSectionHtml,
         {{"NUMBER", value(std::to_string(record.page))},
          {"WIDTH", value(std::to_string(sized ? page.width : std::max(record.width, 1)))},
          {"HEIGHT", value(std::to_string(sized ? page.height : std::max(record.height, 1)))},
          {"STATE", value(recognised ? "" : " failed")},
          {"NOTES", value(notes(record))},
          {"PICTURE", value(picture(record))},
          {"LANGUAGE", value(language)},
          {"TEXT", value(html_escaped(page.text))},
          {"BOXES", value(fmt::format(R"({{"words":{},"characters":{}}})", numbers(page.words),
                                      numbers(page.characters)))}},
         file);
}

struct Overview {
  int pages = 0;
  int failed = 0;
  std::string failures;  // list items
};

// Reads all records before any is written: the failed pages come first.
Overview look_over(const OutputOrder& order) {
  Overview overview;
  for_each_page(order, [&](const PageRecord& record) {
    ++overview.pages;
    if (record.failure.empty()) return;
    ++overview.failed;
    overview.failures += fmt::format("<li><a href=\"#page-{0}\">Page {0}</a>: {1}</li>\n",
                                     record.page, shown(record.failure));
  });
  return overview;
}

std::string counted(int count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string summary(const OutputOrder& order, const Overview& overview) {
  std::string text = counted(overview.pages, "page");
  if (overview.pages != order.page_count) text += fmt::format(" of {}", order.page_count);
  if (overview.failed > 0) text += fmt::format(", {} failed", overview.failed);
  return text;
}

std::string failures(const Overview& overview) {
  if (overview.failed == 0) return "";
  return fmt::format(
      "<nav class=\"failures\" aria-label=\"Failed pages\">\n<h2>{} failed</h2>\n<ul>\n{}</ul>\n"
      "</nav>\n",
      counted(overview.failed, "page"), overview.failures);
}

}  // namespace

void write_html(const OutputOrder& order, const std::string& path, const Progress& progress) {
  const Overview overview = look_over(order);
  // Pages are passed on: where the document lay is nobody's business.
  const std::string base = std::filesystem::path(order.file).filename().string();
  const std::string name = base == "-" ? "standard input" : shown_name(base).text;
  OutputFile file(path);
  const auto write_pages = [&](OutputFile& out) {
    for_each_page(order, [&](const PageRecord& record) {
      write_section(record, out);
      if (progress) progress();
    });
  };
  expand(kPageHtml,
         {{"NAME", value(shown(name))},
          {"DIGEST", value(script_digest())},
          {"STYLE", value(std::string(kStyleCss))},
          {"SUMMARY", value(summary(order, overview))},
          {"FAILURES", value(failures(overview))},
          {"PAGES", write_pages},
          {"SCRIPT", value(std::string(kScriptJs))}},
         file);
  file.finish();
}

}  // namespace cli
