# GTest::gtest_main: the installed package for native builds; the sources under /usr/src/googletest for cross builds, and
# when there is no package. Without either, GTest::gtest_main does not exist and the unit tests are left out.

set(CHANNEL_GTEST_SOURCE_DIR /usr/src/googletest CACHE PATH "Where the sources of GoogleTest are")

if(NOT CMAKE_CROSSCOMPILING)
  find_package(GTest QUIET)
endif()

if(NOT TARGET GTest::gtest_main AND EXISTS "${CHANNEL_GTEST_SOURCE_DIR}/CMakeLists.txt")
  set(BUILD_GMOCK OFF)
  set(INSTALL_GTEST OFF)
  set(CMAKE_POLICY_DEFAULT_CMP0077 NEW)
  add_subdirectory("${CHANNEL_GTEST_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
  target_compile_options(gtest PRIVATE -O0)
  if(NOT TARGET GTest::gtest_main)
    add_library(GTest::gtest_main ALIAS gtest_main)
  endif()
endif()
