# Receivers with 32-bit ARM processors (hard float). Programs run under qemu-user, with the libraries of the cross tools.

set(CMAKE_SYSTEM_PROCESSOR arm)
set(triplet arm-linux-gnueabihf)
include("${CMAKE_CURRENT_LIST_DIR}/cross.cmake")

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/${triplet})
