// SPDX-License-Identifier: Apache-2.0
// catching ENGINE/ DOCUMENT OUTPUT: a searchable PDF on a disk that is full after 100 bytes.
#include <sys/resource.h>
#include <writers/pdflib_exception.h>
#include <zelkAPI.h>

#include <csignal>
#include <cstdio>

int main(int, char** arguments) {
  if (zelk_init_engine(arguments[1]) != 0) return 2;
  if (zelk_load_image_document(arguments[2], 200) < 1) return 3;
  if (!zelk_set_double_document_filename(arguments[3])) return 4;
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit full = {100, 100};
  setrlimit(RLIMIT_FSIZE, &full);
  try {
    zelk_recognize();
  } catch (const PDFlib::Exception& error) {
    std::printf("caught PDFlib::Exception: %s\n", error.what());
    return error.get_errmsg() == error.what() && !error.get_apiname().empty() ? 0 : 5;
  }
  return 6;
}
