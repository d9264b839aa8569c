# SPDX-License-Identifier: Apache-2.0
# PDFium. Debian carries it inside LibreOffice, as libpdfiumlo.so without a SONAME and without
# headers (src/readers/pdfium_api.h declares what is used); a stand-alone build is libpdfium.so.
# Input:  PDFium_ROOT (optional folder with lib/libpdfium.so)
# Result: PDFium_FOUND, PDFium_LIBRARY, PDFium_LIBRARY_DIR (for the run path) and the target
#         PDFium::PDFium.

find_library(PDFium_LIBRARY
  NAMES pdfium pdfiumlo
  PATHS /usr/lib/libreoffice/program /usr/lib64/libreoffice/program)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(PDFium
  REQUIRED_VARS PDFium_LIBRARY
  REASON_FAILURE_MESSAGE
    "install libreoffice-core-nogui (scripts/setup run does it) or set PDFium_ROOT")

if(PDFium_FOUND)
  get_filename_component(PDFium_LIBRARY_DIR ${PDFium_LIBRARY} DIRECTORY)
  if(NOT TARGET PDFium::PDFium)
    # Linked by name, so that the run path and not this machine's full path decides where it is
    # loaded from.
    add_library(PDFium::PDFium SHARED IMPORTED)
    set_target_properties(PDFium::PDFium PROPERTIES
      IMPORTED_LOCATION ${PDFium_LIBRARY}
      IMPORTED_NO_SONAME TRUE)
  endif()
endif()
mark_as_advanced(PDFium_LIBRARY)
