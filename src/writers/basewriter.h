// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_WRITERS_BASEWRITER_H
#define ZELK_WRITERS_BASEWRITER_H

#include <string>
#include <vector>

#include "engine/qv_engine.h"

struct FIBITMAP;

// An output document written page by page while a recognition runs. The defaults accept everything
// and write nothing. Calls come in the order create_document, add_page for each page,
// close_document; one writer may write several documents one after another.
class basewriter {
 public:
  basewriter() = default;
  // Deleting a writer does not finish a document that is still open.
  virtual ~basewriter() = default;
  basewriter(const basewriter&) = delete;
  basewriter& operator=(const basewriter&) = delete;

  // Starts the document at the given path. Returns 0, or another value when it cannot be started;
  // pages are then not handed over.
  virtual int create_document(const char*) { return 0; }

  // Adds one page: its 24-bit bitmap, which stays the caller's, and its characters in pixels of
  // that bitmap. Returns 0 on success.
  virtual int add_page(FIBITMAP*, const std::vector<OCR_CHAR>&, bool) { return 0; }

  // Finishes the document.
  virtual void close_document() {}

  std::string _document_filename;  // declared for writers; none assigns it
};

#endif  // ZELK_WRITERS_BASEWRITER_H
