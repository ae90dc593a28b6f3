# shellcheck shell=bash
# What the scripts at the root share: steps with one line each, packages, and building a preset. Sourced, not run.
# A step's output goes to a log below build/logs and is shown only when the step fails.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
log_dir=$root/build/logs
jobs=$(nproc)
package_lists_are_fresh=no

# Seconds of the steps so far, a line each.
step_seconds=()

# report_step NAME START STATUS [END]: the closing half of a step's line.
report_step() {
  local seconds=$((${4-$SECONDS} - $2))
  step_seconds+=("$(printf '%-28s %4d s' "$1" "$seconds")")
  if [[ $3 -eq 0 ]]; then
    printf 'ok    %4d s\n' "$seconds"
  else
    printf 'FAILED %3d s\n' "$seconds"
  fi
}

# show_log NAME STATUS: what a failed step printed.
show_log() {
  local log=$log_dir/${1// /-}.log
  cat "$log"
  printf '  (exit status %d; the log is %s)\n' "$2" "${log#"$root"/}"
}

# step NAME COMMAND...: runs a command with its output in the log NAME.log (blanks become -); prints name and time.
step() {
  local name=$1 log start=$SECONDS status=0
  shift
  log=$log_dir/${name// /-}.log
  mkdir -p "$log_dir"
  printf '  %-28s ' "$name"
  "$@" >"$log" 2>&1 </dev/null || status=$?
  report_step "$name" "$start" "$status"
  [[ $status -eq 0 ]] || show_log "$name" "$status"
  return "$status"
}

# begin_step NAME COMMAND...: a step beside those that follow. One at a time; its line comes with end_step.
begin_step() {
  step_beside=$1
  local log=$log_dir/${1// /-}.log start=$SECONDS
  shift
  mkdir -p "$log_dir"
  (
    status=0
    "$@" >"$log" 2>&1 </dev/null &
    trap 'kill $!' TERM
    wait $! || status=$?
    printf '%d %d %d\n' "$status" "$start" "$SECONDS" >"$log.end"
  ) &
  step_beside_pid=$!
  trap 'kill "$step_beside_pid" 2>/dev/null || true' EXIT
}

# end_step: waits for the step that begin_step began; its status is the step's.
end_step() {
  local status start end
  wait "$step_beside_pid" || true
  trap - EXIT
  read -r status start end <"$log_dir/${step_beside// /-}.log.end"
  rm "$log_dir/${step_beside// /-}.log.end"
  printf '  %-28s ' "$step_beside"
  report_step "$step_beside" "$start" "$status" "$end"
  [[ $status -eq 0 ]] || show_log "$step_beside" "$status"
  return "$status"
}

# build_step NAME COMMAND...: a step whose command shows on a terminal how far it is.
build_step() {
  [[ -t 1 ]] || { step "$@"; return; }
  local name=$1 start=$SECONDS status=0
  shift
  "$@" </dev/null || status=$?
  printf '  %-28s ' "$name"
  report_step "$name" "$start" "$status"
  return "$status"
}

# The version that CMakeLists.txt says.
project_version() {
  sed -n 's/^project(channel VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt"
}

die() {
  printf '%s\n' "$*" >&2
  exit 1
}

is_installed() {
  [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

refresh_package_lists() {
  if [[ $package_lists_are_fresh == no ]]; then
    step "apt-get update" apt-get update -q || return
    package_lists_are_fresh=yes
  fi
}

# ensure_packages PACKAGE...: installs those that are missing; does nothing, and needs no rights, when none is.
ensure_packages() {
  local package missing=()
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [[ ${#missing[@]} -gt 0 ]] || return 0
  [[ $EUID -eq 0 ]] || die "These packages are missing; install them or run this as root: ${missing[*]}"
  refresh_package_lists &&
    step "install packages" env DEBIAN_FRONTEND=noninteractive \
      apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# build_preset PRESET [-DNAME=VALUE...] [TARGET...]: configures and builds below build/PRESET.
build_preset() {
  local preset=$1 settings=()
  shift
  while [[ ${1-} == -D* ]]; do
    settings+=("$1")
    shift
  done
  step "$preset configure" cmake -S "$root" --preset "$preset" "${settings[@]}" &&
    build_step "$preset build" cmake --build "$root/build/$preset" -j "$jobs" ${1:+--target "$@"}
}
