# SPDX-License-Identifier: Apache-2.0
# FreeImage, which ships no CMake or pkg-config file of its own.
# Input:  FreeImage_ROOT (optional folder with include/FreeImage.h and lib/libfreeimage.so)
# Result: FreeImage_FOUND, FreeImage_LIBRARY, FreeImage_INCLUDE_DIR, target FreeImage::FreeImage.

find_path(FreeImage_INCLUDE_DIR FreeImage.h)
find_library(FreeImage_LIBRARY freeimage)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(FreeImage
  REQUIRED_VARS FreeImage_LIBRARY FreeImage_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "install libfreeimage-dev (scripts/setup run does it)")

if(FreeImage_FOUND AND NOT TARGET FreeImage::FreeImage)
  add_library(FreeImage::FreeImage UNKNOWN IMPORTED)
  set_target_properties(FreeImage::FreeImage PROPERTIES
    IMPORTED_LOCATION ${FreeImage_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${FreeImage_INCLUDE_DIR})
endif()
mark_as_advanced(FreeImage_INCLUDE_DIR FreeImage_LIBRARY)
