// SPDX-License-Identifier: Apache-2.0
// In which order the process object makes and releases what it owns. A program of its own, since it
// replaces the global allocation functions and a function of PDFium.
#include <cstdlib>
#include <new>

#include "process/MainProcess.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"
#include "writers/pdfwriter.h"

namespace {

using Events = std::vector<std::string>;

// Set while a test listens; storage is told by its address and size.
Events* events = nullptr;
const void* reader_storage = nullptr;
int page_count = 1;  // what PDFium answers

void note(const char* event) {
  Events* const listening = events;
  if (listening == nullptr) return;
  events = nullptr;  // the note needs memory itself
  listening->push_back(event);
  events = listening;
}

void* allocate(std::size_t size) {
  if (size == sizeof(pdfwriter)) note("new writer");
  if (void* const memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}

void release(void* memory) {
  if (memory != nullptr && memory == reader_storage) note("reader released");
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t size) {
  return allocate(size);
}
void operator delete(void* memory) noexcept {
  release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  release(memory);
}

extern "C" int FPDF_GetPageCount(void*) {
  return page_count;
}

namespace {

class NotingReader : public basereader {
 public:
  virtual ~NotingReader() = default;
  void free_image() override { note("document freed"); }
};

class NotingWriter : public basewriter {
 public:
  ~NotingWriter() override { note("writer deleted"); }
};

class MainProcessOrder : public testing::Test {
 protected:
  void SetUp() override {
    process._reader = new NotingReader;
    process._writer = new NotingWriter;
    reader_storage = process._reader;
    events = &seen;
  }
  void TearDown() override {
    events = nullptr;
    reader_storage = nullptr;
  }

  // Before anything is compared, since that takes memory too.
  Events stop_listening() {
    events = nullptr;
    return seen;
  }

  ofd::MainProcess process{};

 private:
  Events seen;
};

TEST_F(MainProcessOrder, FreeingReleasesTheReaderBeforeTheWriter) {
  process.free_image_document();
  const Events order = stop_listening();
  EXPECT_EQ(order, (Events{"document freed", "reader released", "writer deleted"}));
}

TEST_F(MainProcessOrder, DestructionDeletesTheWriterBeforeTheReader) {
  {
    ofd::MainProcess dying{};
    std::swap(dying._reader, process._reader);
    std::swap(dying._writer, process._writer);
  }
  const Events order = stop_listening();
  EXPECT_EQ(order, (Events{"writer deleted", "reader released"}));
}

TEST_F(MainProcessOrder, NamingAgainDeletesTheFirstWriterBeforeItMakesTheSecond) {
  EXPECT_TRUE(process.set_double_document_filename("a.pdf"));
  const Events order = stop_listening();
  EXPECT_EQ(order, (Events{"writer deleted", "new writer"}));
}

TEST(MainProcess, ReaderThatAnswersMinus1IsAFailureThatKeepsTheResolution) {
  const ScratchFolder folder;
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  ofd::MainProcess process{};
  ASSERT_EQ(process.load_image_document(folder.path("a.pdf").c_str(), 100), 1);
  process.free_image_document();
  page_count = -1;
  EXPECT_EQ(process.load_image_document(folder.path("a.pdf").c_str(), 300), 0);
  page_count = 1;
  EXPECT_EQ(process._page_num, 0);
  EXPECT_EQ(process._pdf_resolution, 100);
  EXPECT_NE(process._reader, nullptr) << "the reader stays until the next load";
  process.free_image_document();
}

}  // namespace
