// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PDF_SOURCE_H
#define ZELK_APPS_WORKER_PDF_SOURCE_H

#include <memory>
#include <string>

#include "worker/input_file.h"
#include "worker/page_source.h"

class PdfFileAccess;
class pdfiumreader;

namespace cli {

// The pages of a PDF. A page above the pixel limit is rendered at the largest resolution that fits.
class PdfSource : public PageSource {
 public:
  // Throws UnreadableDocument.
  PdfSource(const std::string& path, const PageSettings& settings,
            const std::string& decrypted_path);

  ~PdfSource() override;

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
  void open(const std::string& path);

  const PageSettings _settings;
  // PDFium reads from these until the document is closed.
  InputFile _file;
  std::unique_ptr<PdfFileAccess> _access;
  Reader _reader;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PDF_SOURCE_H
