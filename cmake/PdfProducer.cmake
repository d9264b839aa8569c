# SPDX-License-Identifier: Apache-2.0
# What produces PDFs behind the binding in src/writers/pdflib.h.
# Input:  ZELK_PDF_PRODUCER  embedded: the producer in src/pdfproducer; vendor: the vendor's library
#         PDFLIB_ROOT        vendor only: a folder with pdflib.h (there or in include/) and
#                            libpdf.so.6 (there or in lib/)
# Result: the target zelk_pdf_producer, which carries what compiling and linking the binding takes.

#         PDFlib_LIBRARY_DIR for the run path, with the vendor's library
#
# qpdf is the embedded producer's, and the command line's own, which takes the passwords off PDFs.
find_package(PkgConfig REQUIRED)
add_library(zelk_pdf_producer INTERFACE)

if(ZELK_PDF_PRODUCER STREQUAL "vendor")
  find_path(PDFlib_INCLUDE_DIR pdflib.h
    PATHS ${PDFLIB_ROOT}/include ${PDFLIB_ROOT} NO_DEFAULT_PATH NO_CACHE)
  find_file(PDFlib_LIBRARY libpdf.so.6
    PATHS ${PDFLIB_ROOT}/lib ${PDFLIB_ROOT} NO_DEFAULT_PATH NO_CACHE)
  if(NOT PDFlib_INCLUDE_DIR OR NOT PDFlib_LIBRARY)
    message(FATAL_ERROR
      "ZELK_PDF_PRODUCER=vendor needs PDFLIB_ROOT, a folder with include/pdflib.h and "
      "lib/libpdf.so.6; it is \"${PDFLIB_ROOT}\"")
  endif()
  get_filename_component(PDFlib_LIBRARY_DIR ${PDFlib_LIBRARY} DIRECTORY)
  # Linked by name: a library without a SONAME would be asked for by its path on this machine.
  add_library(PDFlib::PDFlib INTERFACE IMPORTED)
  target_include_directories(PDFlib::PDFlib INTERFACE ${PDFlib_INCLUDE_DIR})
  target_link_directories(PDFlib::PDFlib INTERFACE ${PDFlib_LIBRARY_DIR})
  target_link_libraries(PDFlib::PDFlib INTERFACE -l:libpdf.so.6)
  # What is not shipped, tests and examples, finds it here; see zelk_set_run_path for the rest.
  list(APPEND CMAKE_BUILD_RPATH ${PDFlib_LIBRARY_DIR})
  target_compile_definitions(zelk_pdf_producer INTERFACE ZELK_PDF_VENDOR)
  target_link_libraries(zelk_pdf_producer INTERFACE PDFlib::PDFlib)
  if(ZELK_BUILD_CLI OR ZELK_BUILD_TESTS OR ZELK_BUILD_BENCHMARKS)
    pkg_check_modules(QPDF REQUIRED IMPORTED_TARGET libqpdf)
    pkg_check_modules(Nettle REQUIRED IMPORTED_TARGET nettle)
  endif()
elseif(ZELK_PDF_PRODUCER STREQUAL "embedded")
  pkg_check_modules(QPDF REQUIRED IMPORTED_TARGET libqpdf)
  pkg_check_modules(Nettle REQUIRED IMPORTED_TARGET nettle)
  target_link_libraries(zelk_pdf_producer INTERFACE PkgConfig::QPDF PkgConfig::Nettle)
else()
  message(FATAL_ERROR "ZELK_PDF_PRODUCER is \"${ZELK_PDF_PRODUCER}\"; it can be embedded or vendor")
endif()
