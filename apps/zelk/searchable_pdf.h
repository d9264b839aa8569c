// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SEARCHABLE_PDF_H
#define ZELK_APPS_SEARCHABLE_PDF_H

#include <string>

namespace cli {

// The searchable PDF that a recognition writes beside its text, if one is asked for.
class SearchablePdf {
 public:
  // `path` ends in .pdf; an empty one asks for no PDF.
  explicit SearchablePdf(std::string path) : _path(std::move(path)) {}

  // Names the PDF to the library; call it with the document loaded.
  void start();

  // Runs the recognition. False when the PDF library stopped it with an error: the results then
  // lack pages, and the document must be freed.
  bool recognize();

  // Why there is no PDF; empty when there is one or none was asked for.
  const std::string& reason() const { return _reason; }

 private:
  std::string _path;
  std::string _reason;
};

}  // namespace cli

#endif  // ZELK_APPS_SEARCHABLE_PDF_H
