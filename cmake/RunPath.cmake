# SPDX-License-Identifier: Apache-2.0
# zelk_set_run_path(TARGET [FOLDER...]): where something that is shipped looks for libraries besides
# the system's folders: FOLDERs, then the folders that the linker found its libraries in. Empty ones
# are left out.
#
# It is the same in the build folder as installed. CMake would pad one that it has to change at
# installation with empty elements, and an empty element is the current folder: whoever runs the
# program from a folder of downloads would run a library that lies there.
function(zelk_set_run_path target)
  set(folders ${ARGN})
  list(REMOVE_ITEM folders "")
  set_target_properties(${target} PROPERTIES
    INSTALL_RPATH "${folders}"
    INSTALL_RPATH_USE_LINK_PATH ON
    BUILD_WITH_INSTALL_RPATH ON)
endfunction()
