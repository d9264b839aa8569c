// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_SOURCE_H
#define ZELK_APPS_WORKER_PICTURE_SOURCE_H

#include <string>

#include "worker/page_source.h"
#include "worker/picture_file.h"

namespace cli {

// Picture files: a page for each picture. A picture above the pixel limit is refused before it is
// decoded.
class PictureSource : public PageSource {
 public:
  // `format` is FreeImage's number. Throws UnreadableDocument.
  PictureSource(const std::string& path, int format, const PageSettings& settings);

  bool is_pdf() const override { return false; }
  int page_count() const override { return _file.picture_count(); }
  DocumentPages::Size page_size(int index) override;
  PreparedPage prepare(int index) override;
  std::optional<PageText> text(int, int) override { return std::nullopt; }

 private:
  int resolution(const PictureHeader& header) const;

  PictureFile _file;
  const PageSettings _settings;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_SOURCE_H
