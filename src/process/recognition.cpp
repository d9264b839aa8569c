// SPDX-License-Identifier: Apache-2.0
// The page loop of the process object: from the reader's bitmap through the engine to results and
// writer.
#include <FreeImage.h>

#include <cstring>
#include <memory>

#include "process/MainProcess.h"
#include "process/page_raster.h"
#include "readers/imgreader.h"

namespace {

constexpr int kDone = 0;
constexpr int kNothingToRecognize = 2;

constexpr int kListResolution = 200;  // asked of the reader of a list entry, which ignores it
constexpr int kPrepareImage = 1;
constexpr std::size_t kJsonCapacity = 4096000;

// An engine that reports more than this on one page is not believed.
constexpr int kMaxLines = 1 << 20;
constexpr std::size_t kMaxCharacters = 1 << 20;

}  // namespace

namespace ofd {

int MainProcess::recognize() {
  return _array_images.empty() ? recognize_document() : recognize_images();
}

void MainProcess::clear_results() {
  _ocr_string.clear();
  _ocr_string_unicode.clear();
  _ocr_array_jsonbuffer.clear();
  _json_buffer_unicode.clear();
}

// Starts the searchable PDF if one is wanted. False when it could not be started: no page goes to
// it then.
bool MainProcess::start_writing() {
  if (_double_document_file_name.empty() || _writer == nullptr) return true;
  return _writer->create_document(_double_document_file_name.c_str()) == 0;
}

int MainProcess::recognize_document() {
  clear_results();
  // After free_image_document the page count outlives the reader.
  if (_page_num < 1 || _reader == nullptr) return kNothingToRecognize;
  const bool double_flag = start_writing();
  basereader& reader = *_reader;
  for (int i = 0; i < _page_num; ++i) {
    FIBITMAP* const dib = reader.get_cur_image(i);
    if (dib == nullptr) continue;
    recognize_page(dib, double_flag);
    // The bitmap just unloaded was the reader's own when it reads single images.
    if (auto* const single = dynamic_cast<imgreader*>(&reader)) single->forget_image();
  }
  // Also when the document could not be started or has no page: the writer decides what that means.
  if (!_double_document_file_name.empty() && _writer != nullptr) _writer->close_document();
  return kDone;
}

int MainProcess::recognize_images() {
  clear_results();
  if (_array_images.empty()) return kNothingToRecognize;
  const bool double_flag = start_writing();
  int add_num = 0;
  for (std::size_t i = 0; i < _array_images.size(); ++i) {
    const std::string image_file = _array_images[i];
    imgreader temp_reader;
    if (temp_reader.load_image(image_file.c_str(), kListResolution) != 1) continue;
    FIBITMAP* const dib = temp_reader.get_cur_image(0);
    if (dib == nullptr) continue;
    if (recognize_page(dib, double_flag)) ++add_num;
  }
  // Unlike a document, a list without a page leaves the writer's document open.
  if (_double_document_file_name.empty() || _writer == nullptr || add_num < 1) return kDone;
  _writer->close_document();
  return kDone;
}

// Recognises one page and unloads its bitmap. True when the page was handed to the writer.
bool MainProcess::recognize_page(FIBITMAP* dib, bool double_flag) {
  stamp_resolution(dib, _pdf_resolution);
  zelk::MDIB image;
  bool written = false;
  if (page_to_raster(dib, image)) {
    std::vector<OCR_CHAR> out_char_info;
    int text_dir = 0;
    recognize_image_file(image, out_char_info, text_dir);
    if (!_double_document_file_name.empty() && double_flag && _writer != nullptr) {
      _writer->add_page(dib, out_char_info, true);
      written = true;
    }
  }
  FreeImage_Unload(dib);
  return written;
}

int MainProcess::recognize_image_file(zelk::MDIB& image, std::vector<OCR_CHAR>& out_char_info,
                                      int& text_dir) {
  _engine.set_image_data(image.m_lpBuf, image.m_nWidth, image.m_nHeight, image.m_nBitCount,
                         image.m_nLineLength, kPrepareImage);
  const int code = _engine.recognize();
  // Whatever the engine has of a page it failed on is kept.
  collect_characters(out_char_info);
  if (const char* text = _engine.get_result_ex()) _ocr_string += text;
  if (const wchar_t* text = _engine.get_result_unicode()) _ocr_string_unicode += text;
  text_dir = _engine.get_image_direction();
  _ocr_array_jsonbuffer.push_back(code == 0 ? page_json() : std::string());
  return code;
}

void MainProcess::collect_characters(std::vector<OCR_CHAR>& out_char_info) {
  const int linenum = _engine.get_lines_num();
  if (linenum > kMaxLines) return;
  for (int i = 0; i < linenum; ++i) {
    int char_num = 0;
    _engine.get_line_info_ex(i, nullptr, char_num);
    if (char_num <= 0) continue;
    const auto capacity = static_cast<std::size_t>(char_num);
    if (capacity > kMaxCharacters - out_char_info.size()) continue;
    const auto characters = std::make_unique<OCR_CHAR[]>(capacity);
    _engine.get_line_info_ex(i, characters.get(), char_num);
    if (char_num <= 0 || static_cast<std::size_t>(char_num) > capacity) continue;
    out_char_info.insert(out_char_info.end(), characters.get(), characters.get() + char_num);
  }
}

std::string MainProcess::page_json() {
  const auto buffer = std::make_unique<char[]>(kJsonCapacity);
  _engine.get_result_json(buffer.get(), static_cast<int>(kJsonCapacity));
  return std::string(buffer.get(), strnlen(buffer.get(), kJsonCapacity));
}

}  // namespace ofd
