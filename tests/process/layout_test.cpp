// SPDX-License-Identifier: Apache-2.0
// The layout that code outside of the project relies on: fields and virtual operations in order.
#include <cstddef>
#include <type_traits>

#include "image/MDIB.h"
#include "process/MainProcess.h"
#include "readers/imgreader.h"
#include "readers/pdfiumreader.h"
#include "readers/tiffreader.h"
#include "support/ScriptedEngine.h"
#include "support/Stubs.h"
#include "writers/pdfwriter.h"

// These classes are no standard-layout types, but the compilers of this platform lay them out
// alike.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

static_assert(!std::has_virtual_destructor_v<basereader> && std::is_polymorphic_v<basereader>);
static_assert(std::has_virtual_destructor_v<imgreader>);
static_assert(std::has_virtual_destructor_v<tiffreader>);
static_assert(std::has_virtual_destructor_v<pdfiumreader>);
static_assert(std::has_virtual_destructor_v<basewriter>);
static_assert(std::is_base_of_v<basewriter, pdfwriter>);
static_assert(!std::is_polymorphic_v<ofd::MainProcess> && !std::is_polymorphic_v<QVOcrEngine>);
static_assert(!std::is_polymorphic_v<zelk::MDIB> && !std::is_polymorphic_v<PDFlib>);

constexpr std::size_t kPointer = sizeof(void*);

template <typename Field>
struct Holder {
  Field field;
};

// Where the fields of these types begin when each follows the one before.
template <typename... Fields>
std::vector<std::size_t> one_after_another(std::size_t offset) {
  std::vector<std::size_t> offsets;
  const auto place = [&](std::size_t size, std::size_t alignment) {
    offset = (offset + alignment - 1) / alignment * alignment;
    offsets.push_back(offset);
    offset += size;
  };
  (place(sizeof(Holder<Fields>), alignof(Holder<Fields>)), ...);
  return offsets;
}

using Offsets = std::vector<std::size_t>;

TEST(Layout, FieldsOfTheProcessObject) {
  using ofd::MainProcess;
  const Offsets offsets = {
      offsetof(MainProcess, _reader),
      offsetof(MainProcess, _writer),
      offsetof(MainProcess, _engine),
      offsetof(MainProcess, _sys_path),
      offsetof(MainProcess, _log_file),
      offsetof(MainProcess, _double_document_file_name),
      offsetof(MainProcess, _ocr_string),
      offsetof(MainProcess, _ocr_string_unicode),
      offsetof(MainProcess, _page_num),
      offsetof(MainProcess, _pdf_resolution),
      offsetof(MainProcess, _ocr_array_jsonbuffer),
      offsetof(MainProcess, _json_buffer_unicode),
      offsetof(MainProcess, _array_images),
  };
  using Text = std::string;
  EXPECT_EQ(offsets, (one_after_another<basereader*, basewriter*, QVOcrEngine, Text, Text, Text,
                                        Text, std::wstring, int, int, std::vector<Text>,
                                        std::wstring, std::vector<Text>>(0)));
}

TEST(Layout, FieldsOfTheEngineBinding) {
  const Offsets offsets = {
      offsetof(QVOcrEngine, _hinst),
      offsetof(QVOcrEngine, _load_succssed),
      offsetof(QVOcrEngine, _qv_init_engine),
      offsetof(QVOcrEngine, _qv_uninit_engine),
      offsetof(QVOcrEngine, _qv_load_image_file),
      offsetof(QVOcrEngine, _qv_set_image_data),
      offsetof(QVOcrEngine, _qv_recognize),
      offsetof(QVOcrEngine, _qv_get_lines_num),
      offsetof(QVOcrEngine, _qv_get_line_info_ex),
      offsetof(QVOcrEngine, _qv_save_ocrfile),
      offsetof(QVOcrEngine, _qv_get_result_ex),
      offsetof(QVOcrEngine, _qv_get_result_unicode),
      offsetof(QVOcrEngine, _qv_get_image_direction),
      offsetof(QVOcrEngine, _qv_set_auto_rotate),
      offsetof(QVOcrEngine, _qv_get_result_json),
      offsetof(QVOcrEngine, _qv_save_form_grid),
  };
  Offsets expected;
  for (std::size_t slot = 0; slot < 16; ++slot) expected.push_back(slot * kPointer);
  EXPECT_EQ(offsets, expected);
  EXPECT_EQ(sizeof(QVOcrEngine), 16 * kPointer);
}

