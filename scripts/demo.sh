# The main job on a real folder, with something to look at.

readonly demoDir="$buildDir/demo"
# A command line holds 32767 characters.
readonly demoMostFiles=100

commandDemo() {
    local folder
    [ $# -le 1 ] || fail "demo: one folder at most"
    folder="$(cd "$callerDir" && cd "${1:-$root}" 2>/dev/null && pwd -P)" || fail "demo: no such folder: $1"
    local ownDisplay="${DISPLAY:-}"
    installMissing
    buildPreset x64 SylvexControl SylvexHost
    if [ -n "$ownDisplay" ]; then useOwnDesktop; else useHiddenDesktop; fi
    registerComponent

    local hostPid window
    local -a ticked arguments
    chooseTicked "$folder"
    hostArguments "$folder"
    rm -rf "$demoDir"
    mkdir -p "$demoDir"
    say "Opening $folder in the sample host and ticking ${#ticked[@]} entries"
    setsid "$wine" "$buildDir/x64/SylvexHost.exe" "${arguments[@]}" \
        >"$demoDir/host.log" 2>&1 </dev/null 9>&- &
    hostPid=$!
    waitForHost

    # Of the user's own display only the host's window is anybody's business.
    if [ -n "$ownDisplay" ]; then
        import -window "$window" "$demoDir/screenshot.png"
    else
        import -window root -trim +repage "$demoDir/screenshot.png"
    fi
    printTable "$demoDir/list.csv"
    say 'The list: build/demo/list.csv'
    say 'The window: build/demo/screenshot.png'
    [ -z "$ownDisplay" ] || say 'The window stays open; close it when you have seen enough'
}

# Sets ticked: the files of a folder and its first subfolder. At least one entry is left out, so
# that the folders above show the mixed state.
chooseTicked() {
    local folder="${1%/}" entry
    local -a files=() folders=()
    for entry in "$folder"/*; do
        if [ -d "$entry" ]; then folders+=("$entry"); elif [ -f "$entry" ]; then files+=("$entry"); fi
    done
    if [ ${#folders[@]} -lt 2 ] && [ ${#files[@]} -gt 0 ]; then
        unset 'files[-1]'
    fi
    ticked=("${files[@]:0:demoMostFiles}")
    [ ${#folders[@]} -eq 0 ] || ticked+=("${folders[0]}")
    [ ${#ticked[@]} -gt 0 ] || fail "demo: $folder has too few entries to tick any"
}

# Sets arguments: all that the demo asks of the sample host, in one place.
hostArguments() {
    local entry
    arguments=(--open "$(windowsPath "$1")" --path "$(windowsPath "$1")")
    for entry in "${ticked[@]}"; do
        arguments+=(--check "$(windowsPath "$entry")")
    done
    arguments+=(--csv "$(windowsPath "$demoDir/list.csv")")
}

# Waits until the host has written the list and shows its window; sets window to the latter's id.
waitForHost() {
    local tries size=0 last=-1
    for ((tries = 0; tries < 300; tries++)); do
        kill -0 "$hostPid" 2>/dev/null ||
            { cat "$demoDir/host.log" >&2; fail 'the sample host ended before it was done'; }
        size="$(stat -c %s "$demoDir/list.csv" 2>/dev/null || echo 0)"
        window="$(xdotool search --onlyvisible --class sylvexhost.exe 2>/dev/null | tail -1 || true)"
        if [ -n "$window" ] && [ "$size" -gt 0 ] && [ "$size" -eq "$last" ]; then
            waitUntilPainted
            return
        fi
        last="$size"
        sleep 0.2
    done
    fail 'the sample host did not show its window and write its list within a minute'
}

# Until the window looks the same twice, or for five seconds.
waitUntilPainted() {
    local tries look last=''
    for ((tries = 0; tries < 15; tries++)); do
        look="$(import -window "$window" rgb:- 2>/dev/null | cksum)"
        [ "$look" != "$last" ] || return 0
        last="$look"
        sleep 0.3
    done
}
