// SPDX-License-Identifier: Apache-2.0
// The functions of the table that this producer offers.
#ifndef ZELK_PDFPRODUCER_ENTRY_POINTS_H
#define ZELK_PDFPRODUCER_ENTRY_POINTS_H

#include "pdfproducer/pdf_api.h"

namespace zelk::pdf {

PDF* create_context(PDF_errorhandler errorhandler, PDF_allocproc allocproc,
                    PDF_reallocproc reallocproc, PDF_freeproc freeproc, void* opaque);
void delete_context(PDF* p);

int begin_document(PDF* p, const char* filename, int len, const char* optlist);
void end_document(PDF* p, const char* optlist);
void begin_page_ext(PDF* p, double width, double height, const char* optlist);
void end_page_ext(PDF* p, const char* optlist);
int load_font(PDF* p, const char* fontname, int len, const char* encoding, const char* optlist);
void setfont(PDF* p, int font, double fontsize);
void setcolor(PDF* p, const char* fstype, const char* colorspace, double c1, double c2, double c3,
              double c4);
void show_xy2(PDF* p, const char* text, int len, double x, double y);
int open_image(PDF* p, const char* imagetype, const char* source, const char* data, long length,
               int width, int height, int components, int bpc, const char* params);
void fit_image(PDF* p, int image, double x, double y, const char* optlist);
void close_image(PDF* p, int image);

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_ENTRY_POINTS_H
