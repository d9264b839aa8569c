# SPDX-License-Identifier: Apache-2.0
# What an installation holds:
#   LIBDIR/libzelk.so*                     the library
#   LIBDIR/zelk/engine/libQVEngine.so      the default engine
#   BINDIR/zelk                            the command line
#   BINDIR/zelk-engine-check               the examination of engines
#   MANDIR/man1/zelk.1                     its manual page
#   DATADIR/bash-completion/completions/   what bash completes for it
#   INCLUDEDIR/zelk/                       zelkAPI.h, zelk_export.h, engine/qv_engine.h,
#                                          writers/pdflib_exception.h
#   LIBDIR/cmake/zelk, LIBDIR/pkgconfig    for find_package(zelk) and pkg-config zelk
# Everything is found relative to everything else, so that the prefix can be renamed.
include(CMakePackageConfigHelpers)

set(ZELK_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/zelk)
set(ZELK_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/zelk)

install(TARGETS zelk EXPORT zelkTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES src/api/zelkAPI.h src/api/zelk_export.h DESTINATION ${ZELK_INSTALL_INCLUDEDIR})
install(FILES src/engine/qv_engine.h DESTINATION ${ZELK_INSTALL_INCLUDEDIR}/engine)
install(FILES src/writers/pdflib_exception.h DESTINATION ${ZELK_INSTALL_INCLUDEDIR}/writers)
install(FILES README.md CHANGELOG.md SECURITY.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL PATTERN *.1 EXCLUDE)

if(TARGET zelk_cli)
  install(TARGETS zelk_cli zelk_engine_check RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES docs/zelk.1 docs/zelk-engine-check.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES packaging/bash-completion/zelk
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endif()

install(EXPORT zelkTargets NAMESPACE zelk:: DESTINATION ${ZELK_INSTALL_CMAKEDIR})
configure_package_config_file(cmake/zelkConfig.cmake.in ${CMAKE_BINARY_DIR}/package/zelkConfig.cmake
  INSTALL_DESTINATION ${ZELK_INSTALL_CMAKEDIR} PATH_VARS CMAKE_INSTALL_LIBDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/zelkConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/zelkConfig.cmake
  ${CMAKE_BINARY_DIR}/package/zelkConfigVersion.cmake DESTINATION ${ZELK_INSTALL_CMAKEDIR})

file(RELATIVE_PATH pkgconfig_to_prefix
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/zelk.pc.in ${CMAKE_BINARY_DIR}/package/zelk.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/zelk.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
