# For the scenarios beside it: a display, a window manager and a copy of the program, all private to one
# scenario and gone with it. $1 is the folder that the program was built in.
set -euo pipefail

for tool in Xvfb openbox xdotool xprop; do
  command -v "$tool" >/dev/null || { echo "needs $tool" >&2; exit 77; }
done

home=$(mktemp -d)
editor=
processes=()
finish() {
  local process
  [[ -z $editor ]] || kill -9 "$editor" 2>/dev/null || true
  for process in "${processes[@]}"; do kill "$process" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$home"
}
trap finish EXIT

fail() {
  echo "failed: $*" >&2
  [[ ! -s $home/quill.err ]] || cat "$home/quill.err" >&2
  exit 1
}

# eventually SECONDS COMMAND...: polls until the command succeeds.
eventually() {
  local left=$(($1 * 20))
  shift
  until "$@"; do
    ((left-- > 0)) || return 1
    read -rt 0.05 <> <(:) || true
  done
}

mkdir "$home/bin" "$home/files"
cp "$1"/quill "$1"/*.db "$home/bin"
export XDG_CONFIG_HOME=$home/config XDG_STATE_HOME=$home/state XDG_DATA_HOME=$home/data
export XDG_CACHE_HOME=$home/cache XDG_RUNTIME_DIR=$home/runtime
mkdir -p "$XDG_CONFIG_HOME/openbox" "$XDG_STATE_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
unset WAYLAND_DISPLAY XDG_CURRENT_DESKTOP XAUTHORITY LD_PRELOAD
export QT_QPA_PLATFORM=xcb
# A program built with a leak checker is not to answer for this library.
echo 'leak:libdbus' >"$home/leaks"
export LSAN_OPTIONS=suppressions=$home/leaks:print_suppressions=0
echo '<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard></keyboard></openbox_config>' \
  >"$XDG_CONFIG_HOME/openbox/rc.xml"

# new_display: the first one, or another when that has gone.
new_display() {
  : >"$home/display"
  Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp -noreset 3>"$home/display" 2>"$home/xvfb.err" &
  processes=($! "${processes[@]}")
  eventually 10 test -s "$home/display" || fail "no display: $(cat "$home/xvfb.err")"
  DISPLAY=:$(<"$home/display")
  export DISPLAY
  openbox 2>/dev/null &
  processes+=($!)
  eventually 10 managed || fail "no window manager"
}
managed() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
new_display

# active NAME: the window that has the keyboard is called so.
active() { [[ $(xdotool getactivewindow getwindowname 2>/dev/null) == "$1" ]]; }

# start [FILE...]: starts the editor and waits for its first window, the main one or a dialog.
start() {
  "$home/bin/quill" "$@" >"$home/quill.out" 2>"$home/quill.err" &
  editor=$!
}
main_window() { eventually 20 active "Vesper Editor" || fail "the main window does not come"; }
keys() { xdotool key --delay 20 "$@"; }
type_text() { xdotool type --delay 5 -- "$1"; }
# holds FILE TEXT: the file's bytes are those of the text, escapes of printf resolved.
holds() { [[ -f $1 ]] && printf '%b' "$2" | cmp -s - "$1"; }
# leave: ends the editor by its own command.
leave() {
  keys ctrl+q
  eventually 10 ended || fail "the editor does not end"
  local status=0
  wait "$editor" || status=$?
  editor=
  ((status == 0)) || fail "exit status $status"
}
ended() { ! kill -0 "$editor" 2>/dev/null || [[ $(ps -o stat= -p "$editor") == Z* ]]; }
