# Shared by the scripts; sourced, not run.

set -euo pipefail
caller_folder=$PWD
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$top"

fail() {
  echo "$0: $*" >&2
  exit 1
}

as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  else
    sudo -n true 2>/dev/null ||
      fail "needs root, or sudo that asks for nothing (run 'sudo -v' before), for: $*"
    sudo -n "$@"
  fi
}

# apt_get COMMAND...: runs a command that ends in an apt-get, and waits, half an hour at most, while
# another program holds one of apt-get's locks, as a new machine's own first update does. The option
# that apt-get has for this leaves out the locks of its lists and archives.
apt_get() {
  local report status end=$((SECONDS + 1800)) waiting=
  report=$(mktemp)
  while :; do
    status=0
    # What it says is looked at, so it is said in English.
    LC_ALL=C.UTF-8 "$@" 2>&1 </dev/null | tee "$report" |
      sed -u '/^E: .*lock/d; /removing the lock/d' >&2 || status=$?
    [ "$status" != 0 ] && grep -q '^E: Could not get lock' "$report" && [ "$SECONDS" -lt "$end" ] ||
      break
    [ -n "$waiting" ] || sed -n 's/^E: Could not get lock/Waiting for a lock:/p' "$report" >&2
    waiting=yes
    sleep 2
  done
  [ "$status" = 0 ] || grep '^E: .*lock' "$report" >&2 || true
  rm -f "$report"
  return "$status"
}

# RUNLEVEL=1: a service that comes with a package is not started.
apt_get_as_root() {
  apt_get as_root env LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive RUNLEVEL=1 apt-get -q -y "$@"
}

update_package_lists() { apt_get_as_root update || fail "apt-get update failed"; }

is_installed() { [[ $(dpkg-query -W -f='${db:Status-Abbrev}' "$1" 2>/dev/null) == ii* ]]; }
is_offered() { [[ $(LC_ALL=C.UTF-8 apt-cache policy "$1") == *"  Candidate: "[^\(]* ]]; }

# first_that CONDITION NAME|...: prints the first of the names that the condition holds for.
first_that() {
  local names name
  IFS='|' read -r -a names <<<"$2"
  for name in "${names[@]}"; do
    if "$1" "$name"; then
      echo "$name"
      return
    fi
  done
  return 1
}

# install_packages STEP...: installs what scripts/packages.txt lists for these steps and the
# machine lacks. Asks for nothing.
install_packages() {
  local missing=() chosen=() names needs step
  while read -r names needs; do
    for step in "$@"; do
      [[ " $needs " == *" $step "* ]] || continue
      first_that is_installed "$names" >/dev/null || missing+=("$names")
      break
    done
  done < <(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' -e 's/[[:space:]]\+/ /g' scripts/packages.txt)
  [ ${#missing[@]} = 0 ] && return
  command -v apt-get >/dev/null || fail "needs these packages, and apt-get to install them: ${missing[*]}"
  update_package_lists
  for names in "${missing[@]}"; do
    chosen+=("$(first_that is_offered "$names")") || fail "no package source offers: $names"
  done
  echo "Installing: ${chosen[*]}" >&2
  apt_get_as_root --no-install-recommends --no-remove install "${chosen[@]}" ||
    fail "apt-get could not install: ${chosen[*]}"
}

jobs_at_once() { nproc; }

# configure_and_build PRESET [CMAKE-OPTION...]
configure_and_build() {
  local preset=$1
  shift
  cmake --preset "$preset" "$@"
  cmake --build "build/$preset" --parallel "$(jobs_at_once)"
}

# Exports where libcurl for Windows is, building it first where the cache has none.
use_windows_curl() {
  KORVIXSDK_CURL_PREFIX=$(scripts/lib/windows-curl) || fail "libcurl for Windows could not be built"
  export KORVIXSDK_CURL_PREFIX
}

# start_wine FOLDER: a fresh private prefix whose server stays until stop_wine.
start_wine() {
  export WINEPREFIX=$1
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  # First, as it refuses where a server runs already; it is there for as long as it is not stopped.
  # What it says when it is stopped is for Wine's own developers.
  wineserver -p >/dev/null 2>&1
  local log=$WINEPREFIX/start.log
  WINEDEBUG=fixme-all scripts/lib/wine-run wineboot --init >"$log" 2>&1 ||
    fail "Wine could not make its prefix, status $?: $(tail -n 20 "$log")"
}

stop_wine() {
  [ -z "${WINEPREFIX:-}" ] || wineserver -k 2>/dev/null || true
}
