// SPDX-License-Identifier: Apache-2.0
#include "worker/picture_preparation.h"

#include <FreeImage.h>

#include <new>

#include "worker/float_picture.h"

namespace cli {
namespace {

// For calls that fail on nothing but want of memory.
PageBitmap made(FIBITMAP* bitmap) {
  if (bitmap == nullptr) throw std::bad_alloc();
  return PageBitmap(bitmap);
}

PageBitmap grey_of_16_bits(FIBITMAP* picture, bool white_is_zero) {
  PageBitmap grey = made(FreeImage_ConvertTo8Bits(picture));
  if (white_is_zero) FreeImage_Invert(grey.get());
  return grey;
}

// A bitmap of 8 bits a sample; null when `picture` is one already.
PageBitmap with_small_samples(FIBITMAP* picture, const PictureHeader& header) {
  switch (FreeImage_GetImageType(picture)) {
    case FIT_BITMAP:
      return nullptr;
    case FIT_UINT16:
      return grey_of_16_bits(picture, header.white_is_zero);
    case FIT_RGB16:
      return made(FreeImage_ConvertTo24Bits(picture));
    case FIT_RGBA16:
      return made(FreeImage_ConvertTo32Bits(picture));
    case FIT_FLOAT:
    case FIT_RGBF:
    case FIT_RGBAF:
      return small_samples_of_floats(picture);
    case FIT_INT16:
    case FIT_UINT32:
    case FIT_INT32:
    case FIT_DOUBLE:
    case FIT_COMPLEX:
      return made(FreeImage_ConvertToStandardType(picture, TRUE));
    default:
      throw UnreadablePage("the picture's kind of samples is not known");
  }
}

bool has_opaque_pixel(FIBITMAP* picture) {
  const unsigned width = FreeImage_GetWidth(picture);
  for (unsigned y = 0; y < FreeImage_GetHeight(picture); ++y) {
    const BYTE* const row = FreeImage_GetScanLine(picture, static_cast<int>(y));
    for (unsigned x = 0; x < width; ++x) {
      if (row[4 * x + FI_RGBA_ALPHA] != 0) return true;
    }
  }
  return false;
}

PageBitmap as_24_bits(FIBITMAP* picture, bool is_opaque) {
  if (is_opaque || !FreeImage_IsTransparent(picture))
    return made(FreeImage_ConvertTo24Bits(picture));
  const PageBitmap with_alpha = made(FreeImage_ConvertTo32Bits(picture));
  // Many programs leave the fourth byte of a BMP file's pixels at 0.
  if (!has_opaque_pixel(with_alpha.get())) return made(FreeImage_ConvertTo24Bits(picture));
  RGBQUAD white = {255, 255, 255, 0};
  return made(FreeImage_Composite(with_alpha.get(), FALSE, &white, nullptr));
}

PageBitmap turned(PageBitmap bitmap, double degrees) {
  return made(FreeImage_Rotate(bitmap.get(), degrees, nullptr));
}

// EXIF: 2 mirrored, 3 upside down, 4 both; 5 to 8 turned by a quarter, 5 and 7 mirrored besides.
PageBitmap upright(PageBitmap bitmap, int orientation) {
  constexpr double kLeft = 90.0;
  constexpr double kRight = -90.0;
  const bool mirrored =
      orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
  if (mirrored) FreeImage_FlipHorizontal(bitmap.get());
  if (orientation == 3 || orientation == 4) return turned(std::move(bitmap), 180.0);
  if (orientation == 6 || orientation == 7) return turned(std::move(bitmap), kRight);
  if (orientation == 5 || orientation == 8) return turned(std::move(bitmap), kLeft);
  return bitmap;
}

}  // namespace

PageBitmap prepared_picture(FIBITMAP* decoded, const PictureHeader& header) {
  PageBitmap small = with_small_samples(decoded, header);
  PageBitmap page = as_24_bits(small != nullptr ? small.get() : decoded, header.is_opaque);
  small.reset();
  return upright(std::move(page), header.orientation);
}

}  // namespace cli
