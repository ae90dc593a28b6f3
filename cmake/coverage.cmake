# CHANNEL_COVERAGE: counters in the library's own code, and nowhere else, for gcovr. Unoptimised, so that every
# condition of the source keeps its branches; inline functions are counted where the library uses them.

option(CHANNEL_COVERAGE "Count the library's executed lines and branches (GCC only)" OFF)

if(CHANNEL_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    message(FATAL_ERROR "channel: CHANNEL_COVERAGE needs GCC")
  endif()
  # Whatever takes the library's objects in needs the runtime that writes the counters.
  add_link_options(--coverage)
endif()

function(channel_count_coverage target)
  if(CHANNEL_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -O0)
  endif()
endfunction()
