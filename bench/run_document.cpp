// SPDX-License-Identifier: Apache-2.0
// run_document ENGINE_DIRECTORY DOCUMENT RESOLUTION: recognises a document through libzelk.so, as a
// host does, and prints as JSON the pages, the bytes of all result texts and the peak of resident
// memory in KiB.
#include <sys/resource.h>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

#include "zelkAPI.h"

int main(int argc, char** argv) {
  if (argc != 4) return 64;
  if (zelk_init_engine(argv[1]) != 0) return 3;
  const int pages = zelk_load_image_document(argv[2], std::stoi(argv[3]));
  if (pages < 1 || zelk_recognize() != 0) return 2;
  std::size_t bytes = std::strlen(zelk_get_ocr_string());
  bytes += std::wcslen(zelk_get_ocr_string_unicode()) * sizeof(wchar_t);
  for (int page = 0; page < pages; ++page) bytes += std::strlen(zelk_get_ocr_json_string(page));
  zelk_free_image_document();
  zelk_uninit_engine();
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("{\"pages\": %d, \"text_bytes\": %zu, \"peak_kib\": %ld}\n", pages, bytes,
              usage.ru_maxrss);
  return 0;
}
