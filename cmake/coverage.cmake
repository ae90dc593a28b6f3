# CHANNEL_COVERAGE: counters in the library's and the tool's own code, and nowhere else, for gcovr. Unoptimised, so that
# every condition of the source keeps its branches; inline functions are counted where that code uses them.

option(CHANNEL_COVERAGE "Count the executed lines and branches of the library and the tool (GCC only)" OFF)

if(CHANNEL_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    message(FATAL_ERROR "channel: CHANNEL_COVERAGE needs GCC")
  endif()
  # Whatever takes the counted objects in needs the runtime that writes the counters.
  add_link_options(--coverage)
endif()

# channel_count_coverage(<target>): comes behind the target's own optimisation, which it takes back. Threads count
# together: an increment that is lost leaves a line that ran without a count.
function(channel_count_coverage target)
  if(CHANNEL_COVERAGE)
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic -O0)
  endif()
endfunction()

# channel_leave_uncounted(<program>): what the program itself runs of counted code does not count, only what the programs
# do that it starts.
function(channel_leave_uncounted program)
  if(CHANNEL_COVERAGE)
    target_sources(${program} PRIVATE "${PROJECT_SOURCE_DIR}/tests/coverage/leave_uncounted.c")
  endif()
endfunction()
