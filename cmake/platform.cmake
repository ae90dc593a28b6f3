# What every target must be: records are images of little-endian files, so big-endian machines are refused.

if(NOT CMAKE_CXX_BYTE_ORDER STREQUAL "LITTLE_ENDIAN")
  message(FATAL_ERROR "channel: only little-endian targets are supported, not '${CMAKE_CXX_BYTE_ORDER}'")
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Without it a 32-bit host cannot open files on file systems with 64-bit inode numbers.
  add_compile_definitions(_FILE_OFFSET_BITS=64)
endif()
