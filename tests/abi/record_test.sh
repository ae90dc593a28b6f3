#!/bin/sh
# What a library may do to the records of its versions: add to earlier ones, and nothing else. Records are made of the
# newest one, whose interface has to be that of the library.
#
# Usage: record_test.sh ABI_RECORD RECORDS PROCESSOR LIBRARY COMPILER
set -eu

abi_record=$1 newest=$(find "$2"/*/"$3" -prune | sort -V | tail -n 1) processor=$3 library=$4 compiler=$5
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
  echo "FAILED: $1"
  exit 1
}

# begin: one record, of version 2.0, as it is.
begin() {
  rm -rf "$scratch/records"
  mkdir -p "$scratch/records/2.0"
  cp -r "$newest" "$scratch/records/2.0/$processor"
}

# earlier FILE SED_SCRIPT: the record of version 1.9, which differs by that. Versions are no decimal fractions.
earlier() {
  mkdir -p "$scratch/records/1.9"
  cp -r "$newest" "$scratch/records/1.9/$processor"
  sed -i "$2" "$scratch/records/1.9/$processor/$1"
  if cmp -s "$newest/$1" "$scratch/records/1.9/$processor/$1"; then fail "$2 changes nothing in $1"; fi
}

compare() {
  "$abi_record" --compare "$scratch/records" "$processor" "$library" 2>&1
}

compare_constants() {
  "$abi_record" --compare-constants "$scratch/records" "$processor" "$compiler" 2>&1
}

without_a_function="/elf-symbol name='get_channel'/d; /<function-decl name='get_channel'/,/<\/function-decl>/d"
another_function="s/'get_channel'/'got_channel'/g"
another_offset="0,/layout-offset-in-bits='32'/s//layout-offset-in-bits='40'/"

begin
compare || fail "the interface is not the recorded one"
compare_constants || fail "the constants are not the recorded ones"

begin
earlier libchannel.abi "$without_a_function"
compare || fail "a function more than in an earlier version is refused"
begin
earlier constants.txt '/^GROUP_GENRE /d'
compare_constants || fail "a constant more than in an earlier version is refused"

begin
earlier libchannel.abi "$another_function"
if compare; then fail "a function of an earlier version is gone, and nobody sees it"; fi
begin
earlier libchannel.abi "$another_offset"
if compare; then fail "a field stands elsewhere than in an earlier version, and nobody sees it"; fi
begin
earlier constants.txt 's/^GROUP_GENRE .*/GROUP_GENRE 9/'
if compare_constants; then fail "a constant has another value than in an earlier version, and nobody sees it"; fi

begin
sed -i "$without_a_function" "$scratch/records/2.0/$processor/libchannel.abi"
if compare; then fail "a function is not recorded, and nobody sees it"; fi
begin
sed -i '/^GROUP_GENRE /d' "$scratch/records/2.0/$processor/constants.txt"
if compare_constants; then fail "a constant is not recorded, and nobody sees it"; fi
