# SPDX-License-Identifier: Apache-2.0
# cmake -D OUTPUT=FILE.cpp -D FILES=LIST -P embed_files.cmake: writes the files of the list as the
# constants that html_files.h declares; page.html becomes kPageHtml.
set(text "#include \"outputs/html_files.h\"\n\nnamespace cli {\n\n")
foreach(file IN LISTS FILES)
  get_filename_component(stem ${file} NAME_WE)
  get_filename_component(extension ${file} EXT)
  string(SUBSTRING ${extension} 1 -1 extension)
  set(name k)
  foreach(word ${stem} ${extension})
    string(SUBSTRING ${word} 0 1 first)
    string(SUBSTRING ${word} 1 -1 rest)
    string(TOUPPER ${first} first)
    string(APPEND name ${first}${rest})
  endforeach()
  file(READ ${file} content)
  string(APPEND text "const std::string_view ${name} = R\"embedded(${content})embedded\";\n")
endforeach()
file(WRITE ${OUTPUT} "${text}\n}  // namespace cli\n")
