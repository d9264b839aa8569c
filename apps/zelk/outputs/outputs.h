// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OUTPUTS_OUTPUTS_H
#define ZELK_APPS_OUTPUTS_OUTPUTS_H

#include <functional>
#include <string>
#include <vector>

#include "exchange/page_record.h"

namespace cli {

enum class Format { kText, kJson, kPdf, kHtml };

constexpr char kPageBreak = '\f';

// What a worker makes the outputs of one document of.
struct OutputOrder {
  std::string file;                // the document's name, any bytes; "-" for standard input
  int page_count = 0;              // pages of the document, wanted or not
  std::vector<std::string> pages;  // record files, in the order of the outputs
  bool page_break = false;         // a form feed between each two pages of the text
};

// Reads the order's records one at a time: memory stays that of one page. Throws std::runtime_error
// on a record that is missing or damaged. `each` is called once a page, in order.
void for_each_page(const OutputOrder& order, const std::function<void(const PageRecord&)>& each);

// Each writes the file `path` anew and throws Error when it cannot be written,
// std::runtime_error for damaged records. The same records give the same bytes. `progress` is
// called after each page.
using Progress = std::function<void()>;
void write_text(const OutputOrder& order, const std::string& path, const Progress& progress);
void write_json(const OutputOrder& order, const std::string& path, const Progress& progress);
void write_pdf(const OutputOrder& order, const std::string& path, const Progress& progress);
void write_html(const OutputOrder& order, const std::string& path, const Progress& progress);

}  // namespace cli

#endif  // ZELK_APPS_OUTPUTS_OUTPUTS_H
