#!/bin/sh
# Installs a build to a scratch prefix, moves it, and builds and runs hosts in C11 and C++20 against it: through
# pkg-config and through find_package, shared and static, and those in C11 without a C++ compiler. A host that knows the
# folder of libchannel alone finds libchannelbase there as well.
# Usage: install_test.sh BUILD_DIR SCRATCH_DIR CMAKE GENERATOR CC CXX VERSION; CFLAGS and CXXFLAGS are used.
set -eu

build_dir=$1 scratch=$2 cmake=$3 generator=$4 cc=$5 cxx=$6 version=$7
hosts=$(cd "$(dirname "$0")" && pwd)

rm -rf "$scratch"
mkdir -p "$scratch"
"$cmake" --install "$build_dir" --prefix "$scratch/staged" >"$scratch/install.log"
mv "$scratch/staged" "$scratch/prefix"
prefix=$scratch/prefix

libdir=$(dirname "$(find "$prefix" -name libchannel.so)")
for file in libchannel.so.1 libchannelbase.so libchannelbase.so.1 libchannel.a libchannelbase.a pkgconfig/channel.pc \
            cmake/channel/channelConfig.cmake cmake/channel/channelConfigVersion.cmake; do
  [ -e "$libdir/$file" ] || { echo "not installed: $libdir/$file"; exit 1; }
done
for header in channel/channel.h channel/records.h base/list.h base/verbosity.h; do
  [ -e "$prefix/include/$header" ] || { echo "not installed: $prefix/include/$header"; exit 1; }
done

run() {
  echo "run $1"
  LD_LIBRARY_PATH=$libdir "$1"
}

export PKG_CONFIG_PATH="$libdir/pkgconfig"
if command -v pkg-config >/dev/null; then
  [ "$(pkg-config --modversion channel)" = "$version" ] || { echo "channel.pc has the wrong version"; exit 1; }
  # shellcheck disable=SC2046,SC2086 # flags are words
  {
    "$cc" -std=c11 ${CFLAGS:-} -o "$scratch/c_host" "$hosts/c_host.c" $(pkg-config --cflags --libs channel)
    "$cxx" -std=c++20 ${CXXFLAGS:-} -o "$scratch/cpp_host" "$hosts/cpp_host.cpp" $(pkg-config --cflags --libs channel)
  }
  run "$scratch/c_host"
  run "$scratch/cpp_host"

  # shellcheck disable=SC2046,SC2086 # flags are words
  "$cc" -std=c11 ${CFLAGS:-} -o "$scratch/silent_host" "$hosts/silent_host.c" -Wl,--as-needed "-Wl,-rpath,$libdir" \
        $(pkg-config --cflags --libs channel)
  echo "run $scratch/silent_host"
  env -u LD_LIBRARY_PATH "$scratch/silent_host"
else
  echo "pkg-config not found: channel.pc is not tried"
fi

# build_hosts FOLDER HOSTS OPTIONS...: through find_package.
build_hosts() {
  folder=$scratch/$1 built=$2
  shift 2
  "$cmake" -S "$hosts" -B "$folder" -G "$generator" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_C_COMPILER="$cc" "$@" \
           >"$folder.configure.log"
  "$cmake" --build "$folder" >"$folder.build.log" || { cat "$folder.build.log"; exit 1; }
  for host in $built; do
    run "$folder/$host"
  done
}

build_hosts hosts "c_host_channel cpp_host_channel c_host_channel_static cpp_host_channel_static" \
            -DCMAKE_CXX_COMPILER="$cxx"
# The runtime of sanitizers is in part one of C++.
[ -n "${CFLAGS-}" ] || build_hosts c_hosts "c_host_channel c_host_channel_static" -DCPP_HOSTS=OFF
