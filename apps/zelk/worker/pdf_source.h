// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PDF_SOURCE_H
#define ZELK_APPS_WORKER_PDF_SOURCE_H

#include <memory>
#include <string>

#include "worker/page_source.h"

class pdfiumreader;

namespace cli {

// The pages of a PDF. A page above the pixel limit is rendered at the largest resolution that fits.
class PdfSource : public PageSource {
 public:
  // Throws UnreadableDocument.
  PdfSource(const std::string& path, const PageSettings& settings,
            const std::string& decrypted_path);

  bool is_pdf() const override { return true; }
  int page_count() const override;
  DocumentPages::Size page_size(int index) override;
  PreparedPage prepare(int index) override;
  std::optional<PageText> text(int index, int dots_per_inch) override;

 private:
  // Closes the document; the reader's own destructor, which would shut PDFium down, never runs.
  struct CloseReader {
    void operator()(pdfiumreader* reader) const;
  };
  using Reader = std::unique_ptr<pdfiumreader, CloseReader>;
  static Reader open(const std::string& path);

  const PageSettings _settings;
  Reader _reader;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PDF_SOURCE_H
