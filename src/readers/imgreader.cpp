// SPDX-License-Identifier: Apache-2.0
#include "readers/imgreader.h"

#include <FreeImage.h>

#include <vector>

#include "readers/netpbm_header.h"
#include "readers/page_limit.h"
#include "readers/quiet_libtiff.h"
#include "readers/tiff_directories.h"

namespace {

bool first_tiff_page_may_be_decoded(const char* image_file) {
  const std::vector<bool> pages = TiffDirectories(image_file).decodable_pages();
  return !pages.empty() && pages.front();
}

bool header_may_be_decoded(FREE_IMAGE_FORMAT type, const char* image_file) {
  if (type == FIF_TIFF) return first_tiff_page_may_be_decoded(image_file);
  if (is_impossible_netpbm(type, image_file)) return false;
  if (!FreeImage_FIFSupportsNoPixels(type)) return true;
  FIBITMAP* const header = FreeImage_Load(type, image_file, FIF_LOAD_NOPIXELS);
  const bool allowed = may_be_decoded(header);
  FreeImage_Unload(header);
  return allowed;
}

FIBITMAP* decode(const char* image_file) {
  FREE_IMAGE_FORMAT type = FreeImage_GetFileType(image_file, 0);
  if (type == FIF_UNKNOWN) type = FreeImage_GetFIFFromFilename(image_file);
  if (type == FIF_UNKNOWN || !FreeImage_FIFSupportsReading(type)) return nullptr;
  if (!header_may_be_decoded(type, image_file)) return nullptr;
  return FreeImage_Load(type, image_file, 0);
}

}  // namespace

int imgreader::load_image(const char* image_file, int) {
  const QuietLibtiff quiet;
  _page_num = 0;
  FIBITMAP* const src_image = decode(image_file);
  if (src_image == nullptr) return 0;
  // A conversion that fails leaves one page that is missing.
  _page_num = 1;
  _dib = FreeImage_ConvertTo24Bits(src_image);
  FreeImage_Unload(src_image);
  return _page_num;
}

FIBITMAP* imgreader::get_cur_image(int id) {
  if (id < 0 || id >= _page_num) return nullptr;
  return _dib;
}

void imgreader::free_image() {}

void imgreader::forget_image() {
  _dib = nullptr;
}
