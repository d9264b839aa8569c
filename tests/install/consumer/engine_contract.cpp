// SPDX-License-Identifier: Apache-2.0
// What an engine author starts from: the entry points are declared by the installed header.
#include "engine/qv_engine.h"

extern "C" int qv_recognize() {
  return 0;
}
