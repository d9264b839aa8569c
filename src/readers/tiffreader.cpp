// SPDX-License-Identifier: Apache-2.0
#include "readers/tiffreader.h"

#include <FreeImage.h>

int tiffreader::load_image(const char* image_tif_file, int) {
  _page_num = 0;
  _image_document = image_tif_file;
  constexpr BOOL kCreateNew = FALSE;
  constexpr BOOL kReadOnly = TRUE;
  constexpr BOOL kKeepCacheInMemory = TRUE;
  _tiff_handle = FreeImage_OpenMultiBitmap(FreeImage_GetFileType(image_tif_file, 0), image_tif_file,
                                           kCreateNew, kReadOnly, kKeepCacheInMemory, 0);
  if (_tiff_handle == nullptr) return 0;
  _page_num = FreeImage_GetPageCount(_tiff_handle);
  return _page_num;
}

FIBITMAP* tiffreader::get_cur_image(int id) {
  if (id < 0 || id >= _page_num) return nullptr;
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
