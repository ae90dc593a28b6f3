#!/usr/bin/env bash
# Counts the instructions of single operations, beside those of their floors. Instructions of the kernel are not
# counted. Whatever else the machine does, the counts of a build hardly change from run to run.
# Here callgrind counts, and memory is copied and cleared by vector loops: a repeated string instruction would count
# once for each byte. In cross builds a plugin of qemu-user counts.
#
# Usage: bench/instructions.sh [--counts | --growth SIZES | --functions NAME] [BUILD_DIR] [EMULATOR...]
#   --counts          instead of the table, a line for each: name, instructions, calls that allocate memory, calls that
#                     copy memory or text (the last two are 0 under an emulator)
#   --growth SIZES    lists of other sizes ("1250 2500"), for what can grow: name, kind, services, instructions. Sorts
#                     and what works on one view take a quarter of each size, since it ends at 5,000 entries.
#   --functions NAME  how the instructions of one operation are spread over functions (a name of one_operation --list)
#   BUILD_DIR         default build/release
#   EMULATOR          what runs the programs of a cross build: qemu-arm -L /usr/arm-linux-gnueabihf
set -euo pipefail
script=$(realpath "${BASH_SOURCE[0]}")
cd "$(dirname "$script")/.."

mode=--table
argument=
case ${1-} in
  --help | -h)
    sed -n '2,/^set /s/^# \{0,1\}//p' "$script" | sed '$d'
    exit 0
    ;;
  --counts)
    mode=$1
    shift
    ;;
  --growth | --functions)
    mode=$1
    argument=${2:?what it needs}
    shift 2
    ;;
esac
program=${1:-build/release}/bin/one_operation
emulator=("${@:2}")
[[ -x $program ]] || { printf '%s: build it first\n' "$program" >&2; exit 1; }

vector_loops=glibc.cpu.x86_rep_movsb_threshold=1000000000:glibc.cpu.x86_rep_stosb_threshold=1000000000
work_dir=$(mktemp -d)
trap 'rm -rf "$work_dir"' EXIT
log=$work_dir/log

run_emulator() {
  local plugin=$work_dir/counter.so
  [[ -e $plugin ]] || cc -O2 -shared -fPIC -o "$plugin" bench/emulator_counter.c
  "${emulator[@]}" -plugin "$plugin" "$program" "$@" >"$log" 2>&1
}

# Every return from measured_run leaves a profile: profile.1, profile.2 and so on. The program itself turns the tool on
# and off around it, because calls would be counted outside too.
run_callgrind() {
  rm -f "$work_dir"/profile*
  GLIBC_TUNABLES=$vector_loops valgrind --tool=callgrind --instr-atstart=no --toggle-collect=measured_run \
    --dump-after=measured_run --callgrind-out-file="$work_dir/profile" "$program" "$@" >"$log" 2>&1
}

program_output() {
  "${emulator[@]}" "$program" "$@"
}

# What a profile comes to: instructions, allocating calls, copying calls.
sum_profile() {
  awk '
    /^c?fn=/ {
      id = substr($0, index($0, "("), index($0, ")") - index($0, "(") + 1)
      name = substr($0, index($0, ")") + 2)
      if (name != "") names[id] = name
      if ($0 ~ /^cfn=/) callee = names[id]
    }
    /^calls=/ {
      split($1, calls, "=")
      if (callee ~ /^(malloc|calloc|realloc|aligned_alloc|posix_memalign)$/) allocations += calls[2]
      if (callee ~ /^_*(mem(cpy|pcpy|move)|str(n?cpy|n?cat)|stpn?cpy)(_|$)/) copies += calls[2]
    }
    /^totals:/ { instructions = $2 }
    END { printf "%d %d %d\n", instructions, allocations, copies }' "$1"
}

# count SERVICES NAME...: a line of counts for each.
count() {
  local services=$1 names=("${@:2}") i
  if [[ ${#emulator[@]} -gt 0 ]]; then
    run_emulator --services "$services" "${names[@]}" || { cat "$log" >&2; return 1; }
    sed -n 's/^counted \([0-9]*\)$/\1 0 0/p' "$log"
  else
    run_callgrind --services "$services" "${names[@]}" || { cat "$log" >&2; return 1; }
    for ((i = 1; i <= ${#names[@]}; ++i)); do
      sum_profile "$work_dir/profile.$i"
    done
  fi >"$work_dir/counts"
  paste -d ' ' <(printf '%s\n' "${names[@]}") "$work_dir/counts"
}

count_catalogue() {
  local names
  # Its work is the kernel's.
  mapfile -t names < <(program_output --list | tr ' ' '\n' | grep -vx floor:write_at_once | awk '!seen[$0]++')
  count 5000 "${names[@]}"
}

# print_growth KIND SIZE: what grows in this way, with a list of this size.
print_growth() {
  local names
  mapfile -t names < <(program_output --growing | awk -v kind="$1" '$2 == kind { print $1 }')
  count "$2" "${names[@]}" | awk -v kind="$1" -v size="$2" '{ print $1, kind, size, $2 }'
}

print_table() {
  count_catalogue >"$work_dir/catalogue"
  printf '%-38s %14s   %-30s %14s %9s\n' operation instructions floor instructions ratio
  program_output --list | awk '
    NR == FNR { counted[$1] = $2; next }
    {
      for (i = 2; i <= NF; ++i)
        if ($i in counted)
          printf "%-38s %14d   %-30s %14d %9.2f\n", $1, counted[$1], $i, counted[$i], counted[$1] / counted[$i]
    }' "$work_dir/catalogue" -
}

case $mode in
  --table)
    print_table
    ;;
  --counts)
    count_catalogue
    ;;
  --growth)
    for size in $argument; do
      print_growth walks "$size"
      print_growth views "$((size / 4))"
      print_growth sorts "$((size / 4))"
    done
    ;;
  --functions)
    run_callgrind "$argument" || { cat "$log" >&2; exit 1; }
    callgrind_annotate --auto=no --threshold=99.5 "$work_dir/profile.1" | sed -n '/^ *[0-9]/p'
    ;;
esac
