// SPDX-License-Identifier: Apache-2.0
#include "cells.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "script.h"

namespace tesseract_engine {
namespace {

// One character as printed.
struct Glyph {
  Box box;
  bool wide;   // set in a square
  bool solid;  // fills its square: Han characters do, East Asian punctuation does not
  bool blank_before;
  std::u32string text;
  double centre() const { return (box.left + box.right) / 2.0; }
};

// Neighbouring characters of one kind without a blank between them.
struct Run {
  bool wide = false;
  bool blank_before = false;
  std::vector<Glyph> glyphs;
  double left = 0;
  double right = 0;
  double half_ems = 0;  // what the glyphs of the font measure together
  double width() const { return right - left; }
};

// Quotation marks, dashes and dots that both scripts use.
bool is_shared_punctuation(char32_t code) {
  return code == 0xB7 || (code >= 0x2014 && code <= 0x2026);
}

std::vector<Glyph> glyphs_of(const Line& line) {
  std::vector<Glyph> glyphs;
  const Word* before = nullptr;
  for (const Word& word : line.words) {
    bool blank = before != nullptr && blank_between(*before, word);
    for (const Character& character : word.characters) {
      const std::u32string text = letters(character);
      if (text.empty()) continue;
      const bool wide = is_wide(text.front());
      const bool solid = wide && !is_wide_punctuation(text.front());
      glyphs.push_back({character.box, wide, solid, blank, text});
      blank = false;
    }
    before = &word;
  }
  // Shared punctuation is set in a square beside Han characters.
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    if (!is_shared_punctuation(glyphs[i].text.front())) continue;
    const bool after_wide = i > 0 && glyphs[i - 1].wide && !glyphs[i].blank_before;
    const bool before_wide =
        i + 1 < glyphs.size() && glyphs[i + 1].wide && !glyphs[i + 1].blank_before;
    glyphs[i].wide = after_wide || before_wide;
  }
  return glyphs;
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Distances from one Han character to the next. Boxes of single characters are as uncertain as the
// gaps round them, and those of punctuation lie anywhere in their squares.
void add_steps(const std::vector<Glyph>& glyphs, std::vector<double>& steps) {
  for (std::size_t i = 1; i < glyphs.size(); ++i) {
    const Glyph& a = glyphs[i - 1];
    const Glyph& b = glyphs[i];
    if (!a.solid || !b.solid || b.blank_before) continue;
    if (b.centre() > a.centre()) steps.push_back(b.centre() - a.centre());
  }
}

// What any two Han characters of a run tell of its pitch. The farther apart they are, the less the
// uncertainty of their boxes matters.
std::vector<double> pitches(const std::vector<Glyph>& glyphs, double widest_gap) {
  constexpr std::size_t kFarthest = 50;
  std::vector<double> result;
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    if (!glyphs[i].solid) continue;
    const std::size_t end = std::min(glyphs.size(), i + kFarthest);
    for (std::size_t j = i + 1; j < end; ++j) {
      const Glyph& other = glyphs[j];
      const int gap = other.box.left - glyphs[j - 1].box.right;
      if (!other.wide || other.blank_before || gap > widest_gap) break;
      const double distance = other.centre() - glyphs[i].centre();
      if (other.solid && distance > 0) result.push_back(distance / static_cast<double>(j - i));
    }
  }
  return result;
}

// The pitch of the line's Han characters: its own, else that of the page, if it fits the line.
double pitch_of(const std::vector<Glyph>& glyphs, const Line& line, double page_pitch) {
  constexpr double kWidest = 2.5;  // line heights
  const double height = std::max(1, line.box.bottom - line.box.top);
  std::vector<double> own = pitches(glyphs, height);
  if (!own.empty()) {
    const double pitch = std::max(1.0, median(own));
    if (pitch < kWidest * height) return pitch;
  }
  return page_pitch > 0.6 * height && page_pitch < kWidest * height ? page_pitch : height;
}

// A gap of more than a character inside Han text (a tabulator, a column) ends the run. Boxes may be
// narrower than what they hold, and much of a punctuation mark's square is empty.
bool continues(const Run& run, const Glyph& glyph, double pitch) {
  if (glyph.blank_before || glyph.wide != run.wide) return false;
  const double widest = run.glyphs.back().solid && glyph.solid ? 1.25 : 1.5;
  return !run.wide || glyph.box.left - run.right < widest * pitch;
}

// Glyphs of the font: an em for whatever GBK holds in two bytes, half an em for the rest.
double half_ems(const Glyph& glyph) {
  double sum = 0;
  for (const char32_t code : glyph.text) sum += glyph.wide || takes_two_bytes_in_gbk(code) ? 2 : 1;
  return sum;
}

std::vector<Run> runs_of(const std::vector<Glyph>& glyphs, double pitch) {
  std::vector<Run> runs;
  for (const Glyph& glyph : glyphs) {
    if (runs.empty() || !continues(runs.back(), glyph, pitch)) {
      Run run;
      run.wide = glyph.wide;
      run.blank_before = glyph.blank_before;
      run.left = glyph.box.left;
      run.right = glyph.box.right;
      runs.push_back(run);
    }
    Run& run = runs.back();
    run.glyphs.push_back(glyph);
    run.left = std::min<double>(run.left, glyph.box.left);
    run.right = std::max<double>(run.right, glyph.box.right);
    run.half_ems += half_ems(glyph);
  }
  return runs;
}

// Lays the squares of a Han run where its characters are.
void align_wide_runs(std::vector<Run>& runs, double pitch) {
  for (Run& run : runs) {
    if (!run.wide) continue;
    std::vector<double> starts;
    for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
      if (run.glyphs[i].solid) {
        starts.push_back(run.glyphs[i].centre() - (static_cast<double>(i) + 0.5) * pitch);
      }
    }
    const double width = pitch * static_cast<double>(run.glyphs.size());
    run.left = starts.empty() ? (run.left + run.right - width) / 2 : median(starts);
    run.right = run.left + width;
  }
}

