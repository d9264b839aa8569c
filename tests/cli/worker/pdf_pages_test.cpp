// SPDX-License-Identifier: Apache-2.0
// PDFs through DocumentPages: resolution, limits, passwords.
#include <gtest/gtest.h>

#include <filesystem>

#include "cli/worker/Pictures.h"
#include "support/Documents.h"
#include "worker/document_pages.h"
#include "worker/pdf_decryption.h"

namespace {

using cli::DocumentPages;
using cli::PageSettings;
using cli::PreparedPage;
using cli::UnreadableDocument;
using cli::UnreadablePage;

const std::string kHostile = std::string(ZELK_TEST_DATA) + "/hostile/";

PageSettings with_dpi(int dpi, std::int64_t max_pixels = 120'000'000) {
  PageSettings settings;
  settings.dpi = dpi;
  settings.max_pixels = max_pixels;
  return settings;
}

TEST(PdfPages, Are200DotsPerInchUnlessAsked) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 612 792", ""}});
  const PreparedPage usual = DocumentPages(folder.path("a.pdf"), {}, "").prepare(0);
  EXPECT_EQ(usual.dots_per_inch, 200);
  EXPECT_EQ(FreeImage_GetWidth(usual.bitmap.get()), 1700U);
  EXPECT_EQ(usual.warning, "");
  const PreparedPage asked = DocumentPages(folder.path("a.pdf"), with_dpi(72), "").prepare(0);
  EXPECT_EQ(asked.dots_per_inch, 72);
  EXPECT_EQ(FreeImage_GetHeight(asked.bitmap.get()), 792U);
}

TEST(PdfPages, SizeIsThatOfTheVisiblePage) {
  const ScratchFolder folder;
  write_pdf(
      folder.path("a.pdf"),
      {{"0 0 612 792", ""}, {"0 0 612 792] /Rotate 90 /CropBox [10 20 110 70", ""}, {"", ""}});
  DocumentPages pages(folder.path("a.pdf"), {}, "");
  EXPECT_EQ(pages.page_size(0).width, 612.0);
  EXPECT_EQ(pages.page_size(0).height, 792.0);
  EXPECT_EQ(pages.page_size(1).width, 50.0);
  EXPECT_EQ(pages.page_size(1).height, 100.0);
  EXPECT_EQ(pages.page_size(2).width, 0.0);
  EXPECT_THROW(pages.prepare(2), UnreadablePage);
}

