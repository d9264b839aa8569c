// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_SUPPORT_STUBS_H
#define ZELK_TESTS_SUPPORT_STUBS_H

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "readers/basereader.h"
#include "support/Documents.h"
#include "writers/basewriter.h"

// What a stand-in reader gives and what it was asked. The test owns it: readers have no destructor
// that runs.
struct ReaderRecord {
  int pages = 1;
  std::set<int> missing;
  unsigned width = 5;
  unsigned height = 4;
  std::vector<int> asked;
  int freed = 0;
};

class StubReader : public basereader {
 public:
  explicit StubReader(ReaderRecord& record) : _record(&record) {}
  virtual ~StubReader() = default;

  int load_image(const char*, int) override { return _page_num = _record->pages; }
  FIBITMAP* get_cur_image(int id) override {
    _record->asked.push_back(id);
    if (_record->missing.count(id) != 0) return nullptr;
    return make_bitmap(_record->width, _record->height, static_cast<unsigned char>(id));
  }
  void free_image() override { ++_record->freed; }

 private:
  ReaderRecord* _record;
};

struct WriterRecord {
  int create_result = 0;
  bool throws_on_page = false;
  std::vector<std::string> calls;
  std::vector<std::vector<OCR_CHAR>> pages;
  std::vector<unsigned> dots_per_meter;
};

class StubWriter : public basewriter {
 public:
  explicit StubWriter(WriterRecord& record) : _record(record) {}
  ~StubWriter() override { _record.calls.push_back("delete"); }

  int create_document(const char* name) override {
    _record.calls.push_back(std::string("create ") + name);
    return _record.create_result;
  }
  int add_page(FIBITMAP* dib, const std::vector<OCR_CHAR>& characters, bool dpi_flag) override {
    _record.calls.push_back(dpi_flag ? "page" : "page without flag");
    _record.pages.push_back(characters);
    _record.dots_per_meter = {FreeImage_GetDotsPerMeterX(dib), FreeImage_GetDotsPerMeterY(dib)};
    if (_record.throws_on_page) throw std::runtime_error("disk full");
    return -3;
  }
  void close_document() override { _record.calls.push_back("close"); }

 private:
  WriterRecord& _record;
};

#endif  // ZELK_TESTS_SUPPORT_STUBS_H
