// SPDX-License-Identifier: Apache-2.0
#include "cells.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "script.h"

namespace tesseract_engine {
namespace {

constexpr double kLeastBlank = 0.2;  // in Han characters; narrower gaps are not read back

// Neighbouring characters of one kind without a blank between them.
struct Run {
  bool wide = false;
  bool blank_before = false;
  double left = 0;
  double right = 0;
  std::u32string text;
  std::vector<double> starts;  // where the run would start, judged by each of its ideographs
  double width() const { return right - left; }
};

// One character as printed, before runs are formed.
struct Glyph {
  Box box;
  bool wide;
  bool blank_before;
  std::u32string text;
};

std::vector<Glyph> glyphs_of(const Line& line) {
  std::vector<Glyph> glyphs;
  const Word* before = nullptr;
  for (const Word& word : line.words) {
    bool blank = before != nullptr && blank_between(*before, word);
    for (const Character& character : word.characters) {
      const std::u32string text = letters(character);
      if (text.empty()) continue;
      glyphs.push_back({character.box, is_wide(text.front()), blank, text});
      blank = false;
    }
    before = &word;
  }
  return glyphs;
}

// Ideographs fill the middle of their cells, punctuation marks a corner: the former say where cells
// lie.
bool is_ideograph(const Glyph& glyph) {
  return glyph.wide && !is_wide_punctuation(glyph.text.front());
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double centre(const Box& box) {
  return (box.left + box.right) / 2.0;
}

// The distance from one ideograph to the next: the median over the line, since boxes of single
// characters are as uncertain as the gaps round them.
double pitch_of(const std::vector<Glyph>& glyphs, const Line& line) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < glyphs.size(); ++i) {
    const Glyph& a = glyphs[i - 1];
    const Glyph& b = glyphs[i];
    if (!is_ideograph(a) || !is_ideograph(b) || b.blank_before) continue;
    const double step = centre(b.box) - centre(a.box);
    if (step > 0) steps.push_back(step);
  }
  return steps.empty() ? std::max(1, line.box.bottom - line.box.top)
                       : std::max(1.0, median(std::move(steps)));
}

// A gap of more than a character inside Han text (a tabulator, a column) ends the run.
bool continues(const Run& run, const Glyph& glyph, double pitch) {
  if (glyph.blank_before || glyph.wide != run.wide) return false;
  return !run.wide || glyph.box.left - run.right < pitch;
}

std::vector<Run> runs_of(const std::vector<Glyph>& glyphs, double pitch) {
  std::vector<Run> runs;
  for (const Glyph& glyph : glyphs) {
    if (runs.empty() || !continues(runs.back(), glyph, pitch)) {
      runs.push_back({glyph.wide,
                      glyph.blank_before,
                      static_cast<double>(glyph.box.left),
                      static_cast<double>(glyph.box.right),
                      {},
                      {}});
    }
    Run& run = runs.back();
    if (is_ideograph(glyph)) {
      run.starts.push_back(centre(glyph.box) -
                           pitch * (static_cast<double>(run.text.size()) + 0.5));
    }
    run.left = std::min<double>(run.left, glyph.box.left);
    run.right = std::max<double>(run.right, glyph.box.right);
    run.text += glyph.text;
  }
  return runs;
}

void place_wide_runs(std::vector<Run>& runs, double pitch) {
  for (Run& run : runs) {
    if (!run.wide) continue;
    const double width = pitch * static_cast<double>(run.text.size());
    run.left = run.starts.empty() ? (run.left + run.right - width) / 2 : median(run.starts);
    run.right = run.left + width;
  }
}

// Where two runs meet without a blank, the Latin one is moved to the edge of the other; where there
// is a blank, a gap is kept for it. A run keeps at least half of its width.
void settle_edges(std::vector<Run>& runs, double pitch) {
  for (std::size_t i = 1; i < runs.size(); ++i) {
    Run& a = runs[i - 1];
    Run& b = runs[i];
    const double gap = b.left - a.right;
    const double wanted = b.blank_before ? kLeastBlank * pitch : 0;
    if (b.blank_before ? gap >= wanted : gap > pitch) continue;
    double edge = (a.right + b.left) / 2;
    if (a.wide != b.wide) edge = a.wide ? a.right + wanted / 2 : b.left - wanted / 2;
    edge = std::max(std::min(edge, b.right - b.width() / 2), a.left + a.width() / 2);
    a.right = edge - wanted / 2;
    b.left = edge + wanted / 2;
  }
}

std::uint16_t code_unit(char32_t code) {
  return static_cast<std::uint16_t>(code > 0xFFFF ? 0xFFFD : code);
}

OCR_CHAR cell(double left, double right, int bottom, double height, char32_t code) {
  OCR_CHAR out{};
  out.left = std::llround(left);
  out.right = std::max<std::int64_t>(out.left + 1, std::llround(right));
  out.bottom = bottom;
  out.top = bottom - std::max<std::int64_t>(1, std::llround(height));
  out.code = code_unit(code);
  return out;
}

void append_run(std::vector<OCR_CHAR>& cells, const Run& run, int bottom) {
  const double advance = run.width() / static_cast<double>(run.text.size());
  double left = run.left;
  for (const char32_t code : run.text) {
    cells.push_back(cell(left, left + advance, bottom, run.wide ? advance : 2 * advance, code));
    left += advance;
  }
}

std::vector<OCR_CHAR> horizontal_cells(const Line& line) {
  const std::vector<Glyph> glyphs = glyphs_of(line);
  const double pitch = pitch_of(glyphs, line);
  std::vector<Run> runs = runs_of(glyphs, pitch);
  place_wide_runs(runs, pitch);
  settle_edges(runs, pitch);

  std::vector<OCR_CHAR> cells;
  const Run* before = nullptr;
  for (const Run& run : runs) {
    if (run.blank_before && before != nullptr) {
      const double gap = std::max(1.0, run.left - before->right);
      cells.push_back(cell(run.left - gap, run.left, line.box.bottom, 2 * gap, U' '));
    }
    append_run(cells, run, line.box.bottom);
    before = &run;
  }
  return cells;
}

std::vector<OCR_CHAR> vertical_cells(const Line& line) {
  std::u32string text;
  for (const Word& word : line.words) {
    for (const Character& character : word.characters) text += letters(character);
  }
  std::vector<OCR_CHAR> cells;
  const double side = (line.box.bottom - line.box.top) / static_cast<double>(text.size());
  const double left = (line.box.left + line.box.right - side) / 2;
  double bottom = line.box.top;
  for (const char32_t code : text) {
    bottom += side;
    cells.push_back(cell(left, left + side, static_cast<int>(std::lround(bottom)), side, code));
  }
  return cells;
}

}  // namespace

std::vector<OCR_CHAR> advance_cells(const Line& line) {
  return line.vertical ? vertical_cells(line) : horizontal_cells(line);
}

}  // namespace tesseract_engine
