// SPDX-License-Identifier: Apache-2.0
// The functions of PDFium's public C interface that reading PDFs takes. Debian packages the
// library without its headers, so they are declared here, for the sources named pdf* beside this
// file and nobody else.
#ifndef ZELK_READERS_PDFIUM_API_H
#define ZELK_READERS_PDFIUM_API_H

extern "C" {

typedef struct fpdf_document_t__* FPDF_DOCUMENT;
typedef struct fpdf_page_t__* FPDF_PAGE;
typedef struct fpdf_textpage_t__* FPDF_TEXTPAGE;
typedef struct fpdf_bitmap_t__* FPDF_BITMAP;
typedef struct fpdf_pageobject_t__* FPDF_PAGEOBJECT;

// Rendering as for printing; neither annotations nor grey scale.
constexpr int FPDF_PRINTING = 0x800;

void FPDF_InitLibrary();
void FPDF_DestroyLibrary();

FPDF_DOCUMENT FPDF_LoadDocument(const char* file_path, const char* password);
// A document that is read through a function, which returns 0 when it fails. Both live until the
// document is closed.
struct FPDF_FILEACCESS {
  unsigned long length;
  int (*read)(void* source, unsigned long position, unsigned char* buffer, unsigned long size);
  void* source;
};
FPDF_DOCUMENT FPDF_LoadCustomDocument(FPDF_FILEACCESS* file, const char* password);
void FPDF_CloseDocument(FPDF_DOCUMENT document);
unsigned long FPDF_GetDocPermissions(FPDF_DOCUMENT document);
int FPDF_GetPageCount(FPDF_DOCUMENT document);

FPDF_PAGE FPDF_LoadPage(FPDF_DOCUMENT document, int page_index);
void FPDF_ClosePage(FPDF_PAGE page);
double FPDF_GetPageWidth(FPDF_PAGE page);   // points, after rotation and cropping
double FPDF_GetPageHeight(FPDF_PAGE page);  // points, after rotation and cropping

// The same size as of the loaded page, for a page that need not be loaded. False without one.
int FPDF_GetPageSizeByIndex(FPDF_DOCUMENT document, int page_index, double* width, double* height);
// Where a point of the page lies in a bitmap that the page is rendered into: pixels, top row first.
int FPDF_PageToDevice(FPDF_PAGE page, int start_x, int start_y, int size_x, int size_y, int rotate,
                      double page_x, double page_y, int* device_x, int* device_y);

// Characters in reading order, with blanks and line ends that PDFium makes up of their places.
FPDF_TEXTPAGE FPDFText_LoadPage(FPDF_PAGE page);
void FPDFText_ClosePage(FPDF_TEXTPAGE text_page);
int FPDFText_CountChars(FPDF_TEXTPAGE text_page);  // negative on failure
unsigned FPDFText_GetUnicode(FPDF_TEXTPAGE text_page, int index);
// Points of the page: where the pen stands, the box of the ink, the box of the advance from the
// font's descent to its ascent.
int FPDFText_GetCharOrigin(FPDF_TEXTPAGE text_page, int index, double* x, double* y);
int FPDFText_GetCharBox(FPDF_TEXTPAGE text_page, int index, double* left, double* right,
                        double* bottom, double* top);
struct FS_RECTF {
  float left;
  float top;
  float right;
  float bottom;
};
int FPDFText_GetLooseCharBox(FPDF_TEXTPAGE text_page, int index, FS_RECTF* box);

// What is drawn on a page, owned by it; forms hold objects of their own.
constexpr int FPDF_PAGEOBJ_IMAGE = 3;
constexpr int FPDF_PAGEOBJ_FORM = 5;
int FPDFPage_CountObjects(FPDF_PAGE page);  // negative on failure
FPDF_PAGEOBJECT FPDFPage_GetObject(FPDF_PAGE page, int index);
int FPDFPageObj_GetType(FPDF_PAGEOBJECT object);
int FPDFPageObj_GetBounds(FPDF_PAGEOBJECT object, float* left, float* bottom, float* right,
                          float* top);
int FPDFFormObj_CountObjects(FPDF_PAGEOBJECT form);  // negative on failure
FPDF_PAGEOBJECT FPDFFormObj_GetObject(FPDF_PAGEOBJECT form, unsigned long index);

// Pictures: decoded, in a bitmap of the caller's; as stored; the names of the stream's filters, in
// the order in which they are taken off. Texts and data are copied only when they fit into `size`.
FPDF_BITMAP FPDFImageObj_GetBitmap(FPDF_PAGEOBJECT image);
unsigned long FPDFImageObj_GetImageDataRaw(FPDF_PAGEOBJECT image, void* buffer, unsigned long size);
int FPDFImageObj_GetImageFilterCount(FPDF_PAGEOBJECT image);
unsigned long FPDFImageObj_GetImageFilter(FPDF_PAGEOBJECT image, int index, void* buffer,
                                          unsigned long size);

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
