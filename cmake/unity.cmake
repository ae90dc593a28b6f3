# channel_unity_by_folder(<target>): the C++ sources of a folder are compiled as one. Small files cost a compiler little
# beside the headers and templates that all of them need; so does a precompiled header, where there are few units. Names
# of one folder differ, also those of anonymous namespaces. With CHANNEL_UNITY off each file is compiled alone, as editors
# want to see it.

option(CHANNEL_UNITY "Compile folder by folder, not file by file" ON)

function(channel_unity_by_folder target)
  if(NOT CHANNEL_UNITY)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP DISABLE_PRECOMPILE_HEADERS ON)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source OUTPUT_VARIABLE folder)
    cmake_path(GET folder PARENT_PATH folder)
    cmake_path(GET folder FILENAME group)
    set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${group}")
  endforeach()
endfunction()
