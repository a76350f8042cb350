# Times the control, each figure beside its floor.

commandBench() {
    installMissing
    buildPreset x64 sylvex_bench
    useHiddenDesktop
    makeBenchFolders "$WINEPREFIX/drive_c/SylvexBench"
    say 'Running the benchmarks'
    cd "$WINEPREFIX/drive_c"
    timeout -k 10 1200 "$wine" "$buildDir/x64/sylvex_bench.exe" "$@" </dev/null 2>"$logDir/bench.err" 9>&- | sed -u 's/\r$//'
}

# The folders that the benchmark reads (bench/folders.cpp has their names). Made by programs under Wine they would take
# minutes: it compares each new name with all that are there.
makeBenchFolders() {
    local folder="$1" count
    mkdir -p "$folder"
    for count in 1000 10000 100000; do
        [ ! -f "$folder/flat$count.made" ] || continue
        say "Making a folder of $count files"
        mkdir -p "$folder/flat$count"
        (cd "$folder/flat$count" &&
            seq 0 $((count - 1)) | awk -v n="$count" '{ printf "file%06d.x%d\n", ($1 * 7919) % n, $1 % 200 }' | xargs touch)
        touch "$folder/flat$count.made"
    done
    for count in 1000 10000; do
        [ ! -f "$folder/folders$count.made" ] || continue
        say "Making $count folders"
        mkdir -p "$folder/folders$count"
        (cd "$folder/folders$count" &&
            seq 0 $((count - 1)) | awk '{ printf "folder%06d%s\n", $1, $1 % 2 ? "" : "/sub" }' | xargs mkdir -p)
        touch "$folder/folders$count.made"
    done
    [ ! -f "$folder/deep100000.made" ] || return 0
    say 'Making 100 nested folders of 1000 files'
    local level="$folder/deep100000"
    for ((count = 0; count < 100; count++)); do
        mkdir -p "$level"
        (cd "$level" && seq -f 'f%06g.txt' 0 999 | xargs touch)
        level="$level/d"
    done
    mkdir -p "$level"
    touch "$folder/deep100000.made"
}
