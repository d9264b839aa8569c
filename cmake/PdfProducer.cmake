# SPDX-License-Identifier: Apache-2.0
# What produces PDFs behind the binding in src/writers/pdflib.h.
# Input:  ZELK_PDF_PRODUCER  embedded: the producer in src/pdfproducer; vendor: the vendor's library
#         PDFLIB_ROOT        vendor only: a folder with pdflib.h (there or in include/) and
#                            libpdf.so.6 (there or in lib/)
# Result: the target zelk_pdf_producer, which carries what compiling and linking the binding takes.

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
  add_library(PDFlib::PDFlib SHARED IMPORTED)
  set_target_properties(PDFlib::PDFlib PROPERTIES
    IMPORTED_LOCATION ${PDFlib_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${PDFlib_INCLUDE_DIR})
  target_compile_definitions(zelk_pdf_producer INTERFACE ZELK_PDF_VENDOR)
  target_link_libraries(zelk_pdf_producer INTERFACE PDFlib::PDFlib)
elseif(ZELK_PDF_PRODUCER STREQUAL "embedded")
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(QPDF REQUIRED IMPORTED_TARGET libqpdf)
  target_link_libraries(zelk_pdf_producer INTERFACE PkgConfig::QPDF)
else()
  message(FATAL_ERROR "ZELK_PDF_PRODUCER is \"${ZELK_PDF_PRODUCER}\"; it can be embedded or vendor")
endif()
