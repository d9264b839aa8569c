// SPDX-License-Identifier: Apache-2.0
// The page that is examined when none is given: capitals drawn with a round pen.
#include <algorithm>
#include <cmath>
#include <string_view>

#include "grey_page.h"

namespace engine_check {
namespace {

constexpr std::string_view kLines[] = {"THE QUICK BROWN FOX JUMPS", "OVER THE LAZY DOG WHILE",
                                       "FIVE WIZARDS HUM QUIETLY", "BESIDE A FROZEN LAKE AND",
                                       "WAIT FOR EARLY SPRING"};

// Strokes of A to Z, separated by blanks: points as pairs of digits, x from 0 to 4 and y from 0
// (top) to 6.
constexpr std::string_view kLetters[] = {"062046 1434",
                                         "0006 003041423303 3344453606",
                                         "4130100105163645",
                                         "00062644422000",
                                         "40000646 0333",
                                         "400006 0333",
                                         "413010010516364543 4323",
                                         "0006 4046 0343",
                                         "1030 2026 1636",
                                         "4045361605",
                                         "0006 400346",
                                         "000646",
                                         "0600234046",
                                         "06004640",
                                         "103041453616050110",
                                         "06003041423303",
                                         "103041453616050110 2446",
                                         "06003041423303 2346",
                                         "413010010213334445361605",
                                         "0040 2026",
                                         "000516364540",
                                         "002640",
                                         "0016233640",
                                         "0046 4006",
                                         "002340 2326",
                                         "00400646"};

constexpr double kUnit = 6;  // pixels; letters are 4 units wide and 6 high
constexpr double kPen = 2.5;
constexpr double kMargin = 50;
constexpr double kLinePitch = 75;

struct Point {
  double x;
  double y;
};

double distance(Point p, Point a, Point b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double along = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

void draw_line(GreyPage& page, Point a, Point b) {
  const auto low = [](double u, double v) { return static_cast<int>(std::min(u, v) - kPen - 1); };
  const auto high = [](double u, double v) { return static_cast<int>(std::max(u, v) + kPen + 1); };
  for (int y = low(a.y, b.y); y <= high(a.y, b.y); ++y) {
    for (int x = low(a.x, b.x); x <= high(a.x, b.x); ++x) {
      const double outside = distance({x + 0.5, y + 0.5}, a, b) - kPen;
      const auto grey = static_cast<std::uint8_t>(255 * std::clamp(outside + 0.5, 0.0, 1.0));
      auto& pixel = page.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(page.width) +
                                static_cast<std::size_t>(x)];
      pixel = std::min(pixel, grey);
    }
  }
}

void draw_letter(GreyPage& page, std::string_view strokes, Point origin) {
  const auto point = [&](std::size_t i) {
    return Point{origin.x + kUnit * (strokes[i] - '0'), origin.y + kUnit * (strokes[i + 1] - '0')};
  };
  for (std::size_t i = 0; i + 3 < strokes.size();) {
    if (strokes[i + 2] == ' ') {
      i += 3;  // the last point of a stroke
    } else {
      draw_line(page, point(i), point(i + 2));
      i += 2;
    }
  }
}

}  // namespace

GreyPage bundled_page() {
  GreyPage page = uniform_page(1000, 460, 255);
  Point origin{kMargin, kMargin};
  for (const std::string_view line : kLines) {
    for (const char letter : line) {
      if (letter != ' ') draw_letter(page, kLetters[letter - 'A'], origin);
      origin.x += 6 * kUnit;
    }
    origin = {kMargin, origin.y + kLinePitch};
  }
  return page;
}

}  // namespace engine_check
