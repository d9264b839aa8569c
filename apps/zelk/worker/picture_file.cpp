// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_file.h"

#include <FreeImage.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <new>

#include "readers/netpbm_header.h"
#include "worker/decoder_messages.h"
#include "worker/gif_header.h"
#include "worker/input_file.h"
#include "worker/jpeg_messages.h"
#include "worker/libtiff_page.h"
#include "worker/memory_limit.h"
#include "worker/picture_damage.h"
#include "worker/picture_preparation.h"

namespace cli {
namespace {

// Why a decoder gave nothing.
std::string refusal(const std::string& path, int format) {
  const std::string damage = picture_damage(path, format);
  return "the content is not a picture that can be decoded" + (damage.empty() ? "" : ": " + damage);
}

bool is_impossible(int format, const std::string& path) {
  const InputFile file = open_input(path);
  return file == nullptr || is_impossible_netpbm(format, file.get());
}

int exif_orientation(FIBITMAP* header) {
  FITAG* tag = nullptr;
  if (!FreeImage_GetMetadata(FIMD_EXIF_MAIN, header, "Orientation", &tag)) return 1;
  if (FreeImage_GetTagType(tag) != FIDT_SHORT || FreeImage_GetTagCount(tag) != 1) return 1;
  const WORD value = *static_cast<const WORD*>(FreeImage_GetTagValue(tag));
  return value >= 1 && value <= 8 ? value : 1;
}

PictureHeader read_header(FIBITMAP* header) {
  PictureHeader result;
  result.width = FreeImage_GetWidth(header);
  result.height = FreeImage_GetHeight(header);
  result.dots_per_meter =
      std::max(FreeImage_GetDotsPerMeterX(header), FreeImage_GetDotsPerMeterY(header));
  result.orientation = exif_orientation(header);
  return result;
}

// FreeImage decodes GIF files at once when asked for their header.
PictureHeader gif_header(const std::string& path) {
  const std::optional<GifSize> size = first_picture_size(path);
  if (!size) throw UnreadablePage(refusal(path, FIF_GIF));
  PictureHeader result;
  result.width = size->width;
  result.height = size->height;
  return result;
}

// Their decoders ask for no more bytes than the pixels take.
constexpr FREE_IMAGE_FORMAT kPlainFormats[] = {
    FIF_BMP, FIF_PBM, FIF_PBMRAW, FIF_PGM, FIF_PGMRAW, FIF_PPM, FIF_PPMRAW,
};

bool is_plain(int format) {
  return std::find(std::begin(kPlainFormats), std::end(kPlainFormats), format) !=
         std::end(kPlainFormats);
}

}  // namespace

PictureFile::PictureFile(const std::string& path, int format) : _path(path), _format(format) {
  if (format == FIF_BMP) _bmp = read_bmp_header(path);
  if (format != FIF_TIFF) return;
  _tags = read_tiff_tags(path);
  _picture_count = static_cast<int>(_tags.size());
  if (_tags.empty()) throw UnreadableDocument(refusal(path, format), false);
}

PictureStream PictureFile::stream() const {
  return PictureStream(_path, _bmp ? _bmp->start : ReplacedStart());
}

PictureStream PictureFile::stream(const TiffTags& tags) const {
  return PictureStream(_path, start_at_directory(_path, tags.place));
}

PictureHeader PictureFile::header(int index) const {
  const DamageWatch quiet;
  if (_format == FIF_TIFF) return tiff_header(_tags.at(static_cast<std::size_t>(index)));
  return plain_header();
}

PictureHeader PictureFile::plain_header() const {
  if (_format == FIF_GIF) return gif_header(_path);
  if (is_impossible(_format, _path)) throw UnreadablePage(refusal(_path, _format));
  const PageBitmap header = stream().load(_format, FIF_LOAD_NOPIXELS);
  if (header == nullptr) throw UnreadablePage(refusal(_path, _format));
  PictureHeader result = read_header(header.get());
  result.is_opaque = _bmp && _bmp->masks && _bmp->masks->back() == 0;
  return result;
}

PictureHeader PictureFile::tiff_header(const TiffTags& tags) const {
  PictureHeader result;
  if (const PageBitmap page = stream(tags).load(FIF_TIFF, FIF_LOAD_NOPIXELS)) {
    result = read_header(page.get());
  } else if (const auto header = libtiff_header(_path, tags.place)) {
    result = *header;
  } else {
    throw UnreadablePage(refusal(_path, _format));
  }
  // Where a page has no resolution FreeImage gives 300 dots per inch, and of its orientation
  // nothing. Where it does not say how many samples a pixel has FreeImage takes its neighbour for
  // the alpha of a grey one.
  if (!tags.has_resolution) result.dots_per_meter = 0;
  result.orientation = orientation_left_to_apply(tags);
  result.white_is_zero = tags.photometric == TiffTags::kWhiteIsZero;
  result.is_opaque = tags.samples == 1;
  return result;
}

PageBitmap PictureFile::decode(int index, const PictureHeader& header, std::string& damage) const {
  const DamageWatch watch;
  PageBitmap bitmap = _format == FIF_TIFF
                          ? decode_tiff(_tags.at(static_cast<std::size_t>(index)), header)
                          : decode_plain(header, damage);
  if (_format == FIF_JPEG && watch.heard_any() && watch.damage().empty()) {
    repeat_jpeg_messages(_path);
  }
  if (!watch.damage().empty()) {
    damage = fmt::format("part of the picture is missing or damaged ({})", watch.damage());
  }
  return bitmap;
}

// Decoders give nothing too when memory is short.
void PictureFile::fail_to_decode(const PictureHeader& header) const {
  constexpr std::uint64_t kBytesPerPixel = 3;
  if (limit_forbids(std::uint64_t{header.width} * header.height * kBytesPerPixel)) {
    throw std::bad_alloc();
  }
  throw UnreadablePage(refusal(_path, _format));
}

PageBitmap PictureFile::decode_plain(const PictureHeader& header, std::string& damage) const {
  PictureStream file = stream();
  const PageBitmap bitmap = file.load(_format, 0);
  if (bitmap == nullptr) fail_to_decode(header);
  if (is_plain(_format) && file.ended_early()) {
    damage = "part of the picture is missing (the file ends too early)";
  }
  if (_bmp && _bmp->masks) arrange_samples(bitmap.get(), *_bmp->masks);
  return prepared_picture(bitmap.get(), header);
}

PageBitmap PictureFile::decode_tiff(const TiffTags& tags, PictureHeader header) const {
  PageBitmap page = stream(tags).load(FIF_TIFF, 0);
  if (page == nullptr) {
    page = libtiff_bitmap(_path, tags.place);
    header.orientation = tags.orientation;  // libtiff is told not to mirror
  }
  if (page == nullptr) fail_to_decode(header);
  return prepared_picture(page.get(), header);
}

}  // namespace cli
