#!/bin/sh
# Starts the real program under an empty HOME on the X display this runs on, waits for its main
# window, and checks what the first start left on disk.
set -eu
bin=$1
home=$(mktemp -d)
pid=
cleanup() { [ -n "$pid" ] && kill "$pid" 2>/dev/null; rm -rf "$home"; }
trap cleanup EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

export HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" LANG=C.UTF-8 LC_ALL=C.UTF-8
unset XDG_DOCUMENTS_DIR QT_QPA_PLATFORM 2>/dev/null || true

"$bin/orvana" &
pid=$!
title=$("$bin/orvana-cli" text frmMain Form)
shown=
for _ in $(seq 1 300); do
  if xwininfo -root -tree | grep -F "\"$title\"" >/dev/null; then shown=1; break; fi
  kill -0 "$pid" 2>/dev/null || fail "orvana ended before showing its window"
  sleep 0.1
done
[ -n "$shown" ] || fail "no window titled \"$title\" appeared"

ini="$home/Documents/Orvana User Data/Orvana.ini"
[ -f "$ini" ] || fail "no settings file at $ini"
[ "$(stat -c %a "$ini")" = 600 ] || fail "settings file is not owner-only: $(stat -c %a "$ini")"
head -c 200 "$ini" | od -c | grep -q '\\r  \\n' || fail "settings file lines do not end in CR LF"
first=$(head -n 2 "$ini" | tr -d '\r')
[ "$first" = "[System]
OrvanaRoot = $bin" ] || fail "first lines are: $first"

get() { "$bin/orvana-cli" settings get "$1" "$2"; }
# The update-check day is the last thing start-up writes, after the window is up.
for _ in $(seq 1 100); do [ -n "$(get System LastCheckUpdate)" ] && break; sleep 0.1; done
[ "$(get Language Current)" = English ] || fail "language: $(get Language Current)"
[ "$(get Library MainPath)" = "$home/Documents/My Photo Albums" ] || fail "library: $(get Library MainPath)"
[ -d "$home/Documents/My Photo Albums" ] || fail "library folder not made"
[ "$(get Layout FastMakeThumbnail)" = 0 ] || fail "FastMakeThumbnail: $(get Layout FastMakeThumbnail)"
[ "$(get System CheckModifiedWhenOpenFolder)" = 1 ] || fail "CheckModifiedWhenOpenFolder not settled"
today=$(( ($(date -u +%s) / 86400) + 25569 ))
[ "$(get System LastCheckUpdate)" -ge $((today - 1)) ] || fail "LastCheckUpdate: $(get System LastCheckUpdate)"
grep -q '^MimeType=x-content/image-dcf;$' "$home/.local/share/applications/orvana-import.desktop" \
  || fail "no camera-card handler entry"
echo "first start: window \"$title\" shown, settings and handler entry written"
