#!/bin/sh
# What a receiver has to carry for the library: the C library and the base library. Reads what the shared libraries ask
# the loader for, then links a host in C with the static ones by the C compiler alone, and runs it.
# Usage: check_dependencies.sh CC READELF LIBRARY_DIR SCRATCH_DIR HOST_SOURCE INCLUDE_OPTIONS [EMULATOR...]
set -eu

cc=$1 readelf=$2 library_dir=$3 scratch=$4 host=$5 include_options=$6
shift 6
failures=0

# needs_only FILE LIBRARIES: the loader is asked for no others.
needs_only() {
  dynamic=$("$readelf" -d "$1")
  for needed in $(echo "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p'); do
    case " $2 " in
      *" $needed "*) ;;
      *)
        echo "FAILED: ${1##*/} needs $needed"
        failures=$((failures + 1))
        ;;
    esac
  done
}

needs_only "$library_dir/libchannelbase.so" "libc.so.6"
needs_only "$library_dir/libchannel.so" "libc.so.6 libchannelbase.so.1"

mkdir -p "$scratch"
# shellcheck disable=SC2086 # options are words
"$cc" -std=c11 $include_options -o "$scratch/host" "$host" "$library_dir/libchannel.a" "$library_dir/libchannelbase.a"
needs_only "$scratch/host" "libc.so.6"
"$@" "$scratch/host" 2>"$scratch/log" || { cat "$scratch/log"; exit 1; }

[ "$failures" -eq 0 ] && echo "libc and the base library"
