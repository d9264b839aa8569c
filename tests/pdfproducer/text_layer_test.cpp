// SPDX-License-Identifier: Apache-2.0
// What extractors and viewers make of the text under the page image.
#include <gtest/gtest.h>

#include <cmath>

#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "support/Documents.h"

namespace {

const std::string kMixed = "Zelk (2024) \\\\ 100% 扫描件；可搜索。镕喆體國";

std::string without_line_ends(std::string text) {
  std::erase_if(text, [](char c) { return c == '\n' || c == '\f' || c == '\r'; });
  return text;
}

TEST(TextLayer, ComesBackFromEveryExtractor) {
  ScratchFolder folder;
  const std::string path = folder.path("mixed.pdf");
  ASSERT_TRUE(write_document(path, line_of(kMixed, 20, 100, 12), make_jpeg(600, 200)));
  EXPECT_EQ(qpdf_complaint(path), "");
  EXPECT_EQ(pdfium_text(path), kMixed);
  EXPECT_EQ(without_line_ends(poppler_text(path)), kMixed);
  std::puts(page_content(path).c_str());
  std::puts(qpdf_object(path, "trailer").c_str());
}

}  // namespace
