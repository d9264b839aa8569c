// SPDX-License-Identifier: Apache-2.0
#include "writers/basewriter.h"

#include <gtest/gtest.h>

#include "support/Documents.h"

namespace {

TEST(basewriter, AcceptsADocumentAndWritesNothing) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.pdf");
  FIBITMAP* const page = make_bitmap(4, 3);
  basewriter writer;
  EXPECT_EQ(writer.create_document(path.c_str()), 0);
  EXPECT_EQ(writer.add_page(page, {}, true), 0);
  EXPECT_TRUE(is_made_bitmap(page, 4, 3)) << "the bitmap stays the caller's";
  writer.close_document();
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(writer._document_filename, "");
  FreeImage_Unload(page);
}

}  // namespace
