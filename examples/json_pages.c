/* SPDX-License-Identifier: Apache-2.0 */
/* json_pages ENGINE_DIR/ FILE: prints the JSON of each page that was read. */
#include <stdio.h>
#include <zelkAPI.h>

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: %s ENGINE_DIR/ FILE\n", argv[0]);
    return 1;
  }
  if (zelk_init_engine(argv[1]) != 0) return 2;

  const int pages = zelk_load_image_document(argv[2], 200);
  if (pages > 0) zelk_recognize();
  /* Pages that cannot be read have no entry, so there may be fewer entries than pages. */
  for (int i = 0; i < pages && *zelk_get_ocr_json_string(i) != '\0'; ++i) {
    puts(zelk_get_ocr_json_string(i));
  }
  zelk_free_image_document();
  zelk_uninit_engine();
  return pages > 0 ? 0 : 3;
}
