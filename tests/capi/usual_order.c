/* SPDX-License-Identifier: Apache-2.0 */
/* usual_order ENGINE_DIRECTORY DOCUMENT: what a host in C does, with the engine that reads "fixed".
 */
#include <stdio.h>
#include <string.h>

#include "zelkAPI.h"

int main(int argc, char** argv) {
  if (argc != 3) return 64;
  if (zelk_init_engine(argv[1]) != 0) return 1;
  if (zelk_load_image_document(argv[2], 72) != 1) return 2;
  if (zelk_recognize() != 0) return 3;
  if (strcmp(zelk_get_ocr_string(), "fixed\n") != 0) return 4;
  if (wcscmp(zelk_get_ocr_string_unicode(), L"fixed\n") != 0) return 5;
  if (strcmp(zelk_get_ocr_json_string(0), "{}") != 0) return 6;
  if (wcscmp(zelk_get_ocr_json_string_unicode(0), L"{}") != 0) return 7;
  zelk_free_image_document();
  zelk_uninit_engine();
  puts("the document was recognised");
  return 0;
}
