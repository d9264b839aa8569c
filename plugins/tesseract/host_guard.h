// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESSERACT_HOST_GUARD_H
#define ZELK_TESSERACT_HOST_GUARD_H

namespace tesseract_engine {

// While one lives, Tesseract's and Leptonica's process-wide settings are as the engine needs them
// on this thread; afterwards they are the host's again. OpenMP: Tesseract's parallel loops run on
// the calling thread alone. On few cores they cost several times what they gain, and threads that
// outlive the library crash the process. Leptonica: no messages on standard error.
class HostGuard {
 public:
  HostGuard();
  ~HostGuard();
  HostGuard(const HostGuard&) = delete;
  HostGuard& operator=(const HostGuard&) = delete;

 private:
  int active_levels_;
  int severity_;
};

}  // namespace tesseract_engine

#endif  // ZELK_TESSERACT_HOST_GUARD_H
