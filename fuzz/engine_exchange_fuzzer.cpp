// SPDX-License-Identifier: Apache-2.0
// One page after another against an engine that answers whatever the input says. What the process
// object keeps of the answers is compared with what it should believe.
#include "fuzz_input.h"
#include "process/MainProcess.h"
#include "support/Stubs.h"
#include "unruly_engine.h"

namespace {

bool same_boxes(const std::vector<OCR_CHAR>& one, const std::vector<OCR_CHAR>& other) {
  return one.size() == other.size() && std::equal(one.begin(), one.end(), other.begin(),
                                                  [](const OCR_CHAR& a, const OCR_CHAR& b) {
                                                    return a.code == b.code && a.left == b.left &&
                                                           a.top == b.top && a.right == b.right &&
                                                           a.bottom == b.bottom;
                                                  });
}

void compare(ofd::MainProcess& process, const WriterRecord& written) {
  const UnrulyEngine& engine = unruly_engine();
  require(process.get_ocr_string() == engine.texts, "all narrow texts are joined");
  require(process.get_ocr_string_unicode() == engine.wides, "all wide texts are joined");
  require(process._ocr_array_jsonbuffer == engine.jsons, "every page has its JSON");
  require(written.pages.size() == engine.believed.size(), "every page is written");
  for (std::size_t page = 0; page < written.pages.size(); ++page) {
    require(same_boxes(written.pages[page], engine.believed[page]), "believed characters are kept");
    const char* const json = process.get_ocr_json_buffer(static_cast<int>(page));
    require(json == engine.jsons[page], "a page's JSON can be asked for");
    process.get_ocr_json_buffer_unicode(static_cast<int>(page));
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  unruly_engine() = UnrulyEngine();
  unruly_engine().input = &input;
  ReaderRecord pages;
  pages.pages = 1 + input.below(3);
  pages.width = 1 + static_cast<unsigned>(input.below(9));
  WriterRecord written;
  ofd::MainProcess process{};
  process._reader = new StubReader(pages);
  process._page_num = pages.pages;
  process._pdf_resolution = input.number<std::int32_t>();
  process._writer = new StubWriter(written);
  process._double_document_file_name = "unwritten.pdf";
  plug_in(process._engine);
  require(process.recognize() == 0, "a document with pages is recognised");
  compare(process, written);
  return 0;
}
