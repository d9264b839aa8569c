// SPDX-License-Identifier: Apache-2.0
// Prints a pdflib.h as another maker of the library might lay it out: the same functions in a table
// of the same size, with the members in another order, and a bare jump buffer.
#include <cstdio>
#include <string>
#include <vector>

#include "pdfproducer/pdf_api_entries.h"

namespace {

constexpr const char* kBegin = R"(/* A stand-in for a vendor's header. */
#ifndef PDFLIB_H
#define PDFLIB_H

#include <setjmp.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct PDF_s PDF;

typedef struct PDFlib_api_s {
  size_t sizeof_PDFlib_api;
  int major;
  int minor;
  int revision;
  int patch;
  void (*unused_in_front[20])(void);
)";

constexpr const char* kEnd = R"(  void (*PDF_delete)(PDF *p);
  void (*unused_between[13])(void);
  PDF *(*PDF_new2)(void (*errorhandler)(PDF *p, int type, const char *message),
                   void *(*allocproc)(PDF *p, size_t size, const char *caller),
                   void *(*reallocproc)(PDF *p, void *memory, size_t size, const char *caller),
                   void (*freeproc)(PDF *p, void *memory), void *opaque);
} PDFlib_api;

const PDFlib_api *PDF_get_api(void);
void PDF_set_parameter(PDF *p, const char *key, const char *value);
double PDF_pcos_get_number(PDF *p, int doc, const char *path, ...);
const char *PDF_pcos_get_string(PDF *p, int doc, const char *path, ...);
const unsigned char *PDF_pcos_get_stream(PDF *p, int doc, int *length, const char *optlist,
                                         const char *path, ...);
const char *PDF_get_errmsg(PDF *p);
int PDF_get_errnum(PDF *p);
const char *PDF_get_apiname(PDF *p);
void *PDF_get_opaque(PDF *p);
jmp_buf *pdf_jbuf(PDF *p);
int pdf_catch(PDF *p);

#ifdef __cplusplus
}
#endif

#endif
)";

#define MEMBER(result, name, parameters) "  " #result " (*PDF_" #name ")" #parameters ";\n",

}  // namespace

int main() {
  const std::vector<std::string> members = {ZELK_PDF_API_ENTRIES(MEMBER)};
  std::fputs(kBegin, stdout);
  for (auto member = members.rbegin(); member != members.rend(); ++member)
    std::fputs(member->c_str(), stdout);
  std::fputs(kEnd, stdout);
}
