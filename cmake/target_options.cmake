# The language rules of our own targets.

include("${CMAKE_CURRENT_LIST_DIR}/coverage.cmake")

# channel_target(<target>): C11 and C++20 without extensions, warnings on.
function(channel_target target)
  set_target_properties(${target} PROPERTIES
    C_STANDARD 11 C_STANDARD_REQUIRED ON C_EXTENSIONS OFF
    CXX_STANDARD 20 CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
  channel_enable_warnings(${target})
endfunction()

# channel_library_objects(<target>): what shared and static library have in common. Position independent for both, so
# that a host may put the static library into a plug-in; only what a header exports is visible.
function(channel_library_objects target)
  channel_target(${target})
  set_target_properties(${target} PROPERTIES
    POSITION_INDEPENDENT_CODE ON
    C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE
    -fno-semantic-interposition $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions> $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>)
  channel_count_coverage(${target})
endfunction()

# channel_shared_library(<target>): version, SONAME and the linker's rules. Under sanitizers the runtime's symbols are
# only found when a program is linked, so unresolved ones cannot be refused there.
function(channel_shared_library target)
  set_target_properties(${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  target_link_options(${target} PRIVATE -Wl,--as-needed)
  if(NOT CHANNEL_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()
