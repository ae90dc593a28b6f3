# channel_add_gtest_suites(<target> [LOCK <regex>] [LONG <regex>]): one ctest entry for each suite of a GoogleTest
# program, named <target>.<suite>. The suites are asked for when ctest starts, not while building, and only after the
# program changed. Suites whose names match LOCK use files at fixed places: no two of them run at the same time. Suites
# whose names match LONG start first, so that the last ones to end are short.

set(CHANNEL_GTEST_SUITES_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/gtest_suites_at_test_time.cmake")

function(channel_add_gtest_suites target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LOCK;LONG" "")
  set(include_file "${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake")
  get_property(emulator TARGET ${target} PROPERTY CROSSCOMPILING_EMULATOR)
  file(GENERATE OUTPUT "${include_file}" CONTENT "set(target \"${target}\")
set(program \"$<TARGET_FILE:${target}>\")
set(emulator \"${emulator}\")
set(lock \"${arg_LOCK}\")
set(long \"${arg_LONG}\")
set(list_file \"${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.txt\")
include(\"${CHANNEL_GTEST_SUITES_SCRIPT}\")
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${include_file}")
endfunction()
