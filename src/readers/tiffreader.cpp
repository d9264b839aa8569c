// SPDX-License-Identifier: Apache-2.0
#include "readers/tiffreader.h"

#include <FreeImage.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "readers/page_limit.h"
#include "readers/quiet_libtiff.h"
#include "readers/tiff_directories.h"

namespace {

// Whether each page of a document may be decoded.
using Verdicts = std::vector<bool>;

// Verdicts of the open documents in which some page may not. They cannot be members: readers are
// deleted without their destructor. Documents that are never closed keep their handles, so that a
// handle found here is that of the document asked about.
std::map<const FIMULTIBITMAP*, Verdicts>& refusing_documents() {
  static std::map<const FIMULTIBITMAP*, Verdicts> documents;
  return documents;
}

FIMULTIBITMAP* open_file(const std::string& path, int flags) {
  constexpr BOOL kCreateNew = FALSE;
  constexpr BOOL kReadOnly = TRUE;
  constexpr BOOL kKeepCacheInMemory = TRUE;
  return FreeImage_OpenMultiBitmap(FreeImage_GetFileType(path.c_str(), 0), path.c_str(), kCreateNew,
                                   kReadOnly, kKeepCacheInMemory, flags);
}

// For what is no TIFF file whatever its name: FreeImage gives pages also of GIF and ICO files.
Verdicts verdicts_by_headers(const std::string& path, std::size_t page_count) {
  Verdicts verdicts(page_count, false);
  FIMULTIBITMAP* const headers = open_file(path, FIF_LOAD_NOPIXELS);
  if (headers == nullptr) return verdicts;
  for (std::size_t i = 0; i < page_count; ++i) {
    FIBITMAP* const header = FreeImage_LockPage(headers, static_cast<int>(i));
    verdicts[i] = may_be_decoded(header);
    if (header != nullptr) FreeImage_UnlockPage(headers, header, FALSE);
  }
  FreeImage_CloseMultiBitmap(headers, 0);
  return verdicts;
}

Verdicts verdicts_of(const TiffDirectories& directories, const std::string& path,
                     std::size_t page_count) {
  Verdicts verdicts = directories.decodable_pages();
  if (verdicts.empty()) return verdicts_by_headers(path, page_count);
  verdicts.resize(page_count, false);
  return verdicts;
}

struct CheckedDocument {
  FIMULTIBITMAP* handle = nullptr;
  Verdicts verdicts;
};

// Opens a document and looks at the pages of the very file that was opened: when another one takes
// its place meanwhile, everything is done again.
CheckedDocument open_checked(const std::string& path) {
  constexpr int kAttempts = 10;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const TiffDirectories directories(path);
    FIMULTIBITMAP* const handle = open_file(path, 0);
    if (handle == nullptr) return {};
    const int page_count = std::max(FreeImage_GetPageCount(handle), 0);
    Verdicts verdicts = verdicts_of(directories, path, static_cast<std::size_t>(page_count));
    if (directories.is_file_at(path)) return {handle, std::move(verdicts)};
    FreeImage_CloseMultiBitmap(handle, 0);
  }
  return {};
}

bool page_may_be_decoded(const FIMULTIBITMAP* document, int id) {
  const auto found = refusing_documents().find(document);
  return found == refusing_documents().end() || found->second[static_cast<std::size_t>(id)];
}

}  // namespace

int tiffreader::load_image(const char* image_tif_file, int) {
  const QuietLibtiff quiet;
  _page_num = 0;
  _image_document = image_tif_file;
  CheckedDocument document = open_checked(_image_document);
  _tiff_handle = document.handle;
  if (_tiff_handle == nullptr) return 0;
  refusing_documents().erase(_tiff_handle);
  if (std::find(document.verdicts.begin(), document.verdicts.end(), false) !=
      document.verdicts.end())
    refusing_documents().emplace(_tiff_handle, std::move(document.verdicts));
  _page_num = FreeImage_GetPageCount(_tiff_handle);
  return _page_num;
}

FIBITMAP* tiffreader::get_cur_image(int id) {
  if (id < 0 || id >= _page_num || !page_may_be_decoded(_tiff_handle, id)) return nullptr;
  const QuietLibtiff quiet;
  FIBITMAP* const cur_page = FreeImage_LockPage(_tiff_handle, id);
  if (cur_page == nullptr) return nullptr;
  FIBITMAP* const dib = FreeImage_ConvertTo24Bits(cur_page);
  FreeImage_UnlockPage(_tiff_handle, cur_page, FALSE);
  return dib;
}

void tiffreader::free_image() {
  refusing_documents().erase(_tiff_handle);
  if (_tiff_handle != nullptr) FreeImage_CloseMultiBitmap(_tiff_handle, 0);
  _tiff_handle = nullptr;
}
