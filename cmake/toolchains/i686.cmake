# Receivers with 32-bit x86 processors. The programs run as they are on an x86-64 machine with the 32-bit C and C++
# libraries; without them the loader of the cross tools stands in for an emulator.

set(CMAKE_SYSTEM_PROCESSOR i686)
set(triplet i686-linux-gnu)
include("${CMAKE_CURRENT_LIST_DIR}/cross.cmake")

if(NOT EXISTS /lib/ld-linux.so.2 OR NOT EXISTS /usr/lib32/libstdc++.so.6)
  set(CMAKE_CROSSCOMPILING_EMULATOR /usr/${triplet}/lib/ld-linux.so.2 --library-path /usr/${triplet}/lib)
endif()
