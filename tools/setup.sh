# Sourced by run, check and .ci/run: goes to the root of the repository and offers the steps that
# they share. Every step says in one line what it does; the long output goes to build/setup.log,
# which is shown when a step fails.

ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cd "$ROOT"
LOG="$ROOT/build/setup.log"
mkdir -p build

BUILD_PACKAGES=(g++ cmake ninja-build ccache qt6-base-dev libqt6svg6 libmd4c-dev libgtest-dev
                libbenchmark-dev fonts-dejavu-core)

say() { printf '==> %s\n' "$*"; }

# Runs a command with its output in the log.
quietly() {
  "$@" >"$LOG" 2>&1 </dev/null && return
  local status=$?
  cat "$LOG" >&2
  printf 'Failed: %s\n' "$*" >&2
  return "$status"
}

# apt-get, as root. Waits when another installation has the lock.
apt_get() {
  local become=()
  [[ $EUID -eq 0 ]] || become=(sudo)
  quietly "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
    -o DPkg::Lock::Timeout=300 "$@"
}

is_installed() {
  [[ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

# install_packages NAME...: those that are missing; asks the network for nothing when none is.
install_packages() {
  local missing=() package
  if ! command -v dpkg-query >/dev/null; then
    say "No Debian packages here; going on with what is installed (needed: $*)"
    return
  fi
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  [[ ${#missing[@]} -gt 0 ]] || return 0
  if [[ $EUID -ne 0 ]] && ! command -v sudo >/dev/null; then
    printf 'Please run this as root first:\n  apt-get update && apt-get install %s\n' \
      "${missing[*]}" >&2
    return 1
  fi
  say "Installing ${missing[*]}"
  [[ $EUID -eq 0 ]] || sudo -v  # asks for the password while the terminal can still be seen
  apt_get update
  apt_get install --no-install-recommends "${missing[@]}"
}

# build PRESET [TARGET...]: configures and builds; on a terminal with a running count.
build() {
  local preset=$1 targets=() quiet=()
  shift
  [[ $# -eq 0 ]] || targets=(--target "$@")
  [[ -t 1 ]] || quiet=(-- --quiet)
  say "Configuring build/$preset"
  quietly cmake --preset "$preset"
  say "Building build/$preset"
  cmake --build --preset "$preset" "${targets[@]}" "${quiet[@]}"
}
