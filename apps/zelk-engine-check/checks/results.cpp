// SPDX-License-Identifier: Apache-2.0
// Lines, characters and texts.
#include <fmt/format.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <optional>

#include "check.h"
#include "session.h"
#include "utf8.h"

namespace engine_check {
namespace {

constexpr unsigned char kUntouched = 0xA5;
constexpr int kMostLines = 100000;

void finds_text(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading reading = session.read(subject.page);
  if (reading.code != 0) verdict.fail(fmt::format("qv_recognize gives {}", reading.code));
  std::size_t characters = 0;
  for (const auto& line : reading.lines) characters += line.size();
  if (characters == 0) verdict.warn("no characters: try --image with a page that it can read");
  verdict.note(fmt::format("{} characters in {} lines", characters, reading.lines.size()));
}

void null_texts(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  if (!session.results(1).complete) verdict.fail("null before recognition");
  if (!session.read(subject.page).complete) verdict.fail("null after recognition");
  if (!session.read(uniform_page(100, 100, 255)).complete) verdict.fail("null on a white page");
  verdict.note("none");
}

void line_count(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  session.set_and_recognize(subject.page);
  const int count = session.engine().get_lines_num();
  if (count < 0 || count > kMostLines) verdict.fail(fmt::format("{} lines", count));
  verdict.note(fmt::format("{} lines", count));
}

void examine_steps(Session& session, int id, Verdict& verdict) {
  int asked = 0;
  const bool exists = session.engine().get_line_info_ex(id, nullptr, asked);
  if (!exists) verdict.fail(fmt::format("line {}: false in the first step", id));
  if (asked < 0) verdict.fail(fmt::format("line {}: {} characters", id, asked));
  if (asked <= 0 || asked > 1 << 20) return;
  const auto count = static_cast<std::size_t>(asked);
  constexpr std::size_t kGuards = 64;
  std::vector<OCR_CHAR> records(count + kGuards);
  std::memset(&records[count], kUntouched, kGuards * sizeof(OCR_CHAR));
  int filled = 0;
  if (!session.engine().get_line_info_ex(id, records.data(), filled)) {
    verdict.fail(fmt::format("line {}: false in the second step", id));
  }
  if (filled != asked) {
    verdict.fail(fmt::format("line {}: {} characters, then {}", id, asked, filled));
  }
  const auto* const guards = reinterpret_cast<const unsigned char*>(&records[count]);
  if (std::any_of(guards, guards + kGuards * sizeof(OCR_CHAR),
                  [](unsigned char byte) { return byte != kUntouched; })) {
    verdict.fail(fmt::format("line {}: written behind its {} records", id, asked));
  }
}

void line_steps(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  session.set_and_recognize(subject.page);
  const int count = session.engine().get_lines_num();
  for (int id = 0; count <= kMostLines && id < count; ++id) examine_steps(session, id, verdict);
  verdict.note(fmt::format("both steps agree on {} lines", count));
}

void line_range(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  session.set_and_recognize(subject.page);
  const int count = std::clamp(session.engine().get_lines_num(), 0, kMostLines);
  std::vector<OCR_CHAR> records(10000);
  for (const int id : {-1, count, count + 1, INT_MAX, INT_MIN}) {
    for (OCR_CHAR* const array : {static_cast<OCR_CHAR*>(nullptr), records.data()}) {
      int characters = 0;
      const bool exists = session.engine().get_line_info_ex(id, array, characters);
      if (exists || characters != 0) {
        verdict.fail(fmt::format("line {}: {} and {} characters", id, exists, characters));
      }
    }
  }
  verdict.note("false and 0 characters");
}

// Calls `function(line, character)` for every character of the page.
template <typename Function>
void for_each_character(const Reading& reading, Function function) {
  for (std::size_t line = 0; line < reading.lines.size(); ++line) {
    for (const OCR_CHAR& character : reading.lines[line]) function(line, character);
  }
}

void boxes(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const GreyPage& page = subject.page;
  for_each_character(session.read(page), [&](std::size_t line, const OCR_CHAR& box) {
    const bool inside =
        box.left >= 0 && box.left < page.width && box.bottom > 0 && box.bottom <= page.height;
    if (!inside) {
      verdict.fail(fmt::format("line {}: left edge {}, bottom {} on a page of {}x{}", line,
                               box.left, box.bottom, page.width, page.height));
    } else if (box.top >= box.bottom || box.left >= box.right) {
      verdict.fail(
          fmt::format("line {}: a box of {}x{}", line, box.right - box.left, box.bottom - box.top));
    }
  });
  verdict.note("all inside");
}

bool is_horizontal(const std::vector<OCR_CHAR>& line) {
  return line.size() > 1 &&
         line.back().left - line.front().left > line.back().bottom - line.front().bottom;
}

void shared_bottoms(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading reading = session.read(subject.bundled_page);
  for (std::size_t i = 0; i < reading.lines.size(); ++i) {
    const auto& line = reading.lines[i];
    if (!is_horizontal(line)) continue;
    const auto [low, high] = std::minmax_element(
        line.begin(), line.end(),
        [](const OCR_CHAR& a, const OCR_CHAR& b) { return a.bottom < b.bottom; });
    if (low->bottom != high->bottom) {
      verdict.warn(fmt::format("line {}: bottoms from {} to {}", i, low->bottom, high->bottom));
    }
  }
  verdict.note("one bottom in each line");
}

void codes(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  for_each_character(session.read(subject.page), [&](std::size_t line, const OCR_CHAR& character) {
    const std::uint16_t code = character.code;
    if (code < ' ' || (code >= 0x7F && code < 0xA0) || (code >= 0xD800 && code < 0xE000)) {
      verdict.fail(fmt::format("line {}: U+{:04X}", line, code));
    }
  });
  verdict.note("characters only");
}

// The bundled page has one column, so reading order is from top to bottom.
void line_order(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  std::optional<std::int64_t> before;
  const Reading reading = session.read(subject.bundled_page);
  for (std::size_t i = 0; i < reading.lines.size(); ++i) {
    if (reading.lines[i].empty()) continue;
    const std::int64_t bottom = reading.lines[i].front().bottom;
    if (before && bottom <= *before) {
      verdict.fail(fmt::format("line {} ends at {}, the one before it at {}", i, bottom, *before));
    }
    before = bottom;
  }
  verdict.note("from top to bottom");
}

// A text as the code units of lines, without white space.
std::u16string visible(const std::wstring& text) {
  std::u16string units;
  for (const wchar_t c : text) {
    if (c > ' ' && c != 0x3000 && c != 0xA0) {
      units.push_back(c > 0xFFFF ? u'\xFFFD' : static_cast<char16_t>(c));
    }
  }
  return units;
}

void lines_and_text(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading reading = session.read(subject.page);
  std::wstring characters;
  for_each_character(reading, [&](std::size_t, const OCR_CHAR& character) {
    characters.push_back(static_cast<wchar_t>(character.code));
  });
  const std::u16string lines = visible(characters);
  const std::u16string text = visible(reading.wide);
  if (lines != text) {
    const auto [a, b] = std::mismatch(lines.begin(), lines.end(), text.begin(), text.end());
    verdict.warn(fmt::format("{} characters and {}, different from number {} on", lines.size(),
                             text.size(), a - lines.begin()));
  }
  verdict.note(fmt::format("{} characters", lines.size()));
}

void narrow_and_wide(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading reading = session.read(subject.page);
  for (const wchar_t c : reading.wide) {
    if (c < 0 || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) {
      verdict.fail(fmt::format("{:#x} is not a code point", static_cast<std::uint32_t>(c)));
    }
  }
  const std::optional<std::wstring> decoded = from_utf8(reading.text);
  if (!decoded) {
    verdict.warn("the narrow text is not UTF-8");
  } else if (*decoded != reading.wide) {
    verdict.fail(fmt::format("{} code points in narrow text, {} in wide text", decoded->size(),
                             reading.wide.size()));
  }
  verdict.note(fmt::format("{} code points", reading.wide.size()));
}

void last_line_feed(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading reading = session.read(subject.page);
  if (!reading.text.empty() && reading.text.back() != '\n') {
    verdict.warn("the text of the next page would go on in the last line");
  }
  verdict.note(reading.text.empty() ? "no text" : "a line feed");
}

constexpr Check kChecks[] = {
    {"results.found", "characters on the page", finds_text},
    {"results.texts", "no null text, whatever went before", null_texts},
    {"results.line-count", "0 lines or more, within reason", line_count},
    {"results.line-steps", "as many characters in the second step as in the first", line_steps},
    {"results.line-range", "false and 0 characters for lines that do not exist", line_range},
    {"results.boxes", "left edges and bottoms inside the page, boxes with an area", boxes},
    {"results.bottoms", "one bottom for all characters of a line", shared_bottoms},
    {"results.codes", "code units of visible characters and blanks", codes},
    {"results.line-order", "lines in reading order", line_order},
    {"results.lines-and-text", "the same characters in lines and text", lines_and_text},
    {"results.narrow-and-wide", "the same text narrow (UTF-8) and wide", narrow_and_wide},
    {"results.line-feed", "a line feed at the end of the text", last_line_feed},
};

}  // namespace

std::span<const Check> result_checks() {
  return kChecks;
}

}  // namespace engine_check
