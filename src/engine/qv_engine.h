// SPDX-License-Identifier: Apache-2.0
//
// The contract of a recognition engine: a shared library named libQVEngine.so that exports the
// eleven functions below with C linkage, and nothing else. This header needs nothing but a C++11
// compiler.
//
// Loading. The library is opened from the directory that the host names, with every symbol bound at
// once and none made visible to other libraries. All eleven symbols must be there; an engine that
// lacks one is closed again and never called. Hide everything else (-fvisibility=hidden and a
// linker map with "local: *"), else the code of an engine's own libraries may bind to that of the
// host.
//
// Order of calls. One thread at a time. qv_init_engine comes first and qv_uninit_engine last;
// between them, for each page: qv_set_image_data, qv_recognize, qv_get_lines_num, then
// qv_get_line_info_ex twice for each line that has characters (once with a null array, once with an
// array), then qv_get_result_ex, qv_get_result_unicode, and qv_get_result_json only if qv_recognize
// returned 0. Lines and texts are asked for even when qv_set_image_data or qv_recognize failed:
// they must then be empty, or what was read before the failure.
//
// Exceptions must not leave an entry point: callers do not expect any.
//
// Standard output belongs to the host. Engines print diagnostics, if at all, to standard error.
#ifndef ZELK_ENGINE_QV_ENGINE_H
#define ZELK_ENGINE_QV_ENGINE_H

#include <cstddef>
#include <cstdint>

// One recognised character. Arrays of this record cross the border between library and engine, so
// its layout is fixed.
//
// Coordinates are pixels of the page last handed to the engine, origin at its top left corner, y
// downwards. In a searchable PDF a character is drawn with its left edge at `left`, its baseline at
// `bottom` and a font size of `bottom - top`; `right` is not used there. Text can be selected and
// searched best when all characters of a line share one bottom and each box is the character's
// advance cell: for a Latin letter half as wide as high, for a Han character square, without gaps
// inside a word.
struct OCR_CHAR {
  std::int64_t left;
  std::int64_t top;
  std::int64_t right;
  std::int64_t bottom;
  // The character as one UTF-16 code unit of the Basic Multilingual Plane. A character beyond that
  // plane is one record with 0xFFFD.
  std::uint16_t code;
  std::uint8_t reserved[6];
};

static_assert(sizeof(OCR_CHAR) == 40, "records of an array lie 40 bytes apart");
static_assert(offsetof(OCR_CHAR, left) == 0, "left is the first field");
static_assert(offsetof(OCR_CHAR, top) == 8, "top follows left");
static_assert(offsetof(OCR_CHAR, right) == 16, "right follows top");
static_assert(offsetof(OCR_CHAR, bottom) == 24, "bottom follows right");
static_assert(offsetof(OCR_CHAR, code) == 32, "the code follows the four edges");

#define QV_EXPORT __attribute__((visibility("default")))

extern "C" {

// Starts the engine. `dll_path` is the directory text from which the library was loaded, ending in
// "/" (empty when the dynamic loader found the library on its own search path); models and settings
// are usually kept there. The text is the caller's and valid during the call only. Returns 0 when
// started, any other code of the engine's own when not. On failure the caller prints the code,
// closes the library and calls nothing else: release whatever was taken before returning.
QV_EXPORT int qv_init_engine(const char* dll_path);

// Releases everything that the engine holds. Called just before the library is closed; no thread of
// the engine may run when it returns. The same or another engine may be started later in this
// process.
QV_EXPORT void qv_uninit_engine();

// Reads the image file `image_file` and makes it the current image. The path is what a host asked
// for, unchanged: it may be null, which is answered like a file that is not there, with another
// result than 0. `imgpro` as for qv_set_image_data; callers pass 0 here. Returns 0 when loaded. On
// any other result the caller gives up on that file.
QV_EXPORT int qv_load_image_file(const char* image_file, int imgpro);

// Makes a raster of the caller's the current image: `height` rows of `line_bytes` bytes each, the
// top row first, `width` pixels a row, `bitcount` bits a pixel:
//   24  blue, green, red
//    8  grey, 0 is black
//    1  most significant bit leftmost; what a set bit means is the engine's to say
// `line_bytes` is a multiple of 4; the bytes behind the last pixel of a row have no meaning. The
// page's resolution is not handed over. `imgpro` 1 asks the engine to prepare the picture as it
// sees fit (threshold, noise), 0 to take it as it is; engines may ignore it. The raster stays valid
// and unchanged until qv_recognize has returned for it; no copy is needed. Returns 0 when accepted.
// Callers ignore the result and go on with qv_recognize: a refused raster must leave no current
// image, so that recognition fails instead of reading the page before it.
QV_EXPORT int qv_set_image_data(const unsigned char* image_buffer, int width, int height,
                                int bitcount, int line_bytes, int imgpro);

// Recognises the current image.
// Returns 0 on success, the only case in which JSON is asked for afterwards. After any other result
// the caller still reads lines and texts and goes on with the next page.
QV_EXPORT int qv_recognize();

// Number of text lines of the last recognition, 0 or more. Lines are numbered from 0 in reading
// order. A negative or absurd number counts as none.
QV_EXPORT int qv_get_lines_num();

// Characters of line `id`. With a null `char_info`: sets `char_num` to the number of characters of
// the line. With an array of at least that many records: fills them and sets `char_num` to the
// number filled; the caller takes exactly that many, and never more than the array holds. Callers
// preset `char_num` to 0 before the first step and ignore the result, which is true when the line
// exists.
QV_EXPORT bool qv_get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num);

// Writes the text of the last recognition to the file `txt_file_name`. Returns true when written.
QV_EXPORT bool qv_save_ocrfile(const char* txt_file_name);

// The whole text of the last recognition as zero-terminated narrow text (UTF-8 for engines that
// want to be read by others). Owned by the engine and valid until the next call into it; the caller
// copies it at once. Texts of several pages are joined as they are, so end the text with a line
// feed. Never null: empty text when there is none.
QV_EXPORT const char* qv_get_result_ex();

// The same text as zero-terminated wide text, one code point in each 32-bit cell; same ownership.
QV_EXPORT const wchar_t* qv_get_result_unicode();

// Writes the last recognition as JSON text in UTF-8 into the caller's zero-filled buffer of
// `bufferlen` bytes (4,096,000 bytes from this library). At least one zero byte must be left behind
// the text; a text that fills the buffer is read up to its end. Callers ignore the result.
QV_EXPORT int qv_get_result_json(char* json_buffer, int bufferlen);
}

#endif  // ZELK_ENGINE_QV_ENGINE_H
