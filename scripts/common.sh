# Shared by the scripts beside it; sourced, never run. Leaves the shell in the top folder of the tree.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
readonly kTop=$PWD

say() { echo "$(basename "$0"): $*" >&2; }

die() {
  say "$@"
  exit 1
}

# configure PRESET [CMAKE OPTIONS]: CMake's report is shown only when it fails.
configure() {
  local preset=$1 log
  shift
  mkdir -p build
  log=build/configure-$preset.log
  if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    die "configuring '$preset' failed"
  fi
}

# build PRESET [CMAKE BUILD OPTIONS]: a status line on a terminal, only warnings and errors elsewhere.
build() {
  local preset=$1 quiet=()
  shift
  [[ -t 2 ]] || quiet=(-- --quiet)
  say "building $preset"
  NINJA_STATUS='[%f/%t] ' cmake --build --preset "$preset" "$@" "${quiet[@]}" >&2 ||
    die "building '$preset' failed"
}
