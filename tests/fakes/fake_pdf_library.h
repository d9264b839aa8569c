// SPDX-License-Identifier: Apache-2.0
// A stand-in for the PDF library behind the binding: records calls, answers and raises errors as a
// test asks. Built against whichever C interface the binding is built against.
#ifndef ZELK_TESTS_FAKES_FAKE_PDF_LIBRARY_H
#define ZELK_TESTS_FAKES_FAKE_PDF_LIBRARY_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "writers/pdflib_c_api.h"

struct FakePdfLibrary {
  // One entry a call, such as show_xy2(text='a\0b', len=3, x=1.5, y=2); functions of the table
  // stand without the prefix of their names, exported functions with it.
  std::vector<std::string> calls;
  int armed = 0;  // how often the jump buffer was asked for
  int asked = 0;  // how often pdf_catch was asked

  std::size_t table_size = sizeof(PDFlib_api);
  int major = 7;
  int minor = 0;
  int revision = 0;
  bool refuses_context = false;

  // The call of this name raises the error below; empty for none.
  std::string raises;
  bool error_without_context = false;  // pdf_catch reports an error for a null context
  int errnum = 0;
  const char* errmsg = nullptr;
  const char* apiname = nullptr;
  void* opaque = nullptr;  // what the context was made with

  // How pointers that are not text stand in recorded calls; others read "@?".
  std::map<const void*, std::string> pointers;

  // What functions answer, by the type of their result.
  int number = 41;
  std::map<std::string, int> numbers;  // answers of single functions instead of `number`
  double real = 2.5;
  std::string text = "answer";
  bool answers_null_text = false;
};

[[gnu::visibility("default")]] FakePdfLibrary& fake_pdf_library();

#endif  // ZELK_TESTS_FAKES_FAKE_PDF_LIBRARY_H
