# Writes a C++ file with the files for browsers in it, as arrays of bytes: compilers limit the length of literals.
# cmake -D OUTPUT=browser_files.cpp -D FOLDER=tools/chlist -P embed_files.cmake

include("${CMAKE_CURRENT_LIST_DIR}/browser_files.cmake")

set(all_files ${report_files} ${editor_files})
list(REMOVE_DUPLICATES all_files)

function(name_of_bytes result file)
  string(MAKE_C_IDENTIFIER "${file}" name)
  set(${result} "bytes_of_${name}" PARENT_SCOPE)
endfunction()

set(text "// Generated from the files for browsers.\n#include \"chlist/page/browser_files.h\"\n\nnamespace chlist {\nnamespace {\n")
foreach(file IN LISTS all_files)
  name_of_bytes(bytes "${file}")
  file(READ "${FOLDER}/${file}" hex HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," hex "${hex}")
  string(APPEND text "constexpr char ${bytes}[] = {${hex}};\n")
endforeach()
foreach(page report editor)
  string(APPEND text "constexpr browser_file files_of_${page}[] = {\n")
  foreach(file IN LISTS ${page}_files)
    name_of_bytes(bytes "${file}")
    cmake_path(GET file FILENAME name)
    string(APPEND text "{\"${name}\", {${bytes}, sizeof ${bytes}}},\n")
  endforeach()
  string(APPEND text "};\n")
endforeach()
string(APPEND text "}  // namespace\n")
foreach(page report editor)
  string(APPEND text "std::span<const browser_file> ${page}_files() { return files_of_${page}; }\n")
endforeach()
file(WRITE "${OUTPUT}" "${text}}  // namespace chlist\n")
