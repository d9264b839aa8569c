// SPDX-License-Identifier: Apache-2.0
#include "host_guard.h"

#include <allheaders.h>

// The OpenMP runtime that libtesseract runs on. Its header comes with one compiler only, its two
// functions are part of the OpenMP standard.
extern "C" {
int omp_get_max_active_levels(void);
void omp_set_max_active_levels(int levels);
}

namespace tesseract_engine {

// Limiting the number of threads would not do: Tesseract's loops name their own.
HostGuard::HostGuard()
    : active_levels_(omp_get_max_active_levels()), severity_(setMsgSeverity(L_SEVERITY_NONE)) {
  omp_set_max_active_levels(0);
}

HostGuard::~HostGuard() {
  setMsgSeverity(severity_);
  omp_set_max_active_levels(active_levels_);
}

}  // namespace tesseract_engine
