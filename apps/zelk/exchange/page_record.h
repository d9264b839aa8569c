// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_PAGE_RECORD_H
#define ZELK_APPS_EXCHANGE_PAGE_RECORD_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/qv_engine.h"

namespace cli {

// Everything that a run keeps of one finished page, recognised or failed. Workers write one file a
// page; the outputs of a document are made of these files alone.
struct PageRecord {
  int page = 0;         // number in its document, counted from 1
  std::string failure;  // why the page has no result; empty when it was recognised
  std::string warning;  // what the user should know of the page, for example a lowered resolution

  bool is_unreadable = false;  // failed before recognition: the page cannot be decoded at all
  bool has_own_text = false;   // a PDF page that has text already

  std::string text;  // UTF-8
  std::string json;  // the engine's JSON, as it gave it; may be empty
  std::vector<OCR_CHAR> characters;

  // The picture as the searchable PDF holds it. No JPEG and 0 by 0 pixels: it could not be made,
  // or nobody asked for it.
  std::string jpeg;
  int width = 0;             // pixels
  int height = 0;            // pixels
  int dots_per_inch = 0;     // the resolution asked of the page
  double page_width = 0.0;   // points; 0 when unknown. The size of the blank page that stands for a
  double page_height = 0.0;  // page without a picture

  double seconds = 0.0;  // decoding, recognition and encoding
  long memory_kib = 0;   // the worker's peak so far
};

// The file's bytes: a magic word with the version, the fields, a CRC-32 of all before it.
std::string encode_page_record(const PageRecord& record);

// Nothing for bytes that are damaged, cut short or of another version.
std::optional<PageRecord> decode_page_record(std::string_view bytes);

// Writes under a temporary name beside `path` and renames, so that `path` is complete or absent.
// Throws Error.
void write_page_record(const std::string& path, const PageRecord& record);

// Nothing when the file is missing or damaged.
std::optional<PageRecord> read_page_record(const std::string& path);

// File name of a page's record in a document's folder: "page-000012".
std::string page_record_name(int page);
// The same for the record of its picture, which is there before the page is recognised.
std::string page_picture_name(int page);

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_PAGE_RECORD_H
