// SPDX-License-Identifier: Apache-2.0
#include "worker/document_pages.h"

#include <FreeImage.h>

#include "worker/file_kind.h"
#include "worker/page_source.h"
#include "worker/pdf_source.h"
#include "worker/picture_source.h"

namespace cli {

void UnloadBitmap::operator()(FIBITMAP* bitmap) const {
  FreeImage_Unload(bitmap);
}

DocumentPages::DocumentPages(const std::string& path, const PageSettings& settings,
                             const std::string& decrypted_path) {
  const FileKind kind = kind_of_file(path);
  if (kind.is_pdf) {
    _source = std::make_unique<PdfSource>(path, settings, decrypted_path);
  } else {
    _source = std::make_unique<PictureSource>(path, kind.picture_format, settings);
  }
}

DocumentPages::~DocumentPages() = default;

int DocumentPages::page_count() const {
  return _source->page_count();
}

bool DocumentPages::is_pdf() const {
  return _source->is_pdf();
}

DocumentPages::Size DocumentPages::page_size(int index) {
  return index >= 0 && index < page_count() ? _source->page_size(index) : Size();
}

PreparedPage DocumentPages::prepare(int index) {
  if (index < 0 || index >= page_count()) throw UnreadablePage("there is no such page");
  return _source->prepare(index);
}

std::optional<PageText> DocumentPages::text(int index, int dots_per_inch) {
  if (index < 0 || index >= page_count()) return std::nullopt;
  return _source->text(index, dots_per_inch);
}

}  // namespace cli