TEST(Layout, FieldsOfTheRaster) {
  using zelk::MDIB;
  EXPECT_EQ((Offsets{offsetof(MDIB, m_lpLine), offsetof(MDIB, m_lpBuf), offsetof(MDIB, m_nWidth),
                     offsetof(MDIB, m_nHeight), offsetof(MDIB, m_nBitCount),
                     offsetof(MDIB, m_nLineLength), offsetof(MDIB, m_nResolutionX),
                     offsetof(MDIB, m_nResolutionY)}),
            (one_after_another<void*, void*, int, int, int, int, int, int>(0)));
}

TEST(Layout, FieldsOfReaders) {
  EXPECT_EQ((Offsets{offsetof(basereader, _image_document), offsetof(basereader, _page_num),
                     offsetof(basereader, _resulotion)}),
            (one_after_another<std::string, int, int>(kPointer)));
  EXPECT_EQ(offsetof(imgreader, _dib), sizeof(basereader));
  EXPECT_EQ(offsetof(tiffreader, _tiff_handle), sizeof(basereader));
  EXPECT_EQ((Offsets{offsetof(pdfiumreader, _pdf_doc), offsetof(pdfiumreader, _pdf_resolution)}),
            (one_after_another<void*, int>(sizeof(basereader))));
}

TEST(Layout, FieldsOfWriters) {
  EXPECT_EQ(offsetof(basewriter, _document_filename), kPointer);
  EXPECT_EQ((Offsets{offsetof(pdfwriter, _pdflib), offsetof(pdfwriter, _m_rt_font)}),
            (one_after_another<PDFlib, int>(sizeof(basewriter))));
  EXPECT_EQ((Offsets{offsetof(PDFlib, p), offsetof(PDFlib, m_PDFlib_api)}),
            (one_after_another<void*, void*>(0)));
}

// Calls the virtual operation in a slot of an object's table, as code compiled against the
// interface does.
template <typename Result, typename Object, typename... Arguments>
Result call_slot(Object* object, std::size_t slot, Arguments... arguments) {
  using Operation = Result (*)(Object*, Arguments...);
  return (*reinterpret_cast<Operation**>(object))[slot](object, arguments...);
}

TEST(Layout, SlotsOfTheReaderInterface) {
  ReaderRecord record;
  record.pages = 3;
  StubReader reader(record);
  basereader* const base = &reader;
  EXPECT_EQ(call_slot<int>(base, 0, "a.png", 200), 3);
  FIBITMAP* const page = call_slot<FIBITMAP*>(base, 1, 2);
  EXPECT_EQ(record.asked, std::vector<int>{2});
  FreeImage_Unload(page);
  call_slot<void>(base, 2);
  EXPECT_EQ(record.freed, 1);
}

template <class Reader>
void expect_slots_of_a_reader(const std::string& path) {
  auto* const reader = new Reader;
  EXPECT_EQ(call_slot<int>(reader, 0, path.c_str(), 72), 1) << path;
  FIBITMAP* const page = call_slot<FIBITMAP*>(reader, 1, 0);
  ASSERT_NE(page, nullptr) << path;
  EXPECT_EQ(FreeImage_GetBPP(page), 24U);
  FreeImage_Unload(page);
  call_slot<void>(reader, 2);
  // Behind free_image: the destructor alone, and the one that also frees the storage.
  call_slot<void>(reader, 4);
}

TEST(Layout, SlotsOfTheReaders) {
  const ScratchFolder folder;
  write_image(folder.path("a.png"), 5, 4);
  write_tiff(folder.path("a.tif"), 5, 4, 1);
  write_pdf(folder.path("a.pdf"), {PdfPage()});
  expect_slots_of_a_reader<imgreader>(folder.path("a.png"));
  expect_slots_of_a_reader<tiffreader>(folder.path("a.tif"));
  expect_slots_of_a_reader<pdfiumreader>(folder.path("a.pdf"));
}

TEST(Layout, SlotsOfTheWriterInterface) {
  WriterRecord record;
  basewriter* const writer = new StubWriter(record);
  const std::vector<OCR_CHAR> characters(2);
  FIBITMAP* const page = make_bitmap(3, 2);
  EXPECT_EQ(call_slot<int>(writer, 2, "a.pdf"), 0);
  EXPECT_EQ(call_slot<int>(writer, 3, page, &characters, true), -3);
  call_slot<void>(writer, 4);
  call_slot<void>(writer, 1);  // the destructor that also frees the storage
  FreeImage_Unload(page);
  EXPECT_EQ(record.calls, (std::vector<std::string>{"create a.pdf", "page", "close", "delete"}));
  EXPECT_EQ(record.pages.at(0).size(), 2U);
}

}  // namespace
