# Run by cpack between installing and packing, once for all packages, each of which stands in the folder of its component:
# strips what was compiled and adds what Debian's policy asks of a package and an installation does without.

function(put source target)
  get_filename_component(folder "${target}" DIRECTORY)
  file(MAKE_DIRECTORY "${folder}")
  if(target MATCHES "\\.gz$")
    execute_process(COMMAND gzip -9nc "${source}" OUTPUT_FILE "${target}" COMMAND_ERROR_IS_FATAL ANY)
  else()
    file(COPY_FILE "${source}" "${target}")
  endif()
  file(CHMOD "${target}" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
endfunction()

# strip_files(<option> <patterns>...): without what neither the loader nor the linker reads.
function(strip_files option)
  file(GLOB files ${ARGN})
  foreach(file IN LISTS files)
    if(NOT IS_SYMLINK "${file}")
      execute_process(COMMAND strip ${option} --remove-section=.comment --remove-section=.note
                              --enable-deterministic-archives "${file}" COMMAND_ERROR_IS_FATAL ANY)
    endif()
  endforeach()
endfunction()

file(GLOB staged_components LIST_DIRECTORIES true "${CPACK_TEMPORARY_DIRECTORY}/*")
foreach(staged IN LISTS staged_components)
  get_filename_component(component "${staged}" NAME)
  string(TOUPPER "${component}" component)
  set(package "${CPACK_DEBIAN_${component}_PACKAGE_NAME}")
  set(documents "${staged}/usr/share/doc/${package}")
  put("${CMAKE_CURRENT_LIST_DIR}/changelog" "${documents}/changelog.Debian.gz")
  put("${CMAKE_CURRENT_LIST_DIR}/../../CHANGELOG.md" "${documents}/changelog.gz")
  put("${CMAKE_CURRENT_LIST_DIR}/copyright" "${documents}/copyright")
  set(overrides "${CMAKE_CURRENT_LIST_DIR}/lintian-overrides/${package}")
  if(EXISTS "${overrides}")
    put("${overrides}" "${staged}/usr/share/lintian/overrides/${package}")
  endif()

  file(GLOB pages "${staged}/usr/share/man/man*/*.[1-9]")
  foreach(page IN LISTS pages)
    put("${page}" "${page}.gz")
    file(REMOVE "${page}")
  endforeach()

  strip_files(--strip-all "${staged}/usr/bin/*")
  strip_files(--strip-unneeded "${staged}/usr/lib/*/*.so*")
  strip_files(--strip-debug "${staged}/usr/lib/*/*.a")
endforeach()
