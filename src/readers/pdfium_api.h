// SPDX-License-Identifier: Apache-2.0
// The functions of PDFium's public C interface that the PDF reader calls. Debian packages the
// library without its headers, so they are declared here, for pdfiumreader.cpp and nobody else.
#ifndef ZELK_READERS_PDFIUM_API_H
#define ZELK_READERS_PDFIUM_API_H

extern "C" {

typedef struct fpdf_document_t__* FPDF_DOCUMENT;
typedef struct fpdf_page_t__* FPDF_PAGE;
typedef struct fpdf_textpage_t__* FPDF_TEXTPAGE;
typedef struct fpdf_bitmap_t__* FPDF_BITMAP;

// Rendering as for printing; neither annotations nor grey scale.
constexpr int FPDF_PRINTING = 0x800;

void FPDF_InitLibrary();
void FPDF_DestroyLibrary();

FPDF_DOCUMENT FPDF_LoadDocument(const char* file_path, const char* password);
void FPDF_CloseDocument(FPDF_DOCUMENT document);
unsigned long FPDF_GetDocPermissions(FPDF_DOCUMENT document);
int FPDF_GetPageCount(FPDF_DOCUMENT document);

FPDF_PAGE FPDF_LoadPage(FPDF_DOCUMENT document, int page_index);
void FPDF_ClosePage(FPDF_PAGE page);
double FPDF_GetPageWidth(FPDF_PAGE page);   // points, after rotation and cropping
double FPDF_GetPageHeight(FPDF_PAGE page);  // points, after rotation and cropping

FPDF_TEXTPAGE FPDFText_LoadPage(FPDF_PAGE page);
void FPDFText_ClosePage(FPDF_TEXTPAGE text_page);

// Four bytes a pixel (blue, green, red, alpha), the top row first.
FPDF_BITMAP FPDFBitmap_Create(int width, int height, int alpha);
void FPDFBitmap_FillRect(FPDF_BITMAP bitmap, int left, int top, int width, int height,
                         unsigned long color);
void* FPDFBitmap_GetBuffer(FPDF_BITMAP bitmap);
int FPDFBitmap_GetStride(FPDF_BITMAP bitmap);  // bytes from one row to the next
void FPDFBitmap_Destroy(FPDF_BITMAP bitmap);
void FPDF_RenderPageBitmap(FPDF_BITMAP bitmap, FPDF_PAGE page, int start_x, int start_y, int size_x,
                           int size_y, int rotate, int flags);
}

#endif  // ZELK_READERS_PDFIUM_API_H
