// SPDX-License-Identifier: Apache-2.0
//
// The C interface of the PDF library, version 7.0, as the binding uses it and the embedded producer
// offers it: a context, a function table, a few exported functions, and an error mechanism built on
// setjmp.
//
// Errors. A function that fails records number, function name and text in its context and jumps to
// the buffer armed last with setjmp(pdf_jbuf(p)->jbuf). pdf_catch then answers, once, that an error
// was raised. An error raised while no buffer is armed ends the process. Expected failures (an
// output that cannot be opened, a damaged image) are returned as -1 instead.
//
// A null context makes every exported function below harmless: no error, neutral results.
#ifndef ZELK_PDFPRODUCER_PDF_API_H
#define ZELK_PDFPRODUCER_PDF_API_H

#include <setjmp.h>
#include <stddef.h>

#include "pdfproducer/pdf_api_entries.h"

extern "C" {

typedef struct PDF_s PDF;

typedef struct {
  jmp_buf jbuf;
} pdf_jmpbuf;

typedef void (*PDF_errorhandler)(PDF* p, int type, const char* message);
typedef void* (*PDF_allocproc)(PDF* p, size_t size, const char* caller);
typedef void* (*PDF_reallocproc)(PDF* p, void* memory, size_t size, const char* caller);
typedef void (*PDF_freeproc)(PDF* p, void* memory);

#define ZELK_PDF_API_MEMBER(result, name, parameters) result(*PDF_##name) parameters;

typedef struct PDFlib_api_s {
  size_t sizeof_PDFlib_api;  // size of this table in bytes
  int major;
  int minor;
  int revision;
  // A new context, null when there is no memory. Null procedures mean malloc, realloc and free;
  // `opaque` is handed back by PDF_get_opaque. The error handler hears of an error that is about to
  // end the process.
  PDF* (*PDF_new2)(PDF_errorhandler errorhandler, PDF_allocproc allocproc,
                   PDF_reallocproc reallocproc, PDF_freeproc freeproc, void* opaque);
  // Deletes a context; a document that is still open leaves nothing behind. Null is allowed.
  void (*PDF_delete)(PDF* p);
  ZELK_PDF_API_ENTRIES(ZELK_PDF_API_MEMBER)
  void (*reserved[33])(PDF* p);  // not in use; calling one is an error
} PDFlib_api;

#undef ZELK_PDF_API_MEMBER

static_assert(sizeof(PDFlib_api) == 1480, "the binding accepts a table of exactly this size");

// Visible in a library that holds the producer alone; libzelk.so exports by its own list.
#pragma GCC visibility push(default)

const PDFlib_api* PDF_get_api(void);

void PDF_set_parameter(PDF* p, const char* key, const char* value);
double PDF_pcos_get_number(PDF* p, int doc, const char* path, ...);
const char* PDF_pcos_get_string(PDF* p, int doc, const char* path, ...);
const unsigned char* PDF_pcos_get_stream(PDF* p, int doc, int* length, const char* optlist,
                                         const char* path, ...);

const char* PDF_get_errmsg(PDF* p);
int PDF_get_errnum(PDF* p);
const char* PDF_get_apiname(PDF* p);
void* PDF_get_opaque(PDF* p);

// The buffer to arm before a call into the library. Asking for it counts as arming it, until an
// error has used it or pdf_catch was asked.
pdf_jmpbuf* pdf_jbuf(PDF* p);
// Non-zero, once, when an error was raised since the buffer was armed.
int pdf_catch(PDF* p);

#pragma GCC visibility pop
}

#endif  // ZELK_PDFPRODUCER_PDF_API_H
