// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PAGE_SOURCE_H
#define ZELK_APPS_WORKER_PAGE_SOURCE_H

#include <optional>

#include "worker/document_pages.h"

namespace cli {

// What DocumentPages asks of a kind of document; the functions mean the same. `index` is within the
// page count.
class PageSource {
 public:
  PageSource() = default;
  virtual ~PageSource() = default;
  PageSource(const PageSource&) = delete;
  PageSource& operator=(const PageSource&) = delete;

  virtual bool is_pdf() const = 0;
  virtual int page_count() const = 0;
  virtual DocumentPages::Size page_size(int index) = 0;
  virtual PreparedPage prepare(int index) = 0;
  virtual std::optional<PageText> text(int index, int dots_per_inch) = 0;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PAGE_SOURCE_H
