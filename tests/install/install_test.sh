#!/usr/bin/env bash
# Installs Velto into a temporary prefix and builds its Debian package, then
# checks what a desktop needs from each (menu entry, AppStream card, icons at
# the sizes their folders claim, MIME types the system knows) and starts the
# installed program: it must find its data and its media engine in the
# prefix, play, and answer a second start.
#   install_test.sh BUILD-DIR
set -uo pipefail
build=$(cd "$1" && pwd)
tmp=$(mktemp -d)
velto_pid=
cleanup() {
    [ -n "$velto_pid" ] && kill "$velto_pid" 2>/dev/null
    rm -rf "$tmp"
}
trap cleanup EXIT
failures=0
fail() {
    echo "FAIL: $*" >&2
    failures=$((failures + 1))
}

# What a menu, a file manager and a software centre read.
check_desktop_files() {
    local prefix=$1
    local desktop=$prefix/share/applications/org.velto.Velto.desktop
    local metainfo=$prefix/share/metainfo/org.velto.Velto.metainfo.xml
    for file in bin/velto lib/velto/libvelto_mpv.so share/velto/skins/default.skin \
        share/velto/skins/player-main.png share/velto/nocover.bmp; do
        [ -f "$prefix/$file" ] || fail "$prefix has no $file"
    done
    # The browser's engine is built only where Qt WebEngine is installed.
    if [ -f "$build/platform/webengine/libvelto_webengine.so" ]; then
        [ -f "$prefix/lib/velto/libvelto_webengine.so" ] || fail "$prefix has no browser engine"
    fi
    desktop-file-validate "$desktop" || fail "desktop-file-validate rejects $desktop"
    appstreamcli validate --no-net --pedantic "$metainfo" >"$tmp/appstream.log" 2>&1 ||
        fail "appstreamcli rejects $metainfo: $(cat "$tmp/appstream.log")"
    grep -q '<launchable type="desktop-id">org.velto.Velto.desktop</launchable>' "$metainfo" ||
        fail "the AppStream card does not launch the installed menu entry"
    local types
    types=$(sed -n 's/^MimeType=//p' "$desktop" | tr ';' ' ')
    for needed in audio/mpeg audio/x-mpegurl audio/x-scpls video/mp4; do
        [[ " $types " == *" $needed "* ]] || fail "the menu entry does not open $needed"
    done
    # A misspelt type is accepted by the validator and opens nothing.
    for type in $types; do
        [ -f "/usr/share/mime/$type.xml" ] || fail "$type is no MIME type this system knows"
    done
    local icon
    icon=$(sed -n 's/^Icon=//p' "$desktop")
    python3 - "$prefix/share/icons/hicolor" "$icon" <<'PY' || fail "icons: see above"
import struct, sys
from pathlib import Path
theme, name = Path(sys.argv[1]), sys.argv[2]
bad = []
for size in (16, 22, 24, 32, 48, 64, 128, 256):
    path = theme / f"{size}x{size}" / "apps" / f"{name}.png"
    if not path.is_file():
        bad.append(f"no {path}")
        continue
    head = path.read_bytes()[:24]
    if head[:8] != b"\x89PNG\r\n\x1a\n":
        bad.append(f"{path} is no PNG")
    elif struct.unpack(">II", head[16:24]) != (size, size):
        bad.append(f"{path} is {struct.unpack('>II', head[16:24])}, not {size}x{size}")
print("\n".join(bad), file=sys.stderr)
sys.exit(1 if bad else 0)
PY
}

# Starts the installed program on a tone with a home of its own, waits until
# a second start reports it playing, then ends it as a session would.
check_runs() {
    local prefix=$1 home=$tmp/home-$2
    mkdir -p "$home/runtime" && chmod 700 "$home/runtime"
    local env=(env -i PATH=/usr/bin:/bin HOME="$home" XDG_DATA_HOME="$home/data"
        XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home/runtime"
        QT_QPA_PLATFORM=offscreen VELTO_AUDIO=null)
    # A sanitized build keeps its options (the suppressions among them).
    local option
    for option in ASAN_OPTIONS UBSAN_OPTIONS LSAN_OPTIONS TSAN_OPTIONS; do
        [ -n "${!option:-}" ] && env+=("$option=${!option}")
    done
    # LD_DEBUG names every library loaded: the engine must come from the prefix.
    "${env[@]}" LD_DEBUG=files "$prefix/bin/velto" --play "$tmp/tone.wav" \
        >"$home/out" 2>"$home/err" &
    velto_pid=$!
    local status="" deadline=$((SECONDS + 30))
    until [[ "$status" == Playing* ]]; do
        if ((SECONDS > deadline)) || ! kill -0 "$velto_pid" 2>/dev/null; then
            fail "$prefix/bin/velto never played: status '$status'; $(grep -v '^ *[0-9]*:' "$home/err" | tail -5)"
            break
        fi
        status=$("${env[@]}" "$prefix/bin/velto" --status 2>&1)
        sleep 0.1
    done
    [[ "$status" == *tone* ]] || fail "the status names no title: '$status'"
    grep -q "calling init: $prefix/bin/../lib/velto/libvelto_mpv.so" "$home/err" ||
        fail "$prefix/bin/velto did not load the engine installed beside it"
    [ -f "$home/data/velto/skins/default.skin" ] ||
        fail "$prefix/bin/velto did not fill the program folder from its data"
    kill -TERM "$velto_pid"
    wait "$velto_pid" || fail "$prefix/bin/velto ended with $? on SIGTERM"
    velto_pid=
}

python3 - "$tmp/tone.wav" <<'PY'
import math, struct, sys, wave
with wave.open(sys.argv[1], "wb") as w:
    w.setnchannels(1)
    w.setsampwidth(2)
    w.setframerate(8000)
    w.writeframes(b"".join(struct.pack("<h", int(8000 * math.sin(i * 2 * math.pi * 440 / 8000)))
                           for i in range(8000 * 20)))
PY

cmake --install "$build" --prefix "$tmp/prefix" >/dev/null || fail "cmake --install failed"
check_desktop_files "$tmp/prefix"
check_runs "$tmp/prefix" prefix

# The package, unpacked where dpkg would put it, minus the root.
if cpack -G DEB --config "$build/CPackConfig.cmake" -B "$tmp/pkg" >"$tmp/cpack.log" 2>&1; then
    deb=$(ls "$tmp"/pkg/velto_*.deb)
    depends=$(dpkg-deb -f "$deb" Depends)
    for library in libmpv2 libfluidsynth3 libqt6widgets6 libqt6dbus6 libqt6network6; do
        [[ "$depends" == *"$library "* || "$depends" == *"$library," || "$depends" == *"$library" ]] ||
            fail "the package does not depend on $library: $depends"
    done
    dpkg-deb -x "$deb" "$tmp/root"
    check_desktop_files "$tmp/root/usr"
    check_runs "$tmp/root/usr" deb
else
    fail "cpack -G DEB failed: $(tail -20 "$tmp/cpack.log")"
fi

exit $((failures > 0))
