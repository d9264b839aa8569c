// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/context.h"

#include <cstdio>
#include <cstdlib>
#include <new>

using zelk::pdf::Document;
using zelk::pdf::Error;
using zelk::pdf::ErrorNumber;

namespace {

ErrorNumber number_of(const std::exception& failure) {
  if (const auto* error = dynamic_cast<const Error*>(&failure)) return error->number();
  const bool memory = dynamic_cast<const std::bad_alloc*>(&failure) != nullptr;
  return memory ? ErrorNumber::kMemory : ErrorNumber::kInternal;
}

bool leaves_document_in_doubt(ErrorNumber number) {
  return number == ErrorNumber::kOutput || number == ErrorNumber::kMemory ||
         number == ErrorNumber::kInternal;
}

}  // namespace

Document& PDF_s::open_document() const {
  if (!document) throw Error(ErrorNumber::kScope, "not allowed here: no document is open");
  return *document;
}

Document& PDF_s::open_page() const {
  if (!open_document().page_is_open()) {
    throw Error(ErrorNumber::kScope, "not allowed here: no page is open");
  }
  return *document;
}

void PDF_s::keep(const char* function_name, const std::exception& failure) noexcept {
  function = function_name;
  number = number_of(failure);
  if (leaves_document_in_doubt(number)) document.reset();
  try {
    text = number == ErrorNumber::kMemory ? "out of memory" : failure.what();
  } catch (const std::bad_alloc&) {
    number = ErrorNumber::kMemory;
    text = "out of memory";  // short enough to need none
  }
}

void PDF_s::raise() {
  raised = true;
  if (armed) {
    armed = false;
    // The jump that callers of the interface have armed.
    longjmp(buffer.jbuf, 1);
  }
  if (handler != nullptr) handler(this, static_cast<int>(number), text.c_str());
  std::fprintf(stderr, "%s: %s\n", function, text.c_str());
  std::abort();
}
