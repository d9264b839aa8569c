// SPDX-License-Identifier: Apache-2.0
// The life of a context, and the one place where its errors arrive.
#include <csetjmp>

#include "writers/pdflib.h"
#include "writers/pdflib_call.h"

namespace {

constexpr std::size_t kTableSize = 1480;
constexpr int kMajor = 7;
constexpr int kMinor = 0;
constexpr const char* kOwnErrors = "pdflib";  // the name under which the binding's own errors arise

// Libraries hand out the jump buffer bare or in a holder.
template <typename Holder>
decltype(auto) jump_buffer(Holder* holder) {
  if constexpr (requires { holder->jbuf; })
    return (holder->jbuf);
  else
    return (*holder);
}

}  // namespace

// The only place that arms the jump buffer. The library's jump discards the frames of `invoke` and
// the call below it, which therefore hold nothing with a destructor; results are written through
// `call` into the caller's frame, so that nothing in this one changes after setjmp. The conditions
// are nested because setjmp may only stand in a comparison that is the whole condition.
[[gnu::noinline]] void PDFlib::protect(void (*invoke)(void*), void* call) {
  if (p != nullptr) {
    if (setjmp(jump_buffer(pdf_jbuf(p))) == 0) invoke(call);
  }
  if (pdf_catch(p) == 0) return;
  void* const opaque = PDF_get_opaque(p);
  const std::string apiname = pdflib_call::string_of(PDF_get_apiname(p));
  const int errnum = PDF_get_errnum(p);
  throw Exception(pdflib_call::string_of(PDF_get_errmsg(p)), errnum, apiname, opaque);
}

PDFlib::PDFlib(AllocProc allocproc, ReallocProc reallocproc, FreeProc freeproc, void* opaque)
    : m_PDFlib_api(PDF_get_api()) {
  if (m_PDFlib_api->sizeof_PDFlib_api != kTableSize || m_PDFlib_api->major != kMajor ||
      m_PDFlib_api->minor != kMinor)
    throw Exception("loaded wrong version of PDFlib library", 0, kOwnErrors, opaque);
  p = m_PDFlib_api->PDF_new2(nullptr, allocproc, reallocproc, freeproc, opaque);
  if (p == nullptr) throw Exception("No memory for PDFlib object", 0, kOwnErrors, opaque);
  try {
    guarded([this] {
      PDF_set_parameter(p, "binding", "C++");
      PDF_set_parameter(p, "objorient", "true");
    });
  } catch (...) {
    m_PDFlib_api->PDF_delete(p);
    throw;
  }
}

PDFlib::~PDFlib() noexcept {
  m_PDFlib_api->PDF_delete(p);
}
