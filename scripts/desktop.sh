# A display and a Wine prefix to run Windows programs in.
#
# Tests and benchmarks run on a hidden desktop: a prefix and an X server that belong to this
# checkout. One X server serves a prefix as long as programs run in it, since windows that come to
# a second display fail silently. One command at a time has it, and stops it when it ends.

readonly xvfbDir="$buildDir/xvfb"
readonly screenSize=1280x900
wine=wine
# Which build runs, and in which prefix; useWine10 sets others.
arch=x64
prefixName=wine-x64
desktopLocked=''

export WINEARCH=win64
export WINEDEBUG=-all
# No offers to download the .NET and HTML engines.
export WINEDLLOVERRIDES='mscoree,mshtml='

windowsPath() { printf 'Z:%s' "${1//\//\\}"; }

lockDesktop() {
    [ -z "$desktopLocked" ] || return 0
    desktopLocked=1
    mkdir -p "$buildDir"
    exec 9>"$buildDir/desktop.lock"
    if ! flock -n 9; then
        say "Waiting for another ./sylvex to finish with the hidden desktop"
        flock 9
    fi
}

useHiddenDesktop() {
    lockDesktop
    export WINEPREFIX="$buildDir/$prefixName"
    trap stopDesktop EXIT
    trap 'exit 130' INT TERM HUP
    killPrograms # Of a command that was killed itself.
    startXvfb
    makePrefix unmanaged
}

# The user's own display, with a prefix of its own that may stay in use after the command.
useOwnDesktop() {
    export WINEPREFIX="$buildDir/wine-x64-desktop"
    makePrefix managed
}

# makePrefix managed|unmanaged: whether a window manager draws and activates the windows; on the
# hidden desktop there is none, and Wine does it.
makePrefix() {
    [ ! -f "$WINEPREFIX/.ready" ] || return 0
    say "Making the Wine prefix ${WINEPREFIX#"$root"/} (about 10 seconds)"
    rm -rf "$WINEPREFIX"
    mkdir -p "$logDir"
    {
        wineboot --init &&
            # A crash must end the program, not wait in a dialog.
            setInRegistry WineDbg ShowCrashDialog REG_DWORD 0 &&
            { [ "$1" = managed ] || setInRegistry "X11 Driver" Managed REG_SZ N; } &&
            wineserver -w
    } >"$logDir/wineboot.log" 2>&1 </dev/null 9>&- || fail "wineboot failed: build/logs/wineboot.log"
    # Debian keeps these where Wine does not look: without them captions and scroll bars show letters
    # instead of symbols.
    cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/" 2>/dev/null || true
    touch "$WINEPREFIX/.ready"
}

setInRegistry() {
    "$wine" reg add "HKCU\\Software\\Wine\\$1" /v "$2" /t "$3" /d "$4" /f
}

registerComponent() {
    local ocx="$buildDir/$arch/SylvexControl.ocx" stamp="$WINEPREFIX/.registered"
    [ ! "$stamp" -nt "$ocx" ] || return 0
    say 'Registering SylvexControl.ocx'
    # Wine's server starts here and may outlive the command: it must not hold the output open.
    timeout -k 10 60 "$wine" regsvr32 /s "$(windowsPath "$ocx")" \
        >"$logDir/regsvr32.log" 2>&1 </dev/null 9>&- ||
        fail 'SylvexControl.ocx does not register'
    touch "$stamp"
}

startXvfb() {
    local number
    mkdir -p "$xvfbDir"
    if xvfbRuns; then
        DISPLAY=":$(cat "$xvfbDir/display")"
        export DISPLAY
        return
    fi
    for number in $(cat "$xvfbDir/display" 2>/dev/null) {90..190}; do
        if tryXvfb "$number"; then
            export DISPLAY=":$number"
            rememberDisplay "$number"
            return
        fi
    done
    fail "cannot start Xvfb: ${xvfbDir#"$root"/}/log"
}

xvfbRuns() {
    local pid number
    pid="$(cat "$xvfbDir/pid" 2>/dev/null)" && number="$(cat "$xvfbDir/display" 2>/dev/null)" &&
        [ "$(tr '\0' ' ' 2>/dev/null <"/proc/$pid/cmdline" | cut -d' ' -f1,2)" = "Xvfb :$number" ] &&
        xdpyinfo -display ":$number" >/dev/null 2>&1
}

# A prefix stays with the display that it was made on.
rememberDisplay() {
    [ "$(cat "$xvfbDir/display" 2>/dev/null)" = "$1" ] || rm -f "$WINEPREFIX/.ready"
    echo "$1" >"$xvfbDir/display"
}

# A lock left behind by a server that was killed does not count.
displayTaken() {
    local pid
    pid="$(tr -d " " 2>/dev/null <"/tmp/.X$1-lock")"
    if [ -n "$pid" ] && [ -d "/proc/$pid" ]; then return 0; fi
    xdpyinfo -display ":$1" >/dev/null 2>&1
}

tryXvfb() {
    local number="$1" pid tries
    ! displayTaken "$number" || return 1
    # In a session of its own: an interrupt at the terminal must not end it before its clients.
    setsid Xvfb ":$number" -screen 0 "${screenSize}x24" -nolisten tcp \
        >"$xvfbDir/log" 2>&1 </dev/null 9>&- &
    pid=$!
    for ((tries = 0; tries < 100; tries++)); do
        kill -0 "$pid" 2>/dev/null || return 1
        if xdpyinfo -display ":$number" >/dev/null 2>&1; then
            echo "$pid" >"$xvfbDir/pid"
            return 0
        fi
        sleep 0.1
    done
    kill "$pid" 2>/dev/null || true
    return 1
}

killPrograms() {
    [ ! -d "$WINEPREFIX" ] || wineserver -k 2>/dev/null || true
}

stopDesktop() {
    trap "" INT TERM HUP
    killPrograms
    stopXvfb
}

# Waits until it has ended: the next command wants the same display number.
stopXvfb() {
    local pid tries
    xvfbRuns || return 0
    pid="$(cat "$xvfbDir/pid")"
    kill "$pid" 2>/dev/null || true
    for ((tries = 0; tries < 50; tries++)); do
        [ -e "/tmp/.X$(cat "$xvfbDir/display")-lock" ] || break
        sleep 0.1
    done
    rm -f "$xvfbDir/pid"
}

# What a command that was killed, or a window that was left open, keeps running.
stopLeftovers() {
    for WINEPREFIX in "$buildDir"/wine-*; do
        export WINEPREFIX
        killPrograms
    done
    for WINEPREFIX in "$buildDir"/wine10-*; do
        [ ! -d "$wine10Root" ] || (useWine10 x64 && killPrograms)
    done
    stopXvfb
}
