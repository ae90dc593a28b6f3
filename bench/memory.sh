#!/usr/bin/env bash
# What the library keeps in memory: on the heap with the full list loaded, and as static data.
#
# Usage: bench/memory.sh [BUILD_DIR [TOOLS [EMULATOR...]]]
#   BUILD_DIR   default build/release
#   TOOLS       in front of size and nm for a cross build: arm-linux-gnueabihf-
#   EMULATOR    what runs the programs of a cross build: qemu-arm -L /usr/arm-linux-gnueabihf
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_dir=${1:-build/release}
tools=${2-}
emulator=("${@:3}")
library=$build_dir/lib/libchannel.so

status=0
"${emulator[@]}" "$build_dir/bin/memory_after_load" || status=$?

printf '\nstatic data of %s\n' "$library"
"${tools}size" "$library"
printf '\nits variables of 16 bytes and more\n'
"${tools}nm" --size-sort --reverse-sort --radix=d --demangle "$library" |
  awk 'tolower($2) ~ /^[bd]$/ && $1 + 0 >= 16 { bytes = $1 + 0; $1 = $2 = ""; printf "%9d %s\n", bytes, $0 }'
exit "$status"
