/* SPDX-License-Identifier: Apache-2.0 */
/*
 * zelk: recognised text, JSON and searchable PDFs from image files, TIFF and PDF documents.
 *
 * Lifecycle. Start the engine once. For each document: zelk_load_image_document, name a searchable
 * PDF if one is wanted, zelk_recognize, read the results, zelk_free_image_document. For a list of
 * image files: zelk_add_image for each, name, zelk_recognize, read, zelk_clear_images. At the end
 * zelk_uninit_engine; unloading the library does not stop the engine. Between loading and unloading
 * functions may be called in any order: what cannot be done gives its failure value. Once the
 * library's objects are destroyed, at exit or at dlclose, none may be called.
 *
 * Results. Integers are 0 for success unless said otherwise, set-up calls answer true or false, and
 * pointers to text are never null. Results describe the last zelk_recognize only. Pages that cannot
 * be read are left out: JSON texts are counted over the pages that reached the engine. Among them
 * are pictures of 16-bit grey or of more than 2,147,483,647 pixels. EXIF orientation is not
 * applied.
 *
 * Ownership. Text belongs to the library. The narrow text is valid until the next zelk_recognize;
 * the wide text and the JSON texts also end at the next document load, and the wide JSON at the
 * next request for wide JSON. Nothing here is freed by the host, and the library keeps no pointer
 * of the host's.
 *
 * Encodings. Narrow paths are bytes, passed to the system as they are. Wide paths hold one UTF-16
 * code unit in each wchar_t, become UTF-8, and are cut at a whole character beyond 256 bytes. The
 * narrow text is what the engine gives (UTF-8 from the default engine), JSON is UTF-8, wide JSON
 * holds one UTF-16 code unit in each wchar_t, the wide text is passed on as the engine gives it.
 *
 * Threads. The library has one state, starts no thread and takes no lock: call it from one thread
 * at a time. While TIFF files are read, libtiff's handlers of messages are set aside.
 *
 * Exceptions. zelk_recognize and zelk_set_double_document_filename may throw PDFlib::Exception
 * (writers/pdflib_exception.h), every function std::bad_alloc. Hosts in C++ catch them by type.
 * Frames of C between the two need unwind tables (-fexceptions), else the process ends.
 *
 * Output. When an engine cannot be started, the reason is printed on standard output.
 */
#ifndef ZELK_API_H
#define ZELK_API_H

#include <stdbool.h>
#include <wchar.h>

#include "zelk_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Starts the engine libQVEngine.so of directory `dll_path`, which must end in "/" and have at most
 * 241 bytes; an empty text searches the loader's own path. An engine already started is stopped
 * first. Returns 0 when started, 1 on any failure.
 */
ZELK_EXPORT int zelk_init_engine(const char* dll_path);
ZELK_EXPORT int zelk_init_engine_unicode(const wchar_t* dll_path);

/* Stops the engine and closes its library; does nothing when none is started. */
ZELK_EXPORT void zelk_uninit_engine(void);

/*
 * Opens a document, replacing the one before. Empties the image list, also when it fails. The
 * extension decides, in any case: pdf; tif, tiff; bmp, jpg, jpeg, png. Returns the page count, 0 on
 * any failure. The bitmap of a single image serves one recognition: load it again to recognise it
 * again.
 * `resolution` is in dots per inch: PDF pages are rendered at it (200 to 300 suits recognition;
 * pages of 0 or less are left out), and pages of a searchable PDF get their size from it (for
 * images that of the scan; below 1 a pixel is a point). It stays for lists that follow; it is 200
 * before the first document.
 */
ZELK_EXPORT int zelk_load_image_document(const char* image_filename, int resolution);
ZELK_EXPORT int zelk_load_image_document_unicode(const wchar_t* image_filename, int resolution);

/*
 * Closes the document; results stay readable. No searchable PDF is written afterwards until one is
 * named again.
 */
ZELK_EXPORT void zelk_free_image_document(void);

/*
 * Names the searchable PDF that zelk_recognize writes. Every recognition writes it, over the one
 * before, also of another document that is loaded meanwhile: name one for each, or call
 * zelk_free_image_document or zelk_clear_images, which end it. Nothing is written until a
 * recognition is done, and then only the whole file. Returns true when the name ends in ".pdf", in
 * any case; with any other name no searchable PDF is written.
 */
ZELK_EXPORT bool zelk_set_double_document_filename(const char* double_document_filename);

/* Not offered: always false, nothing changes. */
ZELK_EXPORT bool zelk_set_double_document_filename_unicode(const wchar_t* double_document_filename);

/*
 * Recognises the image list or, when it is empty, the document. Returns 2 when there was neither,
 * else 0: also without an engine, which leaves every page empty, when pages failed, and when the
 * searchable PDF's folder does not exist, which costs only the PDF. Other errors of the PDF are
 * thrown.
 */
ZELK_EXPORT int zelk_recognize(void);

/* Text of all pages, one after another as the engine gave it. */
ZELK_EXPORT const char* zelk_get_ocr_string(void);

/*
 * Adds an image file to the list; always true. The file is opened when it is recognised and skipped
 * when that fails. While the list is not empty it is recognised instead of a document. Pages of its
 * searchable PDF take the resolution of the last zelk_load_image_document.
 */
ZELK_EXPORT bool zelk_add_image(const char* image_filename);

/* Not offered: always false, nothing is added. */
ZELK_EXPORT bool zelk_add_image_unicode(const wchar_t* image_filename);

/*
 * Empties the image list. No searchable PDF is written afterwards until one is named again.
 */
ZELK_EXPORT void zelk_clear_images(void);

/* The text of zelk_get_ocr_string as wide text. */
ZELK_EXPORT const wchar_t* zelk_get_ocr_string_unicode(void);

/* JSON of a page, counted from 0; empty text for a failed page and for an index out of range. */
ZELK_EXPORT const char* zelk_get_ocr_json_string(int page_id);

/* The same as wide text; the text of the call before is no longer valid. */
ZELK_EXPORT const wchar_t* zelk_get_ocr_json_string_unicode(int page_id);

/*
 * Asks the engine for the form grid of an image file; the engine gets the paths as they are.
 * Returns 1 when it cannot load the image and 2 when it has no form grid, which is true of every
 * engine so far; 0 when the grid was written.
 */
ZELK_EXPORT int zelk_save_form_grid(const char* src_image_file, const char* dst_form_grid_file);

/* Not offered: always -1. */
ZELK_EXPORT int zelk_save_form_grid_unicode(const wchar_t* src_image_file,
                                            const wchar_t* dst_form_grid_file);

#ifdef __cplusplus
}
#endif

#endif /* ZELK_API_H */
