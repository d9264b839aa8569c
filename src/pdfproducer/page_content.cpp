// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/page_content.h"

#include <algorithm>
#include <cmath>

#include "pdfproducer/number_text.h"
#include "pdfproducer/text_font.h"

namespace zelk::pdf {

namespace {

constexpr double kFarthest = 1e7;  // points
// Points that a character may be off its place: at the start of a run, and within one, where
// adjusting for less than engines round to would take as much room as the text.
constexpr double kTolerance = 0.01;
constexpr double kToleranceWithinRun = 0.2;
constexpr double kSmallest = 1e-4;  // points, of a font
constexpr int kLengthDecimals = 4;

std::int64_t hundredths(double points) {
  return std::llround(std::clamp(points, -kFarthest, kFarthest) * 100);
}

std::string hundredths_text(std::int64_t value) {
  return number_text(static_cast<double>(value) / 100, 2);
}

}  // namespace

PageContent::Quantum PageContent::quantum(double size) {
  const int decimals = size < 1 ? 4 : 2;
  const double unit = decimals == 4 ? 1e4 : 1e2;
  const double rounded = std::round(std::clamp(size, kSmallest, kFarthest) * unit) / unit;
  return {rounded, decimals};
}

void PageContent::set_fill_color(double red, double green, double blue) {
  end_run();
  for (const double component : {red, green, blue}) _content += number_text(component, 3) + ' ';
  _content += "rg\n";
}

void PageContent::move_to(double x, double y) {
  _wanted_x = x;
  _wanted_y = hundredths(y);
}

void PageContent::show(const GbkCharacter& character) {
  begin_text();
  select_font(TextFont::resource_name(character.plane));
  place();
  if (!character.is_half_width()) append(static_cast<char>(character.code >> 8));
  append(static_cast<char>(character.code & 0xFF));
  const double advance = TextFont::width(character) * _size.value;
  _pen += advance;
  _wanted_x += advance;
}

void PageContent::begin_text() {
  if (_in_text) return;
  _content += "BT\n";
  _in_text = true;
  _line_x = _line_y = 0;
  _pen = 0;
}

void PageContent::end_text() {
  if (!_in_text) return;
  end_run();
  _content += "ET\n";
  _in_text = false;
}

void PageContent::select_font(const char* resource) {
  if (_font == resource && _size == _wanted_size) return;
  end_run();
  _font = resource;
  _size = _wanted_size;
  _content += std::string(resource) + ' ' + number_text(_size.value, _size.decimals) + " Tf\n";
}

// Within a line an adjustment in thousandths of the size is the shortest way; anything farther off
// starts a line of its own, which extractors read as a new piece of text.
void PageContent::place() {
  const double ahead = _wanted_x - _pen;
  if (_wanted_y != _line_y || std::abs(ahead) > _size.value) {
    end_run();
    const std::int64_t x = hundredths(_wanted_x);
    _content += hundredths_text(x - _line_x) + ' ' + hundredths_text(_wanted_y - _line_y) + " Td\n";
    _line_x = x;
    _line_y = _wanted_y;
    _pen = static_cast<double>(x) / 100;
  } else if (std::abs(ahead) > (_in_string ? kToleranceWithinRun : kTolerance)) {
    const double thousandths = std::round(-1000 * ahead / _size.value);
    if (thousandths == 0) return;
    if (_in_string) _run += ')';
    _in_string = false;
    _run += number_text(thousandths, 0);
    _adjusted = true;
    _pen -= thousandths * _size.value / 1000;
  }
}

void PageContent::append(char byte) {
  if (!_in_string) _run += '(';
  _in_string = true;
  if (byte == '(' || byte == ')' || byte == '\\') _run += '\\';
  _run += byte;
}

void PageContent::end_run() {
  if (_run.empty()) return;
  _content += _adjusted ? '[' + _run + ")]TJ\n" : _run + ")Tj\n";
  _run.clear();
  _in_string = false;
  _adjusted = false;
}

void PageContent::paint_image(std::string_view name, double x, double y, double width,
                              double height) {
  end_text();
  _content += "q " + number_text(width, kLengthDecimals) + " 0 0 " +
              number_text(height, kLengthDecimals) + ' ' + number_text(x, kLengthDecimals) + ' ' +
              number_text(y, kLengthDecimals) + " cm";
  _content.append(name).append(" Do Q\n");
}

std::string PageContent::finish() {
  end_text();
  return std::move(_content);
}

}  // namespace zelk::pdf
