// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_file.h"

#include <FreeImage.h>

#include <algorithm>

#include "readers/netpbm_header.h"
#include "worker/gif_header.h"
#include "worker/picture_preparation.h"

namespace cli {
namespace {

constexpr const char* kNotDecodable = "the content is not a picture that can be decoded";

FIMULTIBITMAP* open_tiff(FILE* file, int flags) {
  if (file == nullptr) return nullptr;
  return FreeImage_OpenMultiBitmapFromHandle(FIF_TIFF, input_functions(), file, flags);
}

PageBitmap load(int format, const std::string& path, int flags) {
  const InputFile file = open_input(path);
  if (file == nullptr) return nullptr;
  return PageBitmap(
      FreeImage_LoadFromHandle(FREE_IMAGE_FORMAT(format), input_functions(), file.get(), flags));
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
  if (!size) throw UnreadablePage(kNotDecodable);
  PictureHeader result;
  result.width = size->width;
  result.height = size->height;
  return result;
}

// A page of an open TIFF, given back at the end of the scope.
class LockedPage {
 public:
  LockedPage(FIMULTIBITMAP* tiff, int index)
      : _tiff(tiff), _page(FreeImage_LockPage(tiff, index)) {}
  ~LockedPage() {
    if (_page != nullptr) FreeImage_UnlockPage(_tiff, _page, FALSE);
  }
  LockedPage(const LockedPage&) = delete;
  LockedPage& operator=(const LockedPage&) = delete;
  FIBITMAP* get() const { return _page; }

 private:
  FIMULTIBITMAP* const _tiff;
  FIBITMAP* const _page;
};

}  // namespace

PictureFile::PictureFile(const std::string& path, int format) : _path(path), _format(format) {
  if (format != FIF_TIFF) return;
  _headers_file = open_input(path);
  _pictures_file = open_input(path);
  _headers = open_tiff(_headers_file.get(), FIF_LOAD_NOPIXELS);
  _pictures = open_tiff(_pictures_file.get(), 0);
  if (_headers != nullptr && _pictures != nullptr) {
    _picture_count = FreeImage_GetPageCount(_pictures);
    _tags = read_tiff_tags(path, _picture_count);
    if (_picture_count > 0) return;
  }
  if (_headers != nullptr) FreeImage_CloseMultiBitmap(_headers, 0);
  if (_pictures != nullptr) FreeImage_CloseMultiBitmap(_pictures, 0);
  throw UnreadableDocument(kNotDecodable, false);
}

PictureFile::~PictureFile() {
  if (_headers != nullptr) FreeImage_CloseMultiBitmap(_headers, 0);
  if (_pictures != nullptr) FreeImage_CloseMultiBitmap(_pictures, 0);
}

PictureHeader PictureFile::header(int index) {
  if (_format == FIF_TIFF) return tiff_header(index);
  if (_format == FIF_GIF) return gif_header(_path);
  if (is_impossible(_format, _path)) throw UnreadablePage(kNotDecodable);
  const PageBitmap header = load(_format, _path, FIF_LOAD_NOPIXELS);
  if (header == nullptr) throw UnreadablePage(kNotDecodable);
  return read_header(header.get());
}

PictureHeader PictureFile::tiff_header(int index) {
  const LockedPage page(_headers, index);
  if (page.get() == nullptr) throw UnreadablePage(kNotDecodable);
  PictureHeader result = read_header(page.get());
  // Where a page has no resolution FreeImage gives 300 dots per inch, and of its orientation
  // nothing.
  const auto place = static_cast<std::size_t>(index);
  const TiffTags tags = place < _tags.size() ? _tags[place] : TiffTags();
  if (!tags.has_resolution) result.dots_per_meter = 0;
  result.orientation = orientation_left_to_apply(tags);
  result.white_is_zero = tags.photometric == TiffTags::kWhiteIsZero;
  return result;
}

PageBitmap PictureFile::decode(int index, const PictureHeader& header) {
  if (_format == FIF_TIFF) {
    const LockedPage page(_pictures, index);
    if (page.get() == nullptr) throw UnreadablePage(kNotDecodable);
    return prepared_picture(page.get(), header);
  }
  const PageBitmap bitmap = load(_format, _path, 0);
  if (bitmap == nullptr) throw UnreadablePage(kNotDecodable);
  return prepared_picture(bitmap.get(), header);
}

}  // namespace cli
