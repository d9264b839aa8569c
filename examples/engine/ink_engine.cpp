// SPDX-License-Identifier: Apache-2.0
// A complete engine: it finds marks of ink and calls each a black square
// (docs/writing-an-engine.md)
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "engine/qv_engine.h"

namespace {

struct Span {
  int begin, end;
};

struct Raster {
  const unsigned char* rows = nullptr;  // the host's, valid until qv_recognize has returned
  int width = 0, height = 0, bits = 0, line_bytes = 0;
} raster;

struct Results {
  std::vector<std::vector<OCR_CHAR>> lines;
  std::string text;
  std::wstring wide;
} results;

bool is_ink(int x, int y) {
  const unsigned char* row = raster.rows + static_cast<std::ptrdiff_t>(y) * raster.line_bytes;
  if (raster.bits == 1) return (row[x / 8] >> (7 - x % 8) & 1) != 0;
  if (raster.bits == 8) return row[x] < 128;
  return row[3 * x] + row[3 * x + 1] + row[3 * x + 2] < 3 * 128;
}

bool has_ink(Span columns, Span rows) {
  for (int y = rows.begin; y < rows.end; ++y) {
    for (int x = columns.begin; x < columns.end; ++x) {
      if (is_ink(x, y)) return true;
    }
  }
  return false;
}

// The runs of numbers from 0 to `end` that are inked.
template <typename Inked>
std::vector<Span> runs(int end, Inked inked) {
  std::vector<Span> found;
  for (int i = 0; i < end; ++i) {
    if (!inked(i)) continue;
    if (found.empty() || found.back().end < i) found.push_back({i, i});
    found.back().end = i + 1;
  }
  return found;
}

// The cells of one line. Inside a word each reaches to the next; a wide gap is a blank.
std::vector<OCR_CHAR> read_line(Span rows) {
  const auto inked = [rows](int x) { return has_ink({x, x + 1}, rows); };
  std::vector<OCR_CHAR> line;
  for (const Span mark : runs(raster.width, inked)) {
    if (!line.empty()) {
      const auto end = line.back().right;
      const bool blank = mark.begin - end > (rows.end - rows.begin) / 2;
      if (blank) line.push_back({end, rows.begin, 0, rows.end, u' ', {}});
      line.back().right = mark.begin;
    }
    line.push_back({mark.begin, rows.begin, mark.end, rows.end, u'\u25A0', {}});
  }
  return line;
}

void read_page() {
  const auto inked = [](int y) { return has_ink({0, raster.width}, {y, y + 1}); };
  for (const Span rows : runs(raster.height, inked)) {
    results.lines.push_back(read_line(rows));
    for (const OCR_CHAR& cell : results.lines.back()) {
      results.text += cell.code == u' ' ? " " : "\xE2\x96\xA0";
      results.wide += static_cast<wchar_t>(cell.code);
    }
    results.text += '\n';
    results.wide += L'\n';
  }
}

}  // namespace

int qv_init_engine(const char*) {
  return 0;
}

void qv_uninit_engine() {
  raster = {};
  results = {};
}

int qv_load_image_file(const char*, int) {
  return 1;
}

int qv_set_image_data(const unsigned char* image_buffer, int width, int height, int bitcount,
                      int line_bytes, int) {
  const bool good = (bitcount == 1 || bitcount == 8 || bitcount == 24) && image_buffer != nullptr &&
                    width > 0 && height > 0;
  raster = good ? Raster{image_buffer, width, height, bitcount, line_bytes} : Raster{};
  return good ? 0 : 1;
}

int qv_recognize() try {
  results = {};
  if (raster.rows != nullptr) read_page();
  return raster.rows != nullptr ? 0 : 1;
} catch (...) {
  return 2;
}

int qv_get_lines_num() {
  return static_cast<int>(results.lines.size());
}

bool qv_get_line_info_ex(int id, OCR_CHAR* char_info, int& char_num) {
  if (id < 0 || id >= qv_get_lines_num()) return false;
  const std::vector<OCR_CHAR>& line = results.lines[static_cast<std::size_t>(id)];
  if (char_info != nullptr) std::copy(line.begin(), line.end(), char_info);
  char_num = static_cast<int>(line.size());
  return true;
}

bool qv_save_ocrfile(const char* txt_file_name) {
  std::FILE* const file = std::fopen(txt_file_name, "wb");
  if (file == nullptr) return false;
  const bool written = std::fputs(results.text.c_str(), file) >= 0;
  return std::fclose(file) == 0 && written;
}

const char* qv_get_result_ex() {
  return results.text.c_str();
}

const wchar_t* qv_get_result_unicode() {
  return results.wide.c_str();
}

int qv_get_result_json(char* json_buffer, int bufferlen) {
  const auto size = static_cast<std::size_t>(bufferlen);
  const int length = std::snprintf(json_buffer, size, "{\"lines\":%d}", qv_get_lines_num());
  if (length >= bufferlen) json_buffer[0] = '\0';  // all or nothing
  return length < bufferlen ? 0 : 1;
}
