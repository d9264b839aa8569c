// SPDX-License-Identifier: Apache-2.0
#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <system_error>

#include "cli/outputs/Records.h"
#include "exchange/error.h"
#include "pdfproducer/Tools.h"
#include "process/page_raster.h"
#include "support/ScriptedEngine.h"
#include "writers/pdfwriter.h"

namespace {

using cli::PageRecord;

class PdfOutput : public Records {
 protected:
  std::string pdf() {
    const std::string bytes = written_by(cli::write_pdf);
    EXPECT_EQ(qpdf_complaint(path), "");
    return bytes;
  }
  std::string size_of_page(int page) {
    const std::string number = std::to_string(page);
    return run("pdfinfo -f " + number + " -l " + number + " '" + path +
               "' | sed -n 's/^Page.*size: *//p'")
        .output;
  }

  const std::vector<OCR_CHAR> letters = {ocr_char(u'O', 10, 10, 20, 30),
                                         ocr_char(u'K', 20, 10, 30, 30)};
};

TEST_F(PdfOutput, IsWhatTheWriterMakesOfTheBitmaps) {
  const std::string expected = folder.path("expected.pdf");
  pdfwriter writer;
  ASSERT_EQ(writer.create_document(expected.c_str()), 0);
  for (const int dots_per_inch : {200, 300, 0}) {
    PageRecord record = with_picture(recognised("OK"), 120, 80, dots_per_inch);
    record.characters = letters;
    add(record);
    FIBITMAP* const dib = make_bitmap(120, 80);
    ofd::stamp_resolution(dib, dots_per_inch);
    EXPECT_EQ(writer.add_page(dib, letters, true), 0);
    FreeImage_Unload(dib);
  }
  writer.close_document();
  EXPECT_EQ(pdf(), read_file(expected));
  EXPECT_EQ(progress, 3);
  EXPECT_EQ(poppler_text(path), "OK\n\fOK\n\fOK\n\f");
  EXPECT_EQ(size_of_page(1), "43.2 x 28.8 pts\n");
}

TEST_F(PdfOutput, HoldsTheJpegUnchanged) {
  const PageRecord record = with_picture(recognised("x"), 64, 48);
  add(record);
  pdf();
  EXPECT_EQ(page_image(path), record.jpeg);
}

TEST_F(PdfOutput, FailedPageStandsAsItsPictureWithoutText) {
  PageRecord record = with_picture(failed("crashed"), 60, 40);
  record.characters = letters;
  add(record);
  pdf();
  EXPECT_EQ(poppler_text(path), "\f");
  EXPECT_EQ(page_image(path), record.jpeg);
}

TEST_F(PdfOutput, PagesWithoutAPictureAreBlankInTheirSize) {
  PageRecord known = failed("crashed");
  known.page_width = 300.5;
  known.page_height = 200;
  PageRecord damaged = with_picture(recognised("lost"), 60, 40);
  damaged.jpeg = "no JPEG";
  damaged.characters = letters;
  PageRecord after = with_picture(recognised("OK"), 120, 80);
  after.characters = letters;
  for (const PageRecord& record : {known, failed("crashed"), damaged, after}) add(record);
  pdf();
  EXPECT_EQ(size_of_page(1), "300.5 x 200 pts\n");
  EXPECT_EQ(size_of_page(2), "595 x 842 pts (A4)\n");
  EXPECT_EQ(size_of_page(3), "595 x 842 pts (A4)\n");
  EXPECT_EQ(poppler_text(path), "\f\f\fOK\n\f");
}

TEST_F(PdfOutput, DocumentWithoutPagesIsAnError) {
  EXPECT_THROW(cli::write_pdf(order, path, {}), std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(PdfOutput, OutputThatCannotBeWrittenIsAnErrorOfTheSystem) {
  add(with_picture(recognised("x"), 60, 40));
  for (const std::string& name : {folder.path("none/out.pdf"), folder.path("")}) {
    try {
      cli::write_pdf(order, name, {});
      ADD_FAILURE() << name;
    } catch (const cli::Error& error) {
      EXPECT_EQ(error.kind(), cli::ErrorKind::kOutput) << error.what();
      EXPECT_NE(std::string(error.what()).find(name), std::string::npos) << error.what();
    }
  }
}

TEST_F(PdfOutput, FullDiskIsAnErrorOfTheSystemAndLeavesNoFile) {
  for (int page = 0; page < 9; ++page) add(with_picture(recognised("x"), 600, 400));
  struct rlimit limit = {};
  getrlimit(RLIMIT_FSIZE, &limit);
  const struct rlimit before = limit;
  limit.rlim_cur = 4096;
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &limit);
  std::string failure;
  try {
    cli::write_pdf(order, path, {});
  } catch (const cli::Error& error) {
    if (error.kind() == cli::ErrorKind::kOutput) failure = error.what();
  }
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_TRUE(failure.ends_with(": File too large")) << failure;
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(PdfOutput, DamagedRecordLeavesNoFile) {
  add(with_picture(recognised("x"), 60, 40));
  add(with_picture(recognised("x"), 60, 40));
  write_file(order.pages[1], "zelk");
  EXPECT_THROW(cli::write_pdf(order, path, {}), std::runtime_error);
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
