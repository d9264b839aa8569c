// SPDX-License-Identifier: Apache-2.0
// layer_recorder ENGINE_DIRECTORY DOCUMENT RESOLUTION OUTPUT_FOLDER
// Recognises a document into OUTPUT_FOLDER/out.pdf and records, page by page, what the writer was
// given: OUTPUT_FOLDER/pages.json with sizes and characters, and the page image as the encoder made
// it, N.jpg.
#include <FreeImage.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "process/MainProcess.h"
#include "writers/pdfwriter.h"

namespace {

class RecordingWriter : public pdfwriter {
 public:
  explicit RecordingWriter(std::string folder)
      : _folder(std::move(folder)), _pages(_folder + "/pages.json") {
    _pages << "[";
  }
  ~RecordingWriter() override { _pages << "]\n"; }

  int add_page(FIBITMAP* dib, const std::vector<OCR_CHAR>& characters, bool dpi_flag) override {
    _pages << (_count == 0 ? "" : ",\n") << "{\"width\": " << FreeImage_GetWidth(dib)
           << ", \"height\": " << FreeImage_GetHeight(dib)
           << ", \"dots_per_meter\": " << FreeImage_GetDotsPerMeterY(dib) << ", \"characters\": [";
    const char* separator = "";
    for (const OCR_CHAR& c : characters) {
      _pages << separator << "[" << c.code << "," << c.left << "," << c.top << "," << c.right << ","
             << c.bottom << "]";
      separator = ",";
    }
    _pages << "]}";
    FreeImage_Save(FIF_JPEG, dib, (_folder + "/" + std::to_string(_count++) + ".jpg").c_str(), 0);
    return pdfwriter::add_page(dib, characters, dpi_flag);
  }

 private:
  const std::string _folder;
  std::ofstream _pages;
  int _count = 0;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 64;
  const std::string folder = argv[4];
  ofd::MainProcess process{};
  if (process.init_engine(argv[1]) != 0) return 3;
  if (process.load_image_document(argv[2], std::atoi(argv[3])) < 1) {
    std::fprintf(stderr, "%s: cannot be read\n", argv[2]);
    return 2;
  }
  process._writer = new RecordingWriter(folder);
  process._double_document_file_name = folder + "/out.pdf";
  process.recognize();
  std::ofstream(folder + "/text.txt") << process.get_ocr_string();
  process.free_image_document();
  process.uninit_engine();
  return 0;
}
