/* SPDX-License-Identifier: Apache-2.0 */
/* A host that knows zelk from its installation alone: consumer ENGINE_DIR/ prints whether the
 * engine there starts. */
#include <stdio.h>
#include <zelkAPI.h>

int main(int argc, char** argv) {
  const int failed = argc < 2 || zelk_init_engine(argv[1]) != 0;
  puts(failed ? "no engine" : "started");
  zelk_uninit_engine();
  return failed;
}
