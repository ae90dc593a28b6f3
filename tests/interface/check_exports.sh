#!/bin/sh
# Compares what the public headers declare, channel/exports.txt and the dynamic symbols of libchannel.so, name by name;
# then what the two libraries import from each other, and their SONAMEs.
# Usage: check_exports.sh SOURCE_DIR CC NM READELF LIBCHANNEL LIBCHANNELBASE
set -eu

source_dir=$1 cc=$2 nm=$3 readelf=$4 libchannel=$5 libchannelbase=$6
export LC_ALL=C
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
  echo "FAILED: $1"
  failures=$((failures + 1))
}

same_names() {
  diff -u "$1" "$2" >"$work/diff" || { fail "$3"; sed 1,2d "$work/diff"; }
}

grep -E '^[A-Za-z_]' "$source_dir/channel/exports.txt" | sed 's/ *$//' >"$work/as_listed"
sort "$work/as_listed" >"$work/listed"
[ -s "$work/listed" ] || fail "channel/exports.txt names no symbol"
uniq -d "$work/listed" >"$work/twice"
[ ! -s "$work/twice" ] || { fail "named twice in channel/exports.txt:"; cat "$work/twice"; }

# After preprocessing, the lines of our headers are those between a marker that names one and the next marker.
"$cc" -E -x c -std=c11 -I "$source_dir/include" -I "$source_dir" "$source_dir/include/channel/channel.h" |
  awk '/^# [0-9]+ "/ { ours = $3 ~ /include\/channel\// } /^#/ { next } ours' |
  tr '\n' ' ' | sed 's/{[^}]*}//g' | tr ';' '\n' >"$work/declarations"
{
  sed -n 's/^[^(]*[ *]\([A-Za-z_][A-Za-z0-9_]*\)(.*/\1/p' "$work/declarations"
  sed -n 's/^ *extern [^(]* \([A-Za-z_][A-Za-z0-9_]*\)$/\1/p' "$work/declarations"
} | sort >"$work/declared"
same_names "$work/listed" "$work/declared" "channel/exports.txt (-) and the public headers (+) differ:"

"$nm" -D --defined-only "$libchannel" | awk '{ print $NF }' | sort >"$work/exported"
same_names "$work/listed" "$work/exported" "channel/exports.txt (-) and the symbols of libchannel.so (+) differ:"

"$nm" -D --undefined-only "$libchannel" | grep -qw verbosity_map || fail "libchannel.so does not import verbosity_map"
"$nm" -D --defined-only "$libchannelbase" | grep -qw verbosity_map || fail "libchannelbase.so does not define verbosity_map"

"$readelf" -d "$libchannel" >"$work/dynamic"
grep -q 'SONAME.*\[libchannel\.so\.1\]' "$work/dynamic" || fail "the SONAME of libchannel.so is not libchannel.so.1"
grep -q 'NEEDED.*\[libchannelbase\.so\.1\]' "$work/dynamic" || fail "libchannel.so does not need libchannelbase.so.1"
"$readelf" -d "$libchannelbase" | grep -q 'SONAME.*\[libchannelbase\.so\.1\]' ||
  fail "the SONAME of libchannelbase.so is not libchannelbase.so.1"

[ "$failures" -eq 0 ] && echo "$(wc -l <"$work/listed") symbols as declared"
