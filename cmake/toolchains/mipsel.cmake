# Receivers with 32-bit little-endian MIPS processors. Programs run under qemu-user, with the libraries of the cross
# tools.

set(CMAKE_SYSTEM_PROCESSOR mipsel)
set(triplet mipsel-linux-gnu)
include("${CMAKE_CURRENT_LIST_DIR}/cross.cmake")

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-mipsel -L /usr/${triplet})
