# Receivers with 64-bit ARM processors. Programs run under qemu-user, with the libraries of the cross tools.

set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(triplet aarch64-linux-gnu)
include("${CMAKE_CURRENT_LIST_DIR}/cross.cmake")

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/${triplet})
