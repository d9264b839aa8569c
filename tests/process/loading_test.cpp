// SPDX-License-Identifier: Apache-2.0
#include "process/MainProcess.h"
#include "readers/imgreader.h"
#include "readers/pdfiumreader.h"
#include "readers/tiffreader.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"

namespace {

template <class Reader>
bool reader_is(const ofd::MainProcess& process) {
  return dynamic_cast<Reader*>(process._reader) != nullptr;
}

TEST(MainProcess, ExtensionChoosesTheReaderInAnyCase) {
  ofd::MainProcess process{};
  for (const char* name : {"a.pdf", "a.PDF", "/x.y/a.b.Pdf"}) {
    EXPECT_TRUE(process.create_reader(name, 200)) << name;
    EXPECT_TRUE(reader_is<pdfiumreader>(process)) << name;
  }
  for (const char* name : {"a.tif", "a.TiF", "a.tiff", "a.TIFF"}) {
    EXPECT_TRUE(process.create_reader(name, 200)) << name;
    EXPECT_TRUE(reader_is<tiffreader>(process)) << name;
  }
  for (const char* name : {"a.bmp", "a.jpg", "a.jpeg", "a.JPEG", "a.png", "a.tar.png", ".png"}) {
    EXPECT_TRUE(process.create_reader(name, 200)) << name;
    EXPECT_TRUE(reader_is<imgreader>(process)) << name;
  }
}

TEST(MainProcess, OtherNamesMakeNoReader) {
  ofd::MainProcess process{};
  for (const char* name : {"a.gif", "a.jp2", "a", "a.", "", ".", "/data/scans.old/page", "a.png.",
                           "pdf", "a.pdf ", "a.\xC3\x84"}) {
    ASSERT_TRUE(process.create_reader("a.png", 200));
    EXPECT_FALSE(process.create_reader(name, 200)) << name;
    EXPECT_EQ(process._reader, nullptr) << "the old reader is gone as well";
    EXPECT_EQ(process.load_image_document(name, 200), 0) << name;
  }
  ASSERT_TRUE(process.create_reader("a.png", 200));
  EXPECT_FALSE(process.create_reader(nullptr, 200));
  EXPECT_EQ(process._reader, nullptr);
  EXPECT_EQ(process.load_image_document(nullptr, 200), 0);
}

TEST(MainProcess, LoadingGivesThePageCountAndTakesTheResolution) {
  const ScratchFolder folder;
  write_tiff(folder.path("three.tif"), 4, 3, 3);
  ofd::MainProcess process{};
  EXPECT_EQ(process.load_image_document(folder.path("three.tif").c_str(), 300), 3);
  EXPECT_EQ(process._page_num, 3);
  EXPECT_EQ(process._pdf_resolution, 300);
  process.free_image_document();
}

TEST(MainProcess, UnreadableDocumentGives0AndStillTakesTheResolution) {
  ofd::MainProcess process{};
  process._page_num = 5;
  EXPECT_EQ(process.load_image_document("/nowhere/a.png", 150), 0);
  EXPECT_EQ(process._page_num, 0);
  EXPECT_EQ(process._pdf_resolution, 150);
  EXPECT_NE(process._reader, nullptr) << "the reader stays until the next load";
}

TEST(MainProcess, UnknownExtensionKeepsTheResolution) {
  ofd::MainProcess process{};
  EXPECT_EQ(process.load_image_document("/nowhere/a.gif", 150), 0);
  EXPECT_EQ(process._pdf_resolution, 200);
}

TEST(MainProcess, LoadingForgetsListJsonAndWideTextButNotTheRest) {
  // Also when no reader takes the file.
  for (const char* name : {"/nowhere/a.png", "/nowhere/a.gif", static_cast<const char*>(nullptr)}) {
    ofd::MainProcess process{};
    process.add_image("a.png");
    process._page_num = 5;
    process._ocr_array_jsonbuffer = {"{}"};
    process._ocr_string = "narrow";
    process._ocr_string_unicode = L"wide";
    process._json_buffer_unicode = L"{}";
    EXPECT_EQ(process.load_image_document(name, 200), 0);
    EXPECT_EQ(process._page_num, 0);
    EXPECT_TRUE(process._array_images.empty());
    EXPECT_TRUE(process._ocr_array_jsonbuffer.empty());
    EXPECT_TRUE(process._ocr_string_unicode.empty());
    EXPECT_EQ(process._ocr_string, "narrow");
    EXPECT_EQ(process._json_buffer_unicode, L"{}");
  }
}

TEST(MainProcess, SecondLoadReplacesTheReaderWithoutFreeingItsImage) {
  ReaderRecord record;
  ofd::MainProcess process{};
  process._reader = new StubReader(record);
  process.load_image_document("/nowhere/a.png", 200);
  EXPECT_EQ(record.freed, 0);
  EXPECT_TRUE(reader_is<imgreader>(process));
}

TEST(MainProcess, FreeingReleasesReaderAndWriterAndKeepsTheRest) {
  ReaderRecord reader;
  WriterRecord writer;
  ofd::MainProcess process{};
  process._reader = new StubReader(reader);
  process._writer = new StubWriter(writer);
  process._page_num = 3;
  process._pdf_resolution = 300;
  process._double_document_file_name = "a.pdf";
  process._ocr_string = "text";
  process.free_image_document();
  EXPECT_EQ(process._reader, nullptr);
  EXPECT_EQ(process._writer, nullptr);
  EXPECT_EQ(reader.freed, 1);
  EXPECT_EQ(writer.calls, std::vector<std::string>{"delete"}) << "the document is not closed";
  EXPECT_EQ(process._page_num, 3);
  EXPECT_EQ(process._pdf_resolution, 300);
  EXPECT_EQ(process._double_document_file_name, "a.pdf");
  EXPECT_EQ(process._ocr_string, "text");
  process.free_image_document();
  EXPECT_EQ(reader.freed, 1);
}

TEST(MainProcess, ReplacedPdfStaysOpenAndTheNextOneWorks) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {PdfPage(), PdfPage()});
  ofd::MainProcess process{};
  {
    // A document that the next one replaces.
    const LeaksByContract replaced_document;
    EXPECT_EQ(process.load_image_document(folder.path("a.pdf").c_str(), 72), 2);
  }
  EXPECT_EQ(process.load_image_document(folder.path("a.pdf").c_str(), 72), 2);
  FIBITMAP* const page = process._reader->get_cur_image(1);
  EXPECT_NE(page, nullptr);
  FreeImage_Unload(page);
  process.free_image_document();
}

TEST(MainProcess, FormGridOfAnUnloadableImageIs1AndOfALoadedOne2) {
  ScriptedEngine fake;
  ofd::MainProcess process{};
  EXPECT_EQ(process.save_form_grid("a.png", "a.grid"), 1) << "without an engine";
  ASSERT_EQ(process.init_engine(fake.directory.c_str()), 0);
  fake.script->load_code = 4;
  EXPECT_EQ(process.save_form_grid("a.png", "a.grid"), 1);
  fake.script->load_code = 0;
  EXPECT_EQ(process.save_form_grid("b.png", "b.grid"), 2);
  process.uninit_engine();
  EXPECT_EQ(fake.calls, (std::vector<std::string>{"init " + fake.directory, "load a.png 0",
                                                  "load b.png 0", "uninit"}));
}

}  // namespace
