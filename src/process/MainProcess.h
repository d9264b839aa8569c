// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PROCESS_MAINPROCESS_H
#define ZELK_PROCESS_MAINPROCESS_H

#include <string>
#include <vector>

#include "engine/QVOcrEngine.h"
#include "image/MDIB.h"
#include "readers/basereader.h"
#include "writers/basewriter.h"

namespace ofd {

// The process object: everything that outlives one call of the C interface, and the page loop. The
// library has exactly one, `_pdf_process`; one thread at a time drives it.
//
// Text handed to the host points into the members below and stays valid until they next change: at
// the next recognition and, for the wide text and the JSON texts, also at the next document load.
//
// Nothing is caught here: what a writer throws leaves recognize with the results of the pages done
// so far, and the bitmap of the page at hand stays allocated.
class MainProcess {
 public:
  // cppcheck-suppress uninitMemberVar ; _page_num is zero in static storage
  MainProcess() = default;
  // Deletes the writer without closing its document and the reader without free_image, and leaves
  // the engine running: stopping it is the host's decision.
  ~MainProcess();
  MainProcess(const MainProcess&) = delete;
  MainProcess& operator=(const MainProcess&) = delete;

  // Stops the engine and starts the one in directory `dll_path`, which ends in "/". 0 when started,
  // else 1.
  int init_engine(const char* dll_path);
  void uninit_engine();

  // Replaces the reader by one for the name's extension, in any case: pdf, tif, tiff, bmp, jpg,
  // jpeg, png. False, and no reader, for a null path and any other name.
  bool create_reader(const char* image_filename, int resolution);
  // Opens a document to be rendered at `resolution` dots per inch, and forgets the image list.
  // Returns the page count, 0 on any failure.
  int load_image_document(const char* image_filename, int resolution);
  // Releases reader and writer. Page count, resolution, output name and results stay.
  void free_image_document();

  // Adds a file to the image list; always true, nothing is looked at before recognition.
  bool add_image(const char* image_filename);
  // Empties the image list and the output name; the writer is kept.
  void clear_images();

  // Recognises the image list if there is one, else the document. 0 when done, 2 when there is
  // nothing.
  int recognize();
  int recognize_document();
  int recognize_images();
  // Runs the engine on one page and adds its results; returns what the engine's recognize returned.
  int recognize_image_file(zelk::MDIB& image, std::vector<OCR_CHAR>& out_char_info, int& text_dir);

  const char* get_ocr_string();
  const wchar_t* get_ocr_string_unicode();
  // JSON of the page_id-th page that reached the engine; empty text, never null, for any other
  // index.
  const char* get_ocr_json_buffer(int page_id);
  // The same as wide text of UTF-16 code units. The text of an earlier call is gone, whatever the
  // index.
  const wchar_t* get_ocr_json_buffer_unicode(int page_id);

  // Names the searchable PDF that recognitions write, replacing the writer. False, and no writer,
  // for a null name and any other extension.
  bool set_double_document_filename(const char* double_document_filename);
  // Asks the engine for the form grid of an image: 1 when it cannot be loaded, 2 when there is no
  // grid, 0 when it was written. Engines of today have no such entry point, so a loaded image
  // gives 2.
  int save_form_grid(const char* src_image_file, const char* dst_form_grid_file);

  basereader* _reader = nullptr;  // owned; reader of the loaded document
  basewriter* _writer = nullptr;  // owned; writer of the searchable PDF
  QVOcrEngine _engine;
  std::string _sys_path;                   // directory text last given to init_engine
  std::string _log_file;                   // computed beside _sys_path; no such file is ever opened
  std::string _double_document_file_name;  // empty: no searchable PDF is written
  std::string _ocr_string;
  std::wstring _ocr_string_unicode;
  int _page_num;              // set by zeroed static storage; other instances must set it
  int _pdf_resolution = 200;  // dots per inch written into every page bitmap
  std::vector<std::string> _ocr_array_jsonbuffer;  // one text for each page that reached the engine
  std::wstring _json_buffer_unicode;
  std::vector<std::string> _array_images;

 private:
  void delete_writer();
  void clear_results();
  bool start_writing();
  bool recognize_page(FIBITMAP* dib, bool double_flag);
  void collect_characters(std::vector<OCR_CHAR>& out_char_info);
  std::string page_json();
};

}  // namespace ofd

#endif  // ZELK_PROCESS_MAINPROCESS_H
