# Runs the test programs and adds up what they report.

passed=0
failed=0
filter='*'

commandTest() {
    local -A also=()
    while [ $# -gt 0 ]; do
        case "$1" in
            --x86 | --asan | --style) also[${1#--}]=1 ;;
            --all) also=([asan]=1 [style]=1 [newer]=1 [x86]=1) ;;
            --wine10) also=([newer]=1 [only]=1) ;;
            --filter) filter="${2:?--filter needs a pattern}"; shift ;;
            *) fail "test: unknown option $1" ;;
        esac
        shift
    done
    installMissing

    if [ -z "${also[only]:-}" ]; then
        buildPreset native
        runTests native 300 "$buildDir/native/sylvex_tests"
        [ -z "${also[asan]:-}" ] || testSanitized
        buildPreset x64
        [ -z "${also[style]:-}" ] || testStyle
        testOnDesktop x64
    fi
    [ -z "${also[newer]:-}" ] || testWine10 x64
    [ -z "${also[x86]:-}" ] || testWine10 x86

    printf '%d passed, %d failed\n' "$passed" "$failed"
    [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
}

testSanitized() {
    buildPreset asan
    UBSAN_OPTIONS=print_stacktrace=1 runTests asan 900 "$buildDir/asan/sylvex_tests"
}

# testOnDesktop LABEL: all that runs on the hidden desktop, by the Wine that is in use.
testOnDesktop() {
    useHiddenDesktop
    registerComponent
    runTests "$1" 900 "$buildDir/$arch/sylvex_component_tests.exe" "$wine"
    runScripts
    runHostScript properties.js
    runHostScript events.vbs
    testPackage "$1"
}

# runTests LABEL SECONDS PROGRAM [LAUNCHER...]: one googletest program.
runTests() {
    local label="$1" seconds="$2" program="$3" log="$logDir/test-$1.log" status=0
    shift 3
    say "Running the $label tests"
    # Wine takes seconds to answer for a volume that it may not read, and drive Z may be one: stay on C.
    [ $# -eq 0 ] || cd "$WINEPREFIX/drive_c"
    timeout -k 10 "$seconds" "$@" "$program" --gtest_color=no "--gtest_filter=$filter" \
        >"$log.raw" 2>&1 </dev/null 9>&- || status=$?
    cd "$root"
    tr -d '\r' <"$log.raw" >"$log"
    rm -f "$log.raw"
    showFailures "$log"
    countTests "$label" "$log" "$status"
}

# The output of the tests that failed, and the start of that of the one that was running when the
# output ended (Wine adds pages about a crash).
showFailures() {
    awk '/^\[ RUN      \]/ { text = ""; lines = 0; running = 1 }
         /^\[==========\].* ran\./ { running = 0; exit }
         running && lines++ < 40 { text = text $0 "\n" }
         /^\[       OK \]/ || /^\[  SKIPPED \]/ { running = 0 }
         /^\[  FAILED  \]/ { if (running) printf "%s", text; running = 0 }
         END { if (running) printf "%s(the output ends in this test)\n", text }' "$1"
}

# A program counts only when its summary arrived: one that crashes under Wine may print nothing
# and still exit with 0.
countTests() {
    local label="$1" log="$2" status="$3" good bad
    if ! grep -q '^\[==========\] [0-9]* tests\? from .* ran\.' "$log" ||
        ! grep -q '^\[  PASSED  \] [0-9]* test' "$log"; then
        good=$(grep -c '^\[       OK \]' "$log" || true)
        bad=$(grep -c '^\[  FAILED  \]' "$log" || true)
        passed=$((passed + good))
        failed=$((failed + bad))
        countFailure "$label" "no summary (exit status $status) after $good passed, $bad failed"
        grep -q "^\[ RUN " "$log" || tail -n 20 "$log"
        return
    fi
    good=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$log")
    bad=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) tests\?, listed below:.*/\1/p' "$log")
    bad=${bad:-0}
    passed=$((passed + good))
    failed=$((failed + bad))
    say "$label: $good passed, $bad failed$(sed -n \
        's/^\[  SKIPPED \] \([0-9]*\) tests\?, listed below:.*/, \1 skipped/p' "$log")"
    if [ "$status" -ne 0 ] && [ "$bad" -eq 0 ]; then
        tail -n 40 "$log"
        countFailure "$label" "all tests passed, but the program exited with status $status"
    fi
}

countFailure() {
    printf 'FAILED %s: %s\n' "$1" "$2"
    failed=$((failed + 1))
}

# countPrinted NAME EXPECTED PRINTED: one test that passes when the two files are alike.
countPrinted() {
    if diff -u --label expected --label printed "$2" "$3"; then
        passed=$((passed + 1))
    else
        countFailure "$1" "it did not print what was expected; see ${3#"$root"/}"
    fi
}

# Scripts that drive the registered component as any host would. Each gets an empty folder of its
# own as its only argument; what it prints is compared with NAME.expected beside it.
runScripts() {
    local script
    say 'Running the scripts'
    for script in "$root"/tests/scripts/*.vbs; do
        runScript "$script"
    done
}

runScript() {
    local script="$1" name="${1##*/}" work="$buildDir/test/${1##*/}"
    rm -rf "$work"
    mkdir -p "$work"
    timeout -k 10 120 "$wine" cscript //nologo "$(windowsPath "$script")" "$(windowsPath "$work")" \
        </dev/null 2>&1 9>&- | tr -d '\r' | grep -v '^wine: ' >"$logDir/$name.out" || true
    countPrinted "$name" "${script%.*}.expected" "$logDir/$name.out"
}

# A script that the sample host runs; it makes the file "go" in the folder given here when it waits
# for the hand at its form, and goes on when there is a file "done".
runHostScript() {
    local name="$1" script="$root/tests/scripts/host/$1" log="$logDir/host-$1" job
    local folder="$WINEPREFIX/drive_c/SylvexMembers"
    say "Running $name in the sample host"
    rm -rf "$folder"
    mkdir -p "$folder"
    (cd "$WINEPREFIX/drive_c" && exec timeout -k 10 120 "$wine" "$buildDir/$arch/SylvexHost.exe" \
        --script "$(windowsPath "$script")" --exit) >"$log.raw" 2>"$log.err" </dev/null 9>&- &
    job=$!
    while kill -0 "$job" 2>/dev/null && [ ! -f "$folder/go" ]; do sleep 0.2; done
    [ ! -f "$folder/go" ] || useHand
    touch "$folder/done" 2>/dev/null || true
    wait "$job" || true
    tr -d '\r' <"$log.raw" >"$log.out"
    countPrinted "$name" "${script%.*}.expected" "$log.out"
}

# Clicks the first row of the sample host's tree, clicks it twice, opens it again by key, types, and
# ticks its box. The form's rows stand where its font puts them.
useHand() {
    local X Y window
    window="$(xdotool search --onlyvisible --name '^Sylvex sample host$' | tail -1)"
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^[XY]=')"
    local row=$((Y + 144))
    sleep 0.5
    xdotool mousemove $((X + 70)) "$row" sleep 0.3 click 1 sleep 1
    xdotool click --repeat 2 --delay 60 1 sleep 1
    xdotool key Right sleep 0.3 key x sleep 0.3
    xdotool mousemove $((X + 23)) "$row" sleep 0.3 click 1 sleep 0.5
}
