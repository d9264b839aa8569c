// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PDF_TEXT_LAYOUT_H
#define ZELK_APPS_WORKER_PDF_TEXT_LAYOUT_H

#include <optional>
#include <vector>

#include "readers/pdf_page_text.h"
#include "worker/document_pages.h"

namespace cli {

// The text of a PDF page as if it had been recognised on the page's picture of `width` by `height`
// pixels: lines of words, laid out in advance cells by the rules of the default engine. Characters
// outside the picture are left out, and lines without a visible character. Nothing when no visible
// character is left.
std::optional<PageText> laid_out_text(const std::vector<PdfCharacter>& characters, int width,
                                      int height);

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PDF_TEXT_LAYOUT_H