TEST(PdfPages, AboveTheLimitAreRenderedAtTheLargestResolutionThatFits) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {{"0 0 720 360", ""}});
  // 830 x 415 pixels at 83 dots per inch, 840 x 420 at 84.
  const PreparedPage page =
      DocumentPages(folder.path("a.pdf"), with_dpi(200, 830 * 415), "").prepare(0);
  EXPECT_EQ(page.dots_per_inch, 83);
  EXPECT_EQ(FreeImage_GetWidth(page.bitmap.get()), 830U);
  EXPECT_EQ(page.warning,
            "rendered at 83 instead of 200 dots per inch to stay within --max-pixels");
  const PreparedPage less =
      DocumentPages(folder.path("a.pdf"), with_dpi(200, 830 * 415 - 1), "").prepare(0);
  EXPECT_EQ(less.dots_per_inch, 82);
  const PreparedPage just =
      DocumentPages(folder.path("a.pdf"), with_dpi(200, 2000'000), "").prepare(0);
  EXPECT_EQ(just.dots_per_inch, 200);
  EXPECT_EQ(just.warning, "");
}

TEST(PdfPages, TooLargeForAnyResolutionAreUnreadable) {
  DocumentPages large(kHostile + "mediabox-200000pt.pdf", with_dpi(200, 5'000'000), "");
  try {
    large.prepare(0);
    FAIL();
  } catch (const UnreadablePage& error) {
    EXPECT_STREQ(error.what(),
                 "the page is too large: 200000 x 200000 points have more pixels at 1 dot per inch "
                 "than --max-pixels allows (5000000)");
  }
}

TEST(PdfPages, WithoutAreaAreUnreadable) {
  DocumentPages pages(kHostile + "pdfium-cropbox-no-overlap.pdf", {}, "");
  EXPECT_THROW(pages.prepare(0), UnreadablePage);
}

TEST(PdfPages, OfADamagedDocumentLeaveTheOthers) {
  DocumentPages pages(kHostile + "missing-page-object.pdf", {}, "");
  ASSERT_EQ(pages.page_count(), 3);
  EXPECT_THROW(pages.prepare(1), UnreadablePage);
  EXPECT_NE(pages.prepare(2).bitmap, nullptr);
}

// What opening the document, whose user password is "letmein", fails with.
UnreadableDocument refusal(const std::string& password, const std::string& decrypted_path) {
  PageSettings settings;
  settings.password = password;
  try {
    DocumentPages(kHostile + "user-password-aes256.pdf", settings, decrypted_path);
    return UnreadableDocument("opened", false);
  } catch (const UnreadableDocument& error) {
    return error;
  }
}

TEST(PdfPages, OfAnEncryptedDocumentNeedItsPassword) {
  const ScratchFolder folder;
  const UnreadableDocument missing = refusal("", folder.path("open.pdf"));
  EXPECT_STREQ(missing.what(), "a password is needed (--password)");
  EXPECT_TRUE(missing.needs_password());
  const UnreadableDocument wrong = refusal("wrong", folder.path("open.pdf"));
  EXPECT_STREQ(wrong.what(), "the password is wrong");
  EXPECT_TRUE(wrong.needs_password());
  EXPECT_FALSE(std::filesystem::exists(folder.path("open.pdf")));
}

TEST(PdfPages, OfADecryptedDocumentNeedNoPassword) {
  const ScratchFolder folder;
  PageSettings settings;
  settings.password = "letmein";
  {
    DocumentPages pages(kHostile + "user-password-aes256.pdf", settings, folder.path("open.pdf"));
    EXPECT_EQ(pages.page_count(), 2);
    EXPECT_NE(pages.prepare(1).bitmap, nullptr);
  }
  DocumentPages again(folder.path("open.pdf"), {}, "");
  EXPECT_EQ(again.page_count(), 2);
}

TEST(PdfPages, OfADocumentThatOpensWithoutAPasswordAreNotDecrypted) {
  const ScratchFolder folder;
  const std::string path = std::string(ZELK_TEST_DATA) + "/zh-en-encrypted-aes256-emptyuser.pdf";
  PageSettings settings;
  settings.password = "anything";
  DocumentPages pages(path, settings, folder.path("open.pdf"));
  EXPECT_EQ(pages.page_count(), 2);
  EXPECT_FALSE(std::filesystem::exists(folder.path("open.pdf")));
}

TEST(PdfPages, CannotBeDecryptedIntoAMissingFolder) {
  const ScratchFolder folder;
  EXPECT_THROW(cli::decrypt_pdf(kHostile + "user-password-aes256.pdf", "letmein",
                                folder.path("missing/open.pdf")),
               std::runtime_error);
  EXPECT_FALSE(cli::decrypt_pdf(std::string(ZELK_TEST_DATA) + "/scan.pdf", "", "unused"));
}

// A document that is opened after a failure, or after another, is not disturbed.
TEST(PdfPages, DocumentsFollowOneAnother) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  for (int round = 0; round < 3; ++round) {
    EXPECT_THROW(DocumentPages(kHostile + "truncated-70percent.pdf", {}, ""), UnreadableDocument);
    EXPECT_NE(DocumentPages(folder.path("a.pdf"), {}, "").prepare(0).bitmap, nullptr);
  }
}

// Every hostile file ends in a page, or in a reason; `tests/cli` holds what is expected of each.
TEST(PdfPages, HostileFilesEndInPagesOrReasons) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(kHostile)) {
    ++files;
    try {
      DocumentPages pages(entry.path().string(), {}, "");
      EXPECT_GE(pages.page_count(), 1);
      for (int index = 0; index < pages.page_count(); ++index) {
        try {
          const PreparedPage page = pages.prepare(index);
          EXPECT_EQ(FreeImage_GetBPP(page.bitmap.get()), 24U) << entry;
          pages.text(index, page.dots_per_inch);
        } catch (const UnreadablePage& error) {
          EXPECT_STRNE(error.what(), "") << entry;
        }
      }
    } catch (const UnreadableDocument& error) {
      EXPECT_STRNE(error.what(), "") << entry;
    }
  }
  EXPECT_GE(files, 30);
}

}  // namespace
