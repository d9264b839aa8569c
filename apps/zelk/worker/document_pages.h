// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_DOCUMENT_PAGES_H
#define ZELK_APPS_WORKER_DOCUMENT_PAGES_H

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "engine/qv_engine.h"

struct FIBITMAP;

namespace cli {

class PageSource;

// A document that cannot be opened at all. The text is the reason, for people.
class UnreadableDocument : public std::runtime_error {
 public:
  UnreadableDocument(const std::string& reason, bool needs_password)
      : std::runtime_error(reason), _needs_password(needs_password) {}
  bool needs_password() const { return _needs_password; }

 private:
  bool _needs_password;
};

// A page that cannot be produced although its document is open. The text is the reason.
class UnreadablePage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct PageSettings {
  std::optional<int> dpi;  // dots per inch for every page; else the page's own
  std::string password;    // tried on encrypted PDFs
  std::int64_t max_pixels =
      120'000'000;  // above it PDF pages are rendered smaller, pictures refused
};

struct UnloadBitmap {
  void operator()(FIBITMAP* bitmap) const;
};
using PageBitmap = std::unique_ptr<FIBITMAP, UnloadBitmap>;

// A plain page's bitmap is byte for byte what the library's own readers give.
struct PreparedPage {
  PageBitmap bitmap;      // 24 bits a pixel, upright, on white
  int dots_per_inch = 0;  // what the page's bitmap is to be taken for
  std::string warning;    // empty, or what was changed that the user should know of
  std::string damage;     // empty, or which part of the page could not be shown
};

// The text that a PDF page holds already.
struct PageText {
  std::string text;                  // UTF-8, lines ended by a line feed
  std::vector<OCR_CHAR> characters;  // advance cells in pixels of the prepared page
};

// The pages of one file, opened by its content whatever its name ends in: BMP, GIF (its first
// picture), JPEG, PNG, PNM, TIFF, WebP and PDF. Resolutions that are nowhere given: 200 dots per
// inch for a PDF, for a picture what picture_resolution.h says. At most one object may exist at a
// time, since PDFium serves one document.
class DocumentPages {
 public:
  // Throws UnreadableDocument. An encrypted PDF that opens with the password is decrypted into
  // `decrypted_path`; handing that file to a later object needs no password.
  DocumentPages(const std::string& path, const PageSettings& settings,
                const std::string& decrypted_path);
  ~DocumentPages();
  DocumentPages(const DocumentPages&) = delete;
  DocumentPages& operator=(const DocumentPages&) = delete;

  int page_count() const;
  bool is_pdf() const;

  // Size in points of page `index`, counted from 0, upright; 0 by 0 when unknown. Nothing is
  // decoded.
  struct Size {
    double width = 0.0;
    double height = 0.0;
  };
  Size page_size(int index);

  // A new bitmap. Throws UnreadablePage; std::bad_alloc passes.
  PreparedPage prepare(int index);

  // The text of a PDF page rendered at `dots_per_inch`; nothing when it has no visible character.
  std::optional<PageText> text(int index, int dots_per_inch);

 private:
  std::unique_ptr<PageSource> _source;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_DOCUMENT_PAGES_H
