#!/usr/bin/env bash
# Makes docs/calc-window.png, the README's picture of Nivarel in a desktop
# Calc window: the order process of examples/order.txt drawn on the sheet, the
# Nivarel menu open in the menu bar and its Diagram Tools submenu beside it.
#
# Needs a built tree (bash scripts/setup.sh) and, for the picture only, an X
# server without a screen, a key and mouse driver and an image tool:
#   apt-get install -y xvfb xdotool imagemagick
# Not part of CI or the tests.
#
# Usage: bash scripts/screenshot.sh [BUILD_DIR] [OUTPUT_PNG]
# SHOT_DISPLAY sets the X display number (default 99). SHOT_COMMAND_BAR=1
# shows the command bar of the older object model instead, its Layout menu
# dropped down (docs/command-bar.png).
#
# The office runs in a throwaway profile with the extension installed, on its
# own X display, and is ended by its process id, as is the X server.
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build}
if [ "${SHOT_COMMAND_BAR:-}" = 1 ]; then
  export NIVAREL_OBJECT_MODEL=11
  png=${2:-docs/command-bar.png}
else
  png=${2:-docs/calc-window.png}
fi
display=:${SHOT_DISPLAY:-99}
width=1024
height=880
oxt=$(realpath "$build/extension/nivarel.oxt")
cli=$build/cli/nivarel
office=/usr/lib/libreoffice/program/soffice.bin

for tool in Xvfb xdotool import convert unopkg "$office"; do
  command -v "$tool" >/dev/null ||
    { echo "missing: $tool (apt-get install -y xvfb xdotool imagemagick)" >&2; exit 1; }
done
[ -f "$oxt" ] && [ -x "$cli" ] || { echo "no build in $build (bash scripts/setup.sh)" >&2; exit 1; }
if [ -e "/tmp/.X11-unix/X${display#:}" ]; then
  echo "display $display is in use; set SHOT_DISPLAY to a free number" >&2; exit 1
fi

work=$(mktemp -d /tmp/nivarel-shot.XXXXXX)
xvfb_pid=
office_pid=
stop() {  # stop PID: TERM, then KILL if it has not gone after 10 s
  local pid=$1
  kill "$pid" 2>/dev/null || return 0
  for _ in $(seq 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.2; done
  kill -KILL "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
}
finish() {
  [ -z "$office_pid" ] || stop "$office_pid"
  [ -z "$xvfb_pid" ] || stop "$xvfb_pid"
  rm -rf "$work"
}
trap finish EXIT

# The chart, drawn live by the command-line program in its own office.
"$cli" draw examples/order.txt -o "$work/order.ods"

# A throwaway profile with the extension. unopkg refuses per-user installs as
# root, so as root it runs as nobody, and the profile is taken back after.
profile=$work/profile
mkdir -p "$profile" "$work/home"
if [ "$(id -u)" = 0 ]; then
  chmod a+rx "$work"
  cp "$oxt" "$work/nivarel.oxt"
  chmod a+r "$work/nivarel.oxt"
  chown nobody: "$profile" "$work/home"
  runuser -u nobody -- env HOME="$work/home" \
    unopkg add "-env:UserInstallation=file://$profile" "$work/nivarel.oxt"
  chown -R root: "$profile" "$work/home"
else
  HOME="$work/home" unopkg add "-env:UserInstallation=file://$profile" "$oxt"
fi
# No tip of the day and no first-start or new-version notes over the sheet.
xcu=$profile/user/registrymodifications.xcu
sed -i 's|</oor:items>||' "$xcu"
cat >>"$xcu" <<'EOF'
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Setup/Product"><prop oor:name="ooSetupLastVersion" oor:op="fuse"><value>99.0</value></prop></item>
</oor:items>
EOF

Xvfb "$display" -screen 0 "${width}x${height}x24" -nolisten tcp >"$work/xvfb.log" 2>&1 </dev/null &
xvfb_pid=$!
for _ in $(seq 50); do [ -e "/tmp/.X11-unix/X${display#:}" ] && break; sleep 0.2; done
[ -e "/tmp/.X11-unix/X${display#:}" ] || { echo "Xvfb did not start" >&2; cat "$work/xvfb.log" >&2; exit 1; }
export DISPLAY=$display

# A desktop office: no --headless and no --invisible. On a fresh profile the
# office first registers the extension and ends with code 81, asking to be
# started again, as the soffice launcher would.
start_office() {
  env -u SAL_USE_VCLPLUGIN LANG=C.UTF-8 HOME="$work/home" \
    "$office" --calc --norestore --nologo --nolockcheck \
    "-env:UserInstallation=file://$profile" "$work/order.ods" \
    >>"$work/office.log" 2>&1 </dev/null &
  office_pid=$!
}
start_office
window=
starts=1
for _ in $(seq 120); do
  window=$(xdotool search --name '^order\.ods' 2>/dev/null | head -1) || true
  [ -n "$window" ] && break
  if ! kill -0 "$office_pid" 2>/dev/null; then
    code=0; wait "$office_pid" || code=$?
    office_pid=
    [ "$code" = 81 ] && [ "$starts" -lt 3 ] || { echo "the office ended with code $code" >&2; break; }
    starts=$((starts + 1))
    start_office
  fi
  sleep 0.5
done
[ -n "$window" ] || { echo "no Calc window came" >&2; cat "$work/office.log" >&2; exit 1; }
sleep 4  # let the toolbars, the extension's among them, settle
xdotool windowmove "$window" 0 0 windowsize "$window" "$width" "$height"
sleep 1

# The saved view ends at the chart's foot; go to its head.
xdotool key --window "$window" ctrl+Home
sleep 1
if [ "${SHOT_COMMAND_BAR:-}" = 1 ]; then
  # Drop the bar's Layout menu down (its button at x 643 of the first
  # toolbar row with the office's default fonts).
  xdotool mousemove 643 31 click 1
  sleep 1.5
else
  # Open the Nivarel menu with a click on its title in the menu bar (after
  # File ... Tools, at x 390 with the office's default fonts), then, by
  # keys, its fifth entry (Diagram Tools) and that submenu.
  xdotool mousemove 390 9 click 1
  sleep 1
  for _ in 1 2 3 4 5; do xdotool key Down; sleep 0.2; done
  xdotool key Right
  sleep 1.5
fi

mkdir -p "$(dirname "$png")"
import -window root "$work/shot.png"
convert "$work/shot.png" -strip +dither -colors 256 "PNG8:$png"
echo "wrote $png ($(stat -c %s "$png") bytes)"
