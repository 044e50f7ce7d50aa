# A screen of its own for programs with windows: Xvfb, a window manager, a Wine prefix, and the
# driver that reads the windows. Sourced, not run; scripts/lib/common.sh comes first.
#
# Everything that is started here is ended by its process id in close_stage.

stage=$top/tests/programs/desktop
screen_pid='' manager_pid='' driver_pid='' application_pid='' service_pid=''

# open_stage BIN-FOLDER WORK-FOLDER [DPI]: an empty screen, scaled for that many dots per inch.
open_stage() {
  bin=$(cd "$1" && pwd)
  mkdir -p "$2"
  work=$(cd "$2" && pwd)
  open_screen
  start_wine "$work/wine"
  dress_windows
  name_machine
  set_scaling "${3:-96}"
}

# Xvfb looks for a free display number by itself and tells it once it is there.
open_screen() {
  local number
  # It must not outlive this script, even if that is killed.
  exec {number_line}< <(
    exec setpriv --pdeathsig TERM -- Xvfb -displayfd 1 -screen 0 1440x1080x24 -wr -nolisten tcp \
      2>"$work/xvfb.log")
  screen_pid=$!
  read -r -t 60 number <&"$number_line" || fail "Xvfb did not start: $(cat "$work/xvfb.log")"
  export DISPLAY=:$number
  openbox --config-file "$stage/openbox.xml" >"$work/openbox.log" 2>&1 &
  manager_pid=$!
}

# The font that Windows draws its windows in is not to be had here; this one is of its kind.
dress_windows() {
  local metrics='HKCU\Control Panel\Desktop\WindowMetrics'
  registry "$metrics" MessageFont REG_BINARY "$(message_font)"
  registry 'HKCU\Software\Wine\Fonts\Replacements' "Segoe UI" REG_SZ "Open Sans"
}

