// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_CONTEXT_H
#define ZELK_PDFPRODUCER_CONTEXT_H

#include <cstddef>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>

#include "pdfproducer/document.h"
#include "pdfproducer/error.h"
#include "pdfproducer/pdf_api.h"

// What a PDF* points at: the caller's jump buffer, the last error, and the open document.
struct PDF_s {
  // cppcheck-suppress uninitMemberVar ; setjmp fills the buffer
  PDF_s(PDF_errorhandler errorhandler, PDF_freeproc freeproc, void* opaque_pointer) noexcept
      : handler(errorhandler), release(freeproc), opaque(opaque_pointer) {}

  // The open document and the open page's document; without one, the call is outside its scope.
  zelk::pdf::Document& open_document() const;
  zelk::pdf::Document& open_page() const;

  // Records a failure in the named function. When the state of the document is in doubt
  // afterwards, because its file or memory failed, the document is dropped.
  void keep(const char* function_name, const std::exception& failure) noexcept;
  // Jumps to the armed buffer with what was kept. Nothing may be alive that has to be destroyed.
  [[noreturn]] void raise();

  const PDF_errorhandler handler;
  const PDF_freeproc release;  // of the context's own memory; null for free
  void* const opaque;

  pdf_jmpbuf buffer;
  // setjmp leaves no trace to look at, so asking for the buffer counts as arming it, until the
  // caller has asked for the outcome or an error has used the buffer.
  bool armed = false;
  bool raised = false;

  zelk::pdf::ErrorNumber number = zelk::pdf::ErrorNumber::kNone;
  std::string text;
  const char* function = "";

  std::unique_ptr<zelk::pdf::Document> document;
};

namespace zelk::pdf {

// Text as a template argument.
template <std::size_t kSize>
struct FunctionName {
  constexpr FunctionName(const char (&characters)[kSize]) {
    for (std::size_t i = 0; i < kSize; ++i) text[i] = characters[i];
  }
  char text[kSize] = {};
};

// Runs the body of an entry point. Whatever it throws becomes an error of the library: what the
// body made is destroyed and the handler left before the jump, which would pass over both. Without
// a context nothing happens and the result is 0 or null.
template <FunctionName kName, typename Body>
auto guarded(PDF* p, const Body& body) -> std::invoke_result_t<Body, PDF_s&> {
  static_assert(std::is_trivially_destructible_v<Body>);
  if (p == nullptr) return std::invoke_result_t<Body, PDF_s&>();
  try {
    return body(*p);
  } catch (const std::exception& failure) {
    p->keep(kName.text, failure);
  }
  p->raise();
}

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_CONTEXT_H
