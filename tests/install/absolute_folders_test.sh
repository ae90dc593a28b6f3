#!/bin/sh
# Configures a build whose libraries and headers go to folders outside the prefix, and compares what channel.pc says.
# Usage: absolute_folders_test.sh SCRATCH_DIR CMAKE GENERATOR CC CXX
set -eu

scratch=$1 cmake=$2 generator=$3 cc=$4 cxx=$5
sources=$(cd "$(dirname "$0")/../.." && pwd)

rm -rf "$scratch"

told() {
  "$cmake" -S "$sources" -B "$scratch" -G "$generator" -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
           -DCHANNEL_BUILD_TESTS=OFF -DCHANNEL_BUILD_TOOLS=OFF -DCHANNEL_BUILD_BENCH=OFF \
           -DCMAKE_INSTALL_PREFIX=/usr "$@" >/dev/null
  sed -n 's/^\(prefix\|includedir\|libdir\)=//p' "$scratch/channel.pc" | tr '\n' ' '
}

expect() {
  [ "$1" = "$2" ] || { echo "channel.pc: wanted $2, but it says $1"; exit 1; }
}

# shellcheck disable=SC2016 # the variables are those of channel.pc
{
  expect "$(told -DCMAKE_INSTALL_LIBDIR=lib/sub)" '${pcfiledir}/../../.. ${prefix}/include ${prefix}/lib/sub '
  expect "$(told -DCMAKE_INSTALL_LIBDIR=/opt/lib)" '/usr ${prefix}/include /opt/lib '
  expect "$(told -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_INSTALL_INCLUDEDIR=/opt/include)" \
         '${pcfiledir}/../.. /opt/include ${prefix}/lib '
}
