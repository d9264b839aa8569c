// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_source.h"

#include <fmt/format.h>

#include <cstdint>
#include <utility>

#include "worker/picture_resolution.h"

namespace cli {

PictureSource::PictureSource(const std::string& path, int format, const PageSettings& settings)
    : _file(path, format), _settings(settings) {}

int PictureSource::resolution(const PictureHeader& header) const {
  return _settings.dpi.value_or(picture_resolution(header));
}

DocumentPages::Size PictureSource::page_size(int index) {
  constexpr double kPointsPerInch = 72.0;
  constexpr int kFirstTurned = 5;
  try {
    const PictureHeader header = _file.header(index);
    const double points = kPointsPerInch / resolution(header);
    DocumentPages::Size size{header.width * points, header.height * points};
    if (header.orientation >= kFirstTurned) std::swap(size.width, size.height);
    return size;
  } catch (const UnreadablePage&) {
    return {};
  }
}

PreparedPage PictureSource::prepare(int index) {
  const PictureHeader header = _file.header(index);
  if (std::int64_t{header.width} * header.height > _settings.max_pixels) {
    throw UnreadablePage(fmt::format("the picture has {} x {} pixels, --max-pixels allows {}",
                                     header.width, header.height, _settings.max_pixels));
  }
  PreparedPage page;
  page.bitmap = _file.decode(index, header, page.damage);
  page.dots_per_inch = resolution(header);
  return page;
}

}  // namespace cli
