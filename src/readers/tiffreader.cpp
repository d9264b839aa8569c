// SPDX-License-Identifier: Apache-2.0
#include "readers/tiffreader.h"

#include <FreeImage.h>

#include "readers/page_limit.h"
#include "readers/quiet_libtiff.h"

namespace {

FIMULTIBITMAP* open_file(const std::string& path, int flags) {
  constexpr BOOL kCreateNew = FALSE;
  constexpr BOOL kReadOnly = TRUE;
  constexpr BOOL kKeepCacheInMemory = TRUE;
  return FreeImage_OpenMultiBitmap(FreeImage_GetFileType(path.c_str(), 0), path.c_str(), kCreateNew,
                                   kReadOnly, kKeepCacheInMemory, flags);
}

bool page_may_be_decoded(const std::string& path, int id) {
  FIMULTIBITMAP* const headers = open_file(path, FIF_LOAD_NOPIXELS);
  if (headers == nullptr) return false;
  FIBITMAP* const header = FreeImage_LockPage(headers, id);
  const bool allowed = may_be_decoded(header);
  if (header != nullptr) FreeImage_UnlockPage(headers, header, FALSE);
  FreeImage_CloseMultiBitmap(headers, 0);
  return allowed;
}

}  // namespace

int tiffreader::load_image(const char* image_tif_file, int) {
  const QuietLibtiff quiet;
  _page_num = 0;
  _image_document = image_tif_file;
  _tiff_handle = open_file(_image_document, 0);
  if (_tiff_handle == nullptr) return 0;
  _page_num = FreeImage_GetPageCount(_tiff_handle);
  return _page_num;
}

FIBITMAP* tiffreader::get_cur_image(int id) {
  const QuietLibtiff quiet;
  if (id < 0 || id >= _page_num || !page_may_be_decoded(_image_document, id)) return nullptr;
  FIBITMAP* const cur_page = FreeImage_LockPage(_tiff_handle, id);
  if (cur_page == nullptr) return nullptr;
  FIBITMAP* const dib = FreeImage_ConvertTo24Bits(cur_page);
  FreeImage_UnlockPage(_tiff_handle, cur_page, FALSE);
  return dib;
}

void tiffreader::free_image() {
  if (_tiff_handle != nullptr) FreeImage_CloseMultiBitmap(_tiff_handle, 0);
  _tiff_handle = nullptr;
}