// Where the next run begins at the earliest, so that every character has a place of its own before
// it: behind half of the last square, or a quarter of the letters' usual width.
double least_end(const Run& run, double pitch) {
  return run.wide ? run.right - pitch / 2 : run.left + run.half_ems * pitch / 8;
}

bool is_loose(const Run& run) {
  return !run.wide ||
         std::none_of(run.glyphs.begin(), run.glyphs.end(), [](const Glyph& g) { return g.solid; });
}

// Boxes of punctuation may lie anywhere, even beyond those of the next characters, whereas readers
// of a PDF take the characters of a line from left to right. A run too late for the next one is
// moved back as far as the one before allows; then the next one gives way.
void keep_order(std::vector<Run>& runs, double pitch) {
  double end_before = 0;
  for (std::size_t i = 1; i < runs.size(); ++i) {
    Run& a = runs[i - 1];
    Run& b = runs[i];
    const double shortage = least_end(a, pitch) - b.left;
    if (shortage > 0) {
      const double back = is_loose(a) ? std::clamp(a.left - end_before, 0.0, shortage) : 0.0;
      const double on = shortage - back;
      a.left -= back;
      a.right -= back;
      b.left += on;
      b.right = b.wide ? b.right + on : std::max(b.right, b.left + 1);
    }
    end_before = a.right;
  }
}

// Moves the Latin side of each seam to the edge of the Han side, if that leaves the Latin run at
// least half of its width and no more than a Han character wider.
void close_seams(std::vector<Run>& runs, double pitch) {
  for (std::size_t i = 1; i < runs.size(); ++i) {
    Run& a = runs[i - 1];
    Run& b = runs[i];
    if (b.blank_before || a.wide == b.wide) continue;
    Run& latin = a.wide ? b : a;
    const double moved = a.wide ? b.right - a.right : b.left - a.left;
    if (moved < latin.width() / 2 || moved > latin.width() + pitch) continue;
    (a.wide ? b.left : a.right) = a.wide ? a.right : b.left;
  }
}

