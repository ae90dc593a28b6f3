# ccache, when it is installed: what was compiled before, in any build folder, is taken from there. Precompiled headers
# need to be told that their date does not matter.

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(CHANNEL_CCACHE ccache)
  mark_as_advanced(CHANNEL_CCACHE)
  if(CHANNEL_CCACHE)
    set(launcher "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}"
                 "${CHANNEL_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
    add_compile_options("$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>")
    add_compile_options("$<$<COMPILE_LANG_AND_ID:CXX,Clang>:SHELL:-Xclang -fno-pch-timestamp>")
  endif()
endif()
