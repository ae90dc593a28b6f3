#!/usr/bin/env bash
# What the library keeps in memory: on the heap with the full list loaded, and as static data.
#
# Usage: bench/memory.sh [BUILD_DIR]   (default build/release)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

build_dir=${1:-build/release}
library=$build_dir/lib/libchannel.so

status=0
"$build_dir/bin/memory_after_load" || status=$?

printf '\nstatic data of %s\n' "$library"
size "$library"
printf '\nits variables of 16 bytes and more\n'
nm --size-sort --reverse-sort --radix=d --demangle "$library" |
  awk 'tolower($2) ~ /^[bd]$/ && $1 + 0 >= 16 { bytes = $1 + 0; $1 = $2 = ""; printf "%9d %s\n", bytes, $0 }'
exit "$status"
