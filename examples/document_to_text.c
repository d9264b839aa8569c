/* SPDX-License-Identifier: Apache-2.0 */
/* document_to_text ENGINE_DIR/ FILE: prints the text of an image, a TIFF or a PDF. */
#include <stdio.h>
#include <zelkAPI.h>

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: %s ENGINE_DIR/ FILE\n", argv[0]);
    return 1;
  }
  if (zelk_init_engine(argv[1]) != 0) return 2; /* the library has printed why */

  int result = 3;
  if (zelk_load_image_document(argv[2], 200) > 0) { /* PDF pages at 200 dots per inch */
    zelk_recognize();
    fputs(zelk_get_ocr_string(), stdout);
    zelk_free_image_document();
    result = 0;
  } else {
    fprintf(stderr, "%s: cannot be read\n", argv[2]);
  }
  zelk_uninit_engine();
  return result;
}
