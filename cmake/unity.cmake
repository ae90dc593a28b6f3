# channel_unity_by_folder(<target> [<folders>...]): the C++ sources of a folder are compiled as one. Small files cost a
# compiler little beside the headers and templates that all of them need; so does a precompiled header, where there are
# few units. Folders that are named together, as edit+merge, are one unit with all that is below them; of several names
# that fit a source the first counts. Names of one unit differ, also those of anonymous namespaces. With CHANNEL_UNITY
# off each file is compiled alone, as editors want to see it; with CHANNEL_UNITY_EXCEPT those whose path it matches.

option(CHANNEL_UNITY "Compile folder by folder, not file by file" ON)
set(CHANNEL_UNITY_EXCEPT "" CACHE STRING "A pattern of paths: these files are compiled alone all the same")
mark_as_advanced(CHANNEL_UNITY_EXCEPT)

# channel_unity_group(<variable> <source> [<folders>...]): the name of the unit that the source belongs to.
function(channel_unity_group variable source)
  cmake_path(ABSOLUTE_PATH source OUTPUT_VARIABLE folder)
  cmake_path(GET folder PARENT_PATH folder)
  cmake_path(GET folder FILENAME group)
  cmake_path(RELATIVE_PATH folder BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
  foreach(folders IN LISTS ARGN)
    string(REPLACE "+" "|" names "${folders}")
    if("/${folder}/" MATCHES "/(${names})/")
      string(REPLACE "+" "_" group "${folders}")
      break()
    endif()
  endforeach()
  set(${variable} "${group}" PARENT_SCOPE)
endfunction()

function(channel_unity_by_folder target)
  if(NOT CHANNEL_UNITY)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP DISABLE_PRECOMPILE_HEADERS ON)
  # GCC collects its garbage whenever it has grown by 128 MB, a tenth of its time for a unit that needs 500 MB in all.
  target_compile_options(${target} PRIVATE "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:SHELL:--param ggc-min-heapsize=800000>")
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    channel_unity_group(group "${source}" ${ARGN})
    set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${group}")
    if(CHANNEL_UNITY_EXCEPT AND source MATCHES "${CHANNEL_UNITY_EXCEPT}")
      set_source_files_properties("${source}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
  endforeach()
endfunction()
