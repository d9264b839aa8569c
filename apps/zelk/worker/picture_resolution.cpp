// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_resolution.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace cli {
namespace {

constexpr double kMetersPerInch = 0.0254;
constexpr int kUnknownResolution = 72;

struct Sheet {
  double width;   // pixels at 300 dots per inch
  double height;  // pixels at 300 dots per inch
};

constexpr Sheet kSheets[] = {
    {1748, 2480},  // A5
    {2480, 3508},  // A4
    {3508, 4961},  // A3
    {2550, 3300},  // letter
    {2550, 4200},  // legal
    {3300, 5100},  // tabloid
};

bool is_near(double pixels, double sheet) {
  constexpr double kMargin = 0.03;
  return std::abs(pixels - sheet) <= kMargin * sheet;
}

bool looks_scanned(const PictureHeader& header) {
  const double shorter = std::min(header.width, header.height);
  const double longer = std::max(header.width, header.height);
  return std::any_of(std::begin(kSheets), std::end(kSheets), [=](const Sheet& sheet) {
    return is_near(shorter, sheet.width) && is_near(longer, sheet.height);
  });
}

}  // namespace

int picture_resolution(const PictureHeader& header) {
  constexpr double kLeast = 36.0;
  constexpr double kMost = 2400.0;
  const double own = std::round(header.dots_per_meter * kMetersPerInch);
  if (own >= kLeast && own <= kMost && own != kUnknownResolution) return static_cast<int>(own);
  return looks_scanned(header) ? 300 : 200;
}

}  // namespace cli
