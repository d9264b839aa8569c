/* SPDX-License-Identifier: Apache-2.0 */
/* Every function of the interface links from plain C and answers without an engine or a document.
 */
#include <stdio.h>
#include <string.h>

#include "zelkAPI.h"

static int failures = 0;

static void expect(bool holds, const char* what) {
  if (holds) return;
  fprintf(stderr, "failed: %s\n", what);
  ++failures;
}

int main(void) {
  zelk_uninit_engine();
  expect(zelk_init_engine("/nowhere/") == 1, "no engine to start");
  expect(zelk_init_engine_unicode(L"/nowhere/") == 1, "no engine to start by wide path");
  expect(zelk_load_image_document("/nowhere/a.png", 200) == 0, "no document");
  expect(zelk_load_image_document_unicode(L"/nowhere/a.png", 200) == 0, "no document by wide path");
  expect(zelk_recognize() == 2, "nothing to recognise");
  expect(!zelk_set_double_document_filename("a.txt"), "no writer for this extension");
  expect(!zelk_set_double_document_filename_unicode(L"a.pdf"), "no wide form of the output name");
  expect(zelk_add_image("/nowhere/a.png"), "any image is added");
  expect(!zelk_add_image_unicode(L"a.png"), "no wide form of adding");
  expect(zelk_recognize() == 0, "a list of unreadable files is done");
  zelk_clear_images();
  expect(zelk_recognize() == 2, "the list is empty again");
  expect(strcmp(zelk_get_ocr_string(), "") == 0, "no text");
  expect(wcscmp(zelk_get_ocr_string_unicode(), L"") == 0, "no wide text");
  expect(strcmp(zelk_get_ocr_json_string(0), "") == 0, "no JSON");
  expect(wcscmp(zelk_get_ocr_json_string_unicode(0), L"") == 0, "no wide JSON");
  expect(zelk_save_form_grid("a.png", "a.grid") == 1, "no engine to load the image");
  expect(zelk_save_form_grid_unicode(L"a.png", L"a.grid") == -1, "no wide form of the grid");
  zelk_free_image_document();
  zelk_uninit_engine();
  return failures == 0 ? 0 : 1;
}
