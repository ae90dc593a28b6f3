# channel_unity_by_folder(<target>): the C++ sources of a folder are compiled as one. Small files spend most of a
# compiler's time on the headers and templates that all of them share. Names of one folder must differ, also those of
# anonymous namespaces. With CHANNEL_UNITY off each file is compiled alone, as editors and clang-tidy want to see it.

option(CHANNEL_UNITY "Compile the tool and the tests folder by folder, not file by file" ON)

function(channel_unity_by_folder target)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${CHANNEL_UNITY} UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}" OUTPUT_VARIABLE folder)
    cmake_path(GET folder PARENT_PATH folder)
    string(MAKE_C_IDENTIFIER "${folder}" group)
    set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${group}")
  endforeach()
endfunction()
