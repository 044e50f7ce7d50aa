# Shared by the tests of the examples; sourced with the test's own arguments: BIN-FOLDER [wine].
# Leaves them in an empty folder, $work, that goes away with the servers when the test ends.
set -euo pipefail
bin=$1 runner=${2:-}
me=$(basename "$0")
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
suffix=
[ -z "$runner" ] || suffix=.exe
work=$(mktemp -d)
servers=()

clean_up() {
  local server
  for server in "${servers[@]}"; do
    { kill "$server" && wait "$server"; } 2>/dev/null || true
  done
  rm -rf "$work"
}
trap clean_up EXIT
cd "$work"
# A proxy of the machine's own is nobody's business here.
unset http_proxy https_proxy all_proxy no_proxy HTTPS_PROXY ALL_PROXY NO_PROXY

fail() {
  echo "$me: $*" >&2
  exit 1
}

# run PROGRAM ARGUMENT...: an example, its output without carriage returns in out.txt and err.txt.
run() {
  local program=("$bin/$1$suffix") status=0
  [ -z "$runner" ] || program=("$top/scripts/lib/wine-run" "${program[@]}")
  "${program[@]}" "${@:2}" </dev/null >raw-out.txt 2>raw-err.txt || status=$?
  tr -d '\r' <raw-out.txt >out.txt
  # A progress bar draws over itself with carriage returns.
  tr '\r' '\n' <raw-err.txt >err.txt
  return "$status"
}

expect_success() { # PROGRAM ARGUMENT...
  run "$@" || fail "'$*' ended with $?: $(cat err.txt)"
}

expect_failure() { # STATUS MESSAGE PROGRAM ARGUMENT...
  local expected=$1 message=$2 status=0
  shift 2
  run "$@" || status=$?
  [ "$status" = "$expected" ] || fail "'$*' ended with $status, not $expected: $(cat err.txt)"
  grep -qF -- "$message" err.txt || fail "'$*' said: $(cat err.txt)"
}

expect_line() { # FILE LINE
  grep -qxF -- "$2" "$1" || fail "$1 lacks the line '$2': $(cat "$1")"
}

# start_service NAME [NGINX-CONFIGURATION]: the update service, or another nginx in its manner. Its
# files are in the folder NAME-files, its logs in NAME, and its address goes into $address.
start_service() {
  local lines
  cp -r "$top/examples/service" "$work/$1-files"
  [ -z "${2:-}" ] || printf '%s\n' "$2" >"$work/$1-files/nginx.conf.in"
  exec {lines}< <(exec "$work/$1-files/run" --folder "$work/$1" --seconds 1500)
  servers+=($!)
  read -r -t 60 address <&"$lines" || fail "the server $1 did not start"
}

# nginx_configuration SERVER-LINES: one nginx of the service's kind with this server in it.
nginx_configuration() {
  sed '/^  server {/,$d' "$top/examples/service/nginx.conf.in"
  printf '  server {\n%s\n    location = /alive { access_log off; return 204; }\n  }\n}\n' "$1"
}

# wait_until CONDITION...: the updater is nobody's child, and nothing but its files tells that it is
# done. A file that is there need not be whole yet.
wait_until() {
  local tries
  for ((tries = 0; tries < 600; tries++)); do
    "$@" && return
    sleep 0.1
  done
  fail "waited in vain for: $*"
}
