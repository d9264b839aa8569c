/* SPDX-License-Identifier: Apache-2.0 */
/* image_list ENGINE_DIR/ IMAGE…: recognises single images as the pages of one text. Images that
 * cannot be read are left out. */
#include <stdio.h>
#include <zelkAPI.h>

int main(int argc, char** argv) {
  if (argc < 3) {
    fprintf(stderr, "usage: %s ENGINE_DIR/ IMAGE...\n", argv[0]);
    return 1;
  }
  if (zelk_init_engine(argv[1]) != 0) return 2;

  for (int i = 2; i < argc; ++i) zelk_add_image(argv[i]); /* opened when they are recognised */
  zelk_recognize();
  fputs(zelk_get_ocr_string(), stdout);

  zelk_clear_images(); /* the list would be recognised again otherwise */
  zelk_uninit_engine();
  return 0;
}
