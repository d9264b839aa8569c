// SPDX-License-Identifier: Apache-2.0
// Naming the searchable PDF: which names make a writer, and what happens to the writer before.
#include "process/MainProcess.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"
#include "writers/pdfwriter.h"

namespace {

TEST(MainProcess, NameThatEndsInPdfInAnyCaseMakesAWriter) {
  ofd::MainProcess process{};
  for (const char* name : {"/nowhere/a.pdf", "/nowhere/a.PDF", "a.b.Pdf", ".pdf"}) {
    EXPECT_TRUE(process.set_double_document_filename(name)) << name;
    EXPECT_NE(dynamic_cast<pdfwriter*>(process._writer), nullptr);
    EXPECT_EQ(process._double_document_file_name, name);
  }
}

TEST(MainProcess, OtherNamesLeaveNoWriterAndTheNameBefore) {
  ofd::MainProcess process{};
  for (const char* name : {"a.ofd", "a", "a.", "", "/x.pdf/a", static_cast<const char*>(nullptr)}) {
    ASSERT_TRUE(process.set_double_document_filename("before.pdf"));
    EXPECT_FALSE(process.set_double_document_filename(name));
    EXPECT_EQ(process._writer, nullptr);
    EXPECT_EQ(process._double_document_file_name, "before.pdf");
  }
}

TEST(MainProcess, NamingAgainDeletesTheFirstWriterWithoutClosingItsDocument) {
  WriterRecord record;
  ofd::MainProcess process{};
  process._writer = new StubWriter(record);
  EXPECT_TRUE(process.set_double_document_filename("a.pdf"));
  EXPECT_EQ(record.calls, std::vector<std::string>{"delete"});
}

TEST(MainProcess, NamingTouchesNoFile) {
  const ScratchFolder folder;
  ofd::MainProcess process{};
  EXPECT_TRUE(process.set_double_document_filename(folder.path("a.pdf").c_str()));
  process.free_image_document();
  EXPECT_TRUE(std::filesystem::is_empty(folder.path("")));
}

}  // namespace
