#!/usr/bin/env bash
# Measures the library beside its floors and its peers and sets the figures beside the targets. See ./bench.sh --help.
set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"
cd "$root"

usage() {
  cat <<'END'
Usage: ./bench.sh [--quick] [--markdown] [--help]

Installs what is missing (Debian packages, as root), builds the release preset, and measures with the largest list
  times         the benchmark program, once: the library, its floors, SQLite and libdvbv5 in the same run
  instructions  callgrind: single operations, and how they grow with the list
  memory        what a loaded list holds, with 64-bit and 32-bit pointers
and prints the targets with the figures, pass or MISS for each. Times are the best of several runs, but want a machine
that does nothing else. Where there are a cross compiler and qemu-user for 32-bit ARM, instructions and memory are
counted there too.

  --quick     one short run of everything, three sizes instead of five, native code only
  --markdown  also puts the tables into docs/performance.md, in place of those that are there
  --help      this text

What the tables are made of is left in build/bench. The exit status is 0 when everything could be measured, whatever the
figures are.
END
}

repetitions=5
seconds_each=0.05
sizes="1250 2500 5000 10000 20000"
quick=no
markdown=no
for option in "$@"; do
  case $option in
    --quick)
      repetitions=1
      seconds_each=0.01
      sizes="1250 5000 20000"
      quick=yes
      ;;
    --markdown)
      markdown=yes
      ;;
    --help | -h)
      usage
      exit 0
      ;;
    *)
      usage >&2
      exit 2
      ;;
  esac
done

results=$root/build/bench
report=(bench/report.py "$results/times.json" --counts "$results/counts" --growth "$results/growth"
  --memory "64-bit" "$results/memory")
arm='arm-linux-gnueabihf'
arm_emulator=(qemu-arm -L "/usr/$arm")

# save FILE COMMAND...: a step's output is a result; its errors go to the step's log.
save() {
  "${@:2}" >"$results/$1"
}

times() {
  build/release/bin/channel_bench --benchmark_min_time="$seconds_each" --benchmark_repetitions="$repetitions" \
    --benchmark_out="$results/times.json" --benchmark_out_format=json
}

measure_natively() {
  build_preset release channel channel_bench one_operation memory_after_load &&
    step times times &&
    step instructions save counts bench/instructions.sh --counts &&
    step growth save growth bench/instructions.sh --growth "$sizes" &&
    step memory save memory bench/memory.sh
}

measure_32_bit() {
  build_preset i686 channel memory_after_load &&
    step "i686 memory" save memory.i686 bench/memory.sh build/i686 &&
    report+=(--memory "32-bit x86" "$results/memory.i686")
}

has_arm() {
  command -v "$arm-g++" >/dev/null && command -v qemu-arm >/dev/null
}

measure_arm() {
  build_preset armhf channel one_operation memory_after_load &&
    step "armhf memory" save memory.armhf bench/memory.sh build/armhf "$arm-" "${arm_emulator[@]}" &&
    step "armhf instructions" save counts.armhf bench/instructions.sh --counts build/armhf "${arm_emulator[@]}" &&
    report+=(--memory "32-bit ARM" "$results/memory.armhf" --emulated "32-bit ARM" "$results/counts.armhf")
}

# Puts the tables between the two marks of the page.
update_page() {
  local page=docs/performance.md
  {
    sed '/^<!-- tables -->$/q' "$page"
    "${report[@]}" --markdown
    printf '\n'
    sed -n '/^<!-- end of tables -->$/,$p' "$page"
  } >"$results/performance.md"
  cp "$results/performance.md" "$page"
}

packages=(cmake ninja-build g++ libgtest-dev googletest libbenchmark-dev libsqlite3-dev libdvbv5-dev valgrind python3)
[[ $quick == yes ]] || packages+=(g++-i686-linux-gnu libc6-i386 lib32stdc++6)
ensure_packages "${packages[@]}"
mkdir -p "$results"
measure_natively
if [[ $quick == no ]]; then
  measure_32_bit
  ! has_arm || measure_arm
fi
"${report[@]}"
[[ $markdown == no ]] || update_page
