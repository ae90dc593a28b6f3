#!/usr/bin/env bash
# Counts the instructions of single operations with callgrind, beside those of their floors. Instructions of the kernel
# are not counted. Whatever else the machine does, the counts of a build hardly change from run to run.
# Memory is copied and cleared by vector loops here: a repeated string instruction would count once for each byte.
#
# Usage: bench/instructions.sh [--functions NAME] [BUILD_DIR]
#   --functions NAME  instead of the table, how the instructions of one operation are spread over functions (a name that
#                     one_operation --list prints)
#   BUILD_DIR         default build/release
set -euo pipefail
script=$(realpath "${BASH_SOURCE[0]}")
cd "$(dirname "$script")/.."

functions_of=
if [[ ${1-} == --functions ]]; then
  functions_of=${2:?the name of an operation}
  shift 2
fi
if [[ ${1-} == --help || ${1-} == -h ]]; then
  sed -n '2,/^set /s/^# \{0,1\}//p' "$script"
  exit 0
fi
program=${1:-build/release}/bin/one_operation
[[ -x $program ]] || { printf '%s: build it first\n' "$program" >&2; exit 1; }
command -v valgrind >/dev/null || { printf 'valgrind is not installed\n' >&2; exit 1; }

vector_loops=glibc.cpu.x86_rep_movsb_threshold=1000000000:glibc.cpu.x86_rep_stosb_threshold=1000000000
work_dir=$(mktemp -d)
trap 'rm -rf "$work_dir"' EXIT

# profile NAME: runs an operation under callgrind; the profile goes to the work directory.
profile() {
  local log=$work_dir/$1.log
  if ! GLIBC_TUNABLES=$vector_loops valgrind --tool=callgrind --toggle-collect=measured_run \
    --callgrind-out-file="$work_dir/$1.out" "$program" "$1" >"$log" 2>&1; then
    cat "$log" >&2
    return 1
  fi
}

declare -A counts=()

# count NAME: its instructions, in $counted. Each operation is run once.
count() {
  if [[ -z ${counts[$1]-} ]]; then
    profile "$1"
    counts[$1]=$(sed -n 's/.*Collected : //p' "$work_dir/$1.log")
  fi
  counted=${counts[$1]}
}

if [[ -n $functions_of ]]; then
  profile "$functions_of"
  callgrind_annotate --auto=no --threshold=99.5 "$work_dir/$functions_of.out" | sed -n '/^ *[0-9]/p'
  exit 0
fi

printf '%-34s %14s   %-30s %14s %9s\n' operation instructions floor instructions ratio
"$program" --list >"$work_dir/operations"
while read -r name floors; do
  count "$name"
  of_operation=$counted
  for floor in $floors; do
    # Its work is the kernel's.
    [[ $floor != floor:write_at_once ]] || continue
    count "$floor"
    ratio=$(awk -v a="$of_operation" -v b="$counted" 'BEGIN { printf "%.2f", a / b }')
    printf "%-34s %14d   %-30s %14d %9s\n" "$name" "$of_operation" "$floor" "$counted" "$ratio"
  done
done <"$work_dir/operations"
