// SPDX-License-Identifier: Apache-2.0
#include "process/MainProcess.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "readers/imgreader.h"
#include "readers/pdfiumreader.h"
#include "readers/tiffreader.h"
#include "text/StringFormat.h"
#include "writers/pdfwriter.h"

namespace {

struct ReaderByExtension {
  std::string_view extension;
  basereader* (*make)();
};

template <class Reader>
basereader* make_reader() {
  return new Reader;
}

constexpr ReaderByExtension kReaders[] = {
    {"pdf", make_reader<pdfiumreader>}, {"tif", make_reader<tiffreader>},
    {"tiff", make_reader<tiffreader>},  {"bmp", make_reader<imgreader>},
    {"jpg", make_reader<imgreader>},    {"jpeg", make_reader<imgreader>},
    {"png", make_reader<imgreader>},
};

// What follows the last dot of the whole path, in lower case; empty when there is none.
std::string lower_extension(const char* path) {
  if (path == nullptr) return {};
  const std::string_view file_name(path);
  const std::size_t pos = file_name.rfind('.');
  if (pos == std::string_view::npos) return {};
  std::string lower_name(file_name.substr(pos + 1));
  std::transform(lower_name.begin(), lower_name.end(), lower_name.begin(),
                 [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
  return lower_name;
}

}  // namespace

namespace ofd {

MainProcess::~MainProcess() {
  delete_writer();
  delete_reader(_reader);
  _reader = nullptr;
}

int MainProcess::init_engine(const char* dll_path) {
  _sys_path = dll_path != nullptr ? dll_path : "";
  _log_file = _sys_path + "pdf_log.txt";
  _engine.uninit_engine();
  return _engine.init_engine(dll_path) == 0 ? 0 : 1;
}

void MainProcess::uninit_engine() {
  _engine.uninit_engine();
}

bool MainProcess::create_reader(const char* image_filename, int) {
  // The old reader's document stays open: only free_image_document calls free_image.
  delete_reader(_reader);
  _reader = nullptr;
  const std::string extension = lower_extension(image_filename);
  const auto* const match = std::find_if(
      std::begin(kReaders), std::end(kReaders),
      [&extension](const ReaderByExtension& entry) { return entry.extension == extension; });
  if (match == std::end(kReaders)) return false;
  _reader = match->make();
  return true;
}

int MainProcess::load_image_document(const char* image_filename, int resolution) {
  _page_num = 0;
  _array_images.clear();
  _ocr_array_jsonbuffer.clear();
  // The narrow text and the wide JSON stay readable until the next recognition.
  _ocr_string_unicode.clear();
  if (!create_reader(image_filename, resolution)) return 0;
  const int page_num = _reader->load_image(image_filename, resolution);
  if (page_num == -1) return 0;
  _page_num = page_num;
  _pdf_resolution = resolution;
  return page_num;
}

void MainProcess::free_image_document() {
  if (_reader != nullptr) _reader->free_image();
  delete_reader(_reader);
  _reader = nullptr;
  delete_writer();
}

bool MainProcess::add_image(const char* image_filename) {
  _array_images.emplace_back(image_filename != nullptr ? image_filename : "");
  return true;
}

void MainProcess::clear_images() {
  _array_images.clear();
  // A list run's output belongs to that list: the next one must be named again.
  _double_document_file_name.clear();
}

const char* MainProcess::get_ocr_string() {
  return _ocr_string.c_str();
}

const wchar_t* MainProcess::get_ocr_string_unicode() {
  return _ocr_string_unicode.c_str();
}

const char* MainProcess::get_ocr_json_buffer(int page_id) {
  if (page_id < 0 || static_cast<std::size_t>(page_id) >= _ocr_array_jsonbuffer.size()) return "";
  return _ocr_array_jsonbuffer[static_cast<std::size_t>(page_id)].c_str();
}

const wchar_t* MainProcess::get_ocr_json_buffer_unicode(int page_id) {
  _json_buffer_unicode.clear();
  if (page_id < 0 || static_cast<std::size_t>(page_id) >= _ocr_array_jsonbuffer.size()) return L"";
  _json_buffer_unicode =
      qv::StringFormat::strtowstr(_ocr_array_jsonbuffer[static_cast<std::size_t>(page_id)]);
  return _json_buffer_unicode.c_str();
}

bool MainProcess::set_double_document_filename(const char* double_document_filename) {
  // A document that the old writer still has open is not finished.
  delete_writer();
  if (lower_extension(double_document_filename) != "pdf") return false;
  _writer = new pdfwriter;
  _double_document_file_name = double_document_filename;
  return true;
}

int MainProcess::save_form_grid(const char* src_image_file, const char* dst_form_grid_file) {
  if (_engine.load_image_file(src_image_file, 0) != 0) return 1;
  return _engine.save_form_grid(dst_form_grid_file) ? 0 : 2;
}

void MainProcess::delete_writer() {
  delete _writer;
  _writer = nullptr;
}

}  // namespace ofd