# A LOGFONTW: 9 points, normal weight, Segoe UI.
message_font() {
  local name
  name=$(printf 'Segoe UI' | sed 's/./&\x00/g' | od -An -tx1 | tr -d ' \n')
  printf 'f4ffffff%024d90010000%016d%s%0*d' 0 0 "$name" $((128 - ${#name})) 0
}

# The machine of the example in docs/device-id.md, so that its identifier is the same in every run.
# Wine takes the name when its server starts.
name_machine() {
  local name='HKLM\System\CurrentControlSet\Control\ComputerName\ComputerName'
  registry 'HKLM\Software\Microsoft\Cryptography' MachineGuid REG_SZ \
    0C1D6A8E-4F5B-4B7E-9A51-7D2F33D0A6B1
  registry 'HKCU\Software\Wine\Network' UseDnsComputerName REG_SZ N
  registry "$name" ComputerName REG_SZ DESK-7
}

registry() { # KEY NAME TYPE VALUE
  scripts/lib/wine-run reg add "$1" /v "$2" /t "$3" /d "$4" /f >/dev/null 2>&1 ||
    fail "Wine's registry did not take $2"
}

# Wine reads it then, too.
set_scaling() { # DPI
  stop_driver
  registry 'HKCU\Control Panel\Desktop' LogPixels REG_DWORD "$1"
  wineserver -k 2>/dev/null || true
  wineserver -w
  wineserver -p
  start_driver
}

start_driver() {
  coproc driver { exec scripts/lib/wine-run "$bin/window_driver.exe" 2>/dev/null; }
  driver_pid=$driver_PID
  exec {to_driver}>&"${driver[1]}" {from_driver}<&"${driver[0]}"
}

stop_driver() {
  [ -n "$driver_pid" ] || return 0
  exec {to_driver}>&- {from_driver}<&-
  end_process driver_pid
}

# note WORD...: what is done and when, for a look at what went wrong.
note() { printf '%(%T)T.%s %s\n' -1 "${EPOCHREALTIME: -6:3}" "$*" >>"$work/steps.log"; }

# ask COMMAND FIELD...: sends the driver a command; its answer goes to $answer.
ask() {
  local line IFS=$'\t'
  note "$@"
  echo "$*" >&"$to_driver"
  IFS=$'\t' read -r -t 150 line answer <&"$from_driver" || fail "the driver does not answer: $*"
  answer=${answer%$'\r'}
  [ "${line%$'\r'}" = ok ]
}

# must COMMAND FIELD...: fails with what the driver saw unless it says yes.
must() {
  ask "$@" && return
  local alive="it runs"
  kill -0 "$application_pid" 2>/dev/null || alive="it has ended"
  fail "$* -- seen: $answer; the application: $alive"
}

# on_screen TITLE: the X server's number of the window, once it has it.
on_screen() {
  xdotool search --onlyvisible --name "^$1\$" 2>/dev/null
}

# fits TITLE: its texts have their room, once the window is on the screen.
fits() {
  local tries
  for ((tries = 0; tries < 600; tries++)); do
    ! on_screen "$1" >/dev/null || break
    sleep 0.1
  done
  must fits "$1"
}

# points_at X11-WINDOW X Y: moves the mouse there; does the window lie open under it?
points_at() {
  local seen
  seen=$(xdotool mousemove --window "$@" getmouselocation --shell 2>/dev/null) || return
  # What lies there is the frame that the window manager has put around the window.
  [[ $(xwininfo -tree -id "${seen##*WINDOW=}" 2>/dev/null) == *"$(printf ' 0x%x ' "$1")"* ]]
}

# A click with the mouse into the middle of a control. The program counts its window as shown, or as
# gone, before the screen does, and its place is uncertain until the window manager has put it there;
# so the place is one within the window, and the click waits until the X server gives it to that.
click() { # TITLE ID
  local tries window
  must enabled "$1" "$2"
  must where "$1" "$2"
  for ((tries = 0; tries < 600; tries++)); do
    window=$(on_screen "$1") && points_at "$window" $answer && break
    sleep 0.1
  done
  ((tries < 600)) || fail "$1 does not lie open on the screen"
  note click "$1" "$answer"
  xdotool click 1
}

# has_keyboard TITLE: does the X server send keys to this window, without its helpers in between, and
# does the window manager know?
has_keyboard() {
  local window
  window=$(on_screen "$1") && [ "$(xdotool getwindowfocus -f 2>/dev/null)" = "$window" ] &&
    [ "$(xdotool getactivewindow 2>/dev/null)" = "$window" ]
}

# gets_keyboard TITLE: waits until the window has the keyboard and keeps it. The window manager hands
# it to a new window in several steps.
gets_keyboard() {
  local tries kept=0
  must active "$1"
  for ((tries = 0; tries < 600 && kept < 3; tries++)); do
    if has_keyboard "$1"; then kept=$((kept + 1)); else kept=0; fi
    sleep 0.1
  done
  ((kept == 3)) || fail "$1 does not get the keyboard"
}

# press TITLE KEY...: keys into the window.
press() {
  gets_keyboard "$1"
  note "${@:2}"
  xdotool key --delay 50 "${@:2}"
}

# A program's windows get the numbers of those before them in the X server. While the window manager
# still had to take leave of the old ones, a new window has stayed at the size it is made with.
no_windows_left() {
  local tries
  for ((tries = 0; tries < 600; tries++)); do
    [[ $(xprop -root _NET_CLIENT_LIST) == *0x* ]] || return 0
    sleep 0.1
  done
  fail "windows of an ended program are left"
}

# start_application OPTION...: the desktop host, or another $program.
start_application() {
  no_windows_left
  scripts/lib/wine-run "${program:-$bin/desktop_host.exe}" \
    --cache "$(windows_path "$work/cache")" --fallback-id "$(windows_path "$work/device-id")" \
    "$@" >"$work/application.log" 2>&1 </dev/null &
  application_pid=$!
}

# The application must end by itself, and with this status.
application_ends() { # STATUS
  local status=0 tries
  for ((tries = 0; tries < 1200; tries++)); do
    kill -0 "$application_pid" 2>/dev/null || break
    sleep 0.1
  done
  ! kill -0 "$application_pid" 2>/dev/null || fail "the application does not end"
  wait "$application_pid" || status=$?
  application_pid=
  [ "$status" = "$1" ] || fail "the application ended with $status, not $1"
}

# For an application that a picture was taken of.
end_application() {
  end_process application_pid
  must gone "$update_title"
  must gone "$main_title"
}

windows_path() { echo "Z:${1//\//\\}"; }

# start_service [SECONDS]: nginx with replies and packages of this run's own, in $site.
start_service() {
  local address_line
  site=$work/site
  rm -rf "$site" "$work/service"
  cp -r examples/service "$site"
  exec {address_line}< <(exec "$site/run" --folder "$work/service" --seconds "${1:-1400}")
  service_pid=$!
  read -r -t 60 address <&"$address_line" || fail "the service did not start"
}

# reply SED-EXPRESSION...: the service's usual answer with longer notes and these changes.
reply() {
  local notes='- Opens large files at once\\n- Searches with regular expressions\\n'
  notes+='- Keeps what was open when the computer restarts\\n- Reads Größe, naïve and λόγος right'
  sed -e "s/\"update_content\": \"[^\"]*\"/\"update_content\": \"$notes\"/" "$@" \
    examples/service/update.json >"$site/update.json.new"
  mv "$site/update.json.new" "$site/update.json"
}

# nginx stopped by a signal takes connections and says nothing.
pause_service() { kill -STOP "$(<"$work/service/nginx.pid")"; }
wake_service() { kill -CONT "$(<"$work/service/nginx.pid")"; }

# Until it is woken, windows neither come onto the screen nor leave it.
pause_window_manager() { kill -STOP "$manager_pid"; }
wake_window_manager_soon() { (sleep 2 && kill -CONT "$manager_pid") & }

# take_picture NAME: what is on the screen once it does not change any more.
take_picture() {
  local tries before= now
  for ((tries = 0; tries < 40; tries++)); do
    import -window root "$work/screen.png"
    now=$(convert "$work/screen.png" rgb:- | sha256sum)
    [ "$now" != "$before" ] || break
    before=$now
    sleep 0.3
  done
  keep_picture "$1"
}

# take_picture_now NAME: of a screen on which something moves.
take_picture_now() {
  import -window root "$work/screen.png"
  keep_picture "$1"
}

# Cropped to the windows, as the screen behind them is of one colour.
keep_picture() {
  convert "$work/screen.png" -trim +repage -strip +dither -colors 128 -define png:compression-level=9 \
    "PNG8:$work/$1.png"
}

end_process() { # VARIABLE
  local -n process=$1
  [ -z "$process" ] || { kill "$process" && wait "$process"; } 2>/dev/null || true
  process=
}

# keep_evidence: what the application, its windows and the screen look like when a test fails. The
# stacks come last: for them the threads are stopped.
keep_evidence() {
  note "failed"
  take_picture_now failure
  {
    tail -n 20 "$work/steps.log"
    echo "the mouse: $(xdotool getmouselocation), the keyboard: $(xdotool getwindowfocus)"
    xprop -root _NET_CLIENT_LIST
    xwininfo -root -tree | grep -v ' 1x1+'
    timeout 60 scripts/lib/wine-run "$bin/window_driver.exe" all
    cat "$work/application.log"
  } >"$work/failure.txt" 2>&1
  timeout 120 scripts/lib/wine-run winedbg --command "bt all" >"$work/stacks.txt" 2>&1
  { name_places "$work/stacks.txt"; cat "$work/stacks.txt"; } >"$work/failure-stacks.txt"
  cat "$work/failure.txt"
  echo "see failure.png, failure.txt, failure-stacks.txt in $work"
}

# name_places STACKS: the application's functions that stand there with their places alone.
name_places() {
  local places
  mapfile -t places < <(sed -n 's/.* \(0x[0-9a-f]*\) in desktop_host .*/\1/p' "$1" | sort -u)
  { x86_64-w64-mingw32-nm -C "$bin/desktop_host.exe" && printf '%016x ~\n' "${places[@]}"; } |
    grep '^[0-9a-f]* \([Tt] [^.]\|~\)' | sort |
    awk '$2 == "~" { print $1 function_name; next } { $1 = $2 = ""; function_name = $0 }'
}

close_stage() { # STATUS
  # Above 128 somebody has ended the script.
  (($1 == 0 || $1 > 128)) || (set +e && keep_evidence) >&2 || true
  end_process application_pid
  end_process driver_pid
  stop_wine
  # What is stopped in the middle of something would not end.
  [ -z "$service_pid" ] || wake_service 2>/dev/null || true
  [ -z "$manager_pid" ] || kill -CONT "$manager_pid" 2>/dev/null || true
  end_process service_pid
  end_process manager_pid
  end_process screen_pid
}

# The numbers of the controls, under their names in the program.
eval "$(sed -n 's/^#define \(IDC_[A-Z_]*\) \([0-9]*\)$/\1=\2/p' examples/desktop_host/resource.h)"
IDCANCEL=2
main_title=Editor update_title="Editor Update"
