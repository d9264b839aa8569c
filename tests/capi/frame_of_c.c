/* SPDX-License-Identifier: Apache-2.0 */
/* A frame of C, built with unwind tables, between a host that catches and the library. */
#include "zelkAPI.h"

int recognize_from_c(int* begun);

int recognize_from_c(int* begun) {
  *begun = 1;
  const int code = zelk_recognize();
  *begun = 2;
  return code;
}
