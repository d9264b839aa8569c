/* SPDX-License-Identifier: Apache-2.0 */
/* json_pages ENGINE_DIR/ FILE: prints the JSON of each page, and how many pages have none. */
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
  /* A page on which the engine failed has an empty entry, and a page that cannot be read has none,
   * so that those behind it move up. An empty text is therefore no sign of the end. */
  int printed = 0;
  for (int i = 0; i < pages; ++i) {
    const char* json = zelk_get_ocr_json_string(i);
    if (*json == '\0') continue;
    puts(json);
    ++printed;
  }
  if (printed < pages) fprintf(stderr, "%d of %d pages have no JSON\n", pages - printed, pages);
  zelk_free_image_document();
  zelk_uninit_engine();
  return pages > 0 ? 0 : 3;
}
