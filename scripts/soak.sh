# Abuse at random, on drive C of a prefix that can reach nothing else.

commandSoak() {
    local kind="${1:-drags}" log="$logDir/soak.log" status=0
    [ $# -eq 0 ] || shift
    [ "$kind" = drags ] || fail "soak: there is no soak of $kind; try drags"
    local -a arguments=()
    while [ $# -gt 0 ]; do
        [[ "$1" =~ ^--(seed|count|minutes)$ ]] || fail "soak: unknown option $1"
        [[ "${2:-}" =~ ^[0-9]{1,9}$ ]] || fail "soak: $1 needs a number"
        arguments+=("$1" "$2")
        shift 2
    done
    [[ " ${arguments[*]:-} " = *' --seed '* ]] || arguments+=(--seed "$((RANDOM * 1000))")
    installMissing
    buildPreset x64 sylvex_soak SylvexControl
    prefixName=wine-soak
    useHiddenDesktop
    runSoak "$log" "${arguments[@]}" || status=$?
    [ "$status" -eq 0 ] || fail "something went wrong; all that was done is in build/logs/soak.log"
}

# runSoak LOG OPTION...: keeps what it prints.
runSoak() {
    local log="$1" place="$WINEPREFIX/drive_c/SylvexSoak"
    shift
    fenceIn
    rm -rf "$place" "$WINEPREFIX"/drive_c/SylvexHand*
    mkdir -p "$place"
    cp "$buildDir/x64/sylvex_soak.exe" "$buildDir/x64/SylvexControl.ocx" "$place/"
    say "Soaking: drags ${*}"
    (cd "$place" && timeout -k 10 36000 "$wine" 'C:\SylvexSoak\sylvex_soak.exe' --gtest_color=no "$@" \
        2>"$log.err" </dev/null 9>&-) | tr -d '\r' | tee "$log" | grep -v '^\[\|^Note\|^$' || true
    grep -q '^\[  PASSED  \] 1 test' "$log"
}

# Drive Z is the whole machine, and the user's folders may be links to the home folder.
fenceIn() {
    local folder
    killPrograms
    rm -f "$WINEPREFIX/dosdevices/z:"
    for folder in "$WINEPREFIX"/drive_c/users/*/*; do
        [ ! -L "$folder" ] || { rm "$folder" && mkdir "$folder"; }
    done
}