// The size of the line's type: the pitch of its Han characters, else what its words suggest.
double em_of(const std::vector<Run>& runs, double pitch) {
  std::vector<double> ems;
  for (const Run& run : runs) {
    if (run.wide) return pitch;
    const double em = 2 * run.width() / run.half_ems;
    ems.insert(ems.end(), run.glyphs.size(), em);
  }
  return ems.empty() ? pitch : median(ems);
}

// Readers of a PDF take text of very different sizes for text of different lines, so words of
// narrow or wide letters stay near the size of the line.
double near_em(double size, double em) {
  return std::clamp(size, 0.8 * em, 1.25 * em);
}

// They also take a blank for one by its width, so a word leaves that much of the way to the next.
constexpr double kLeastBlank = 0.2;  // ems

// The size at which a Latin run is set: its letters share its width, as far as the line allows.
double latin_size(const Run& run, const Run* next, double em) {
  const double size = near_em(2 * run.width() / run.half_ems, em);
  if (next == nullptr) return size;
  const double end = next->left - (next->blank_before ? kLeastBlank * em : 0);
  return std::max(1.0, std::min(size, 2 * (end - run.left) / run.half_ems));
}

// The bottom of the line, but for what hangs far below most of its characters: drawings beside the
// text are read as characters of several lines' height.
int bottom_of(const std::vector<Glyph>& glyphs, const Line& line, double em) {
  std::vector<double> bottoms;
  bottoms.reserve(glyphs.size());
  for (const Glyph& glyph : glyphs) bottoms.push_back(glyph.box.bottom);
  if (bottoms.empty()) return line.box.bottom;
  const double lowest = median(bottoms) + em / 2;
  if (line.box.bottom <= lowest) return line.box.bottom;
  int bottom = 0;
  for (const Glyph& glyph : glyphs) {
    if (glyph.box.bottom <= lowest) bottom = std::max(bottom, glyph.box.bottom);
  }
  return bottom;
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

// Appends the cells of a run and returns where they end.
double append_run(std::vector<OCR_CHAR>& cells, const Run& run, double size, int bottom) {
  double left = run.left;
  for (const Glyph& glyph : run.glyphs) {
    const double advance = half_ems(glyph) * size / 2 / static_cast<double>(glyph.text.size());
    for (const char32_t code : glyph.text) {
      cells.push_back(cell(left, left + advance, bottom, size, code));
      left += advance;
    }
  }
  return left;
}

std::vector<OCR_CHAR> horizontal_cells(const Line& line, double page_pitch) {
  const std::vector<Glyph> glyphs = glyphs_of(line);
  const double pitch = pitch_of(glyphs, line, page_pitch);
  std::vector<Run> runs = runs_of(glyphs, pitch);
  align_wide_runs(runs, pitch);
  const double em = em_of(runs, pitch);
  keep_order(runs, em);
  close_seams(runs, pitch);

  const int bottom = bottom_of(glyphs, line, em);
  std::vector<OCR_CHAR> cells;
  double end = 0;
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const Run* const next = i + 1 < runs.size() ? &runs[i + 1] : nullptr;
    if (runs[i].blank_before && i > 0) {
      const double gap = std::max(1.0, runs[i].left - end);
      cells.push_back(cell(runs[i].left - gap, runs[i].left, bottom, std::min(2 * gap, em), U' '));
    }
    const double size = runs[i].wide ? pitch : latin_size(runs[i], next, em);
    end = append_run(cells, runs[i], size, bottom);
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

double han_pitch(const std::vector<Block>& blocks) {
  std::vector<double> steps;
  for (const Block& block : blocks) {
    for (const Line& line : block.lines) {
      if (!line.vertical) add_steps(glyphs_of(line), steps);
    }
  }
  return steps.empty() ? 0 : median(steps);
}

std::vector<OCR_CHAR> advance_cells(const Line& line, double page_pitch) {
  return line.vertical ? vertical_cells(line) : horizontal_cells(line, page_pitch);
}

}  // namespace tesseract_engine
