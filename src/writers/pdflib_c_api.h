// SPDX-License-Identifier: Apache-2.0
// The one place that knows whose C interface the binding is compiled against: the vendor's header,
// or the interface of the embedded producer. Beyond this point both are used by member names only.
#ifndef ZELK_WRITERS_PDFLIB_C_API_H
#define ZELK_WRITERS_PDFLIB_C_API_H

#ifdef ZELK_PDF_VENDOR
#include <pdflib.h>
#else
#include "pdfproducer/pdf_api.h"
#endif

#endif  // ZELK_WRITERS_PDFLIB_C_API_H
