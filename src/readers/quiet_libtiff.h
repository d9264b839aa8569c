// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_QUIET_LIBTIFF_H
#define ZELK_READERS_QUIET_LIBTIFF_H

#include <tiffio.h>

// Keeps libtiff silent for the length of a scope: it writes dozens of lines to standard error for
// every page, also of good files, and readers report by what they return. Its handlers belong to
// the whole process, so those of the host are put back at the end of the scope. A FreeImage that
// has a libtiff of its own is not reached.
class QuietLibtiff {
 public:
  QuietLibtiff()
      : _error(TIFFSetErrorHandler(nullptr)),
        _error_ext(TIFFSetErrorHandlerExt(nullptr)),
        _warning(TIFFSetWarningHandler(nullptr)),
        _warning_ext(TIFFSetWarningHandlerExt(nullptr)) {}
  ~QuietLibtiff() {
    TIFFSetErrorHandler(_error);
    TIFFSetErrorHandlerExt(_error_ext);
    TIFFSetWarningHandler(_warning);
    TIFFSetWarningHandlerExt(_warning_ext);
  }
  QuietLibtiff(const QuietLibtiff&) = delete;
  QuietLibtiff& operator=(const QuietLibtiff&) = delete;

 private:
  const TIFFErrorHandler _error;
  const TIFFErrorHandlerExt _error_ext;
  const TIFFErrorHandler _warning;
  const TIFFErrorHandlerExt _warning_ext;
};

#endif  // ZELK_READERS_QUIET_LIBTIFF_H
