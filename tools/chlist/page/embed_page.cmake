# Writes a C++ file with the files of the page in it, as arrays of bytes: compilers limit the length of literals.
# cmake -D OUTPUT=page_files.cpp -D FOLDER=browser -P embed_page.cmake

include("${CMAKE_CURRENT_LIST_DIR}/page_files.cmake")

function(bytes_of result)
  set(bytes "")
  foreach(name IN LISTS ARGN)
    file(READ "${FOLDER}/${name}" hex HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," hex "${hex}")
    string(APPEND bytes "${hex}\n")
  endforeach()
  set(${result} "${bytes}" PARENT_SCOPE)
endfunction()

set(text "// Generated from the files of the page.\n#include \"chlist/page/page.h\"\n\nnamespace chlist {\n")
foreach(kind html css js)
  bytes_of(bytes ${page_${kind}_files})
  string(APPEND text "namespace {\nconstexpr char ${kind}[] = {${bytes}};\n}\n"
    "std::string_view page_${kind}() { return {${kind}, sizeof ${kind}}; }\n")
endforeach()
string(APPEND text "}  // namespace chlist\n")
file(WRITE "${OUTPUT}" "${text}")
