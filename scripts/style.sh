# What clang-format and clang-tidy say about the sources.

# All sources are looked at for their form; clang-tidy reads those of the 64-bit component, the sample host and the
# benchmark, the portable ones among them, as they are compiled.
testStyle() {
    local log="$logDir/style.log" status=0
    installMissing clang-format clang-tidy-16
    say 'Looking at the sources with clang-format and clang-tidy (some minutes)'
    formatSources >"$log" 2>&1 || status=1
    tidySources >>"$log" 2>&1 || status=1
    if [ "$status" -eq 0 ]; then
        passed=$((passed + 1))
    else
        grep -E '(error|warning): ' "$log" | sort -u
        countFailure style "see ${log#"$root"/}"
    fi
}

formatSources() {
    find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 clang-format --dry-run -Werror
}

tidySources() {
    local folder includes=()
    # The compiler's own headers of C++, which clang does not find by itself.
    while read -r folder; do
        includes+=(--extra-arg=-isystem"$folder")
    done < <(x86_64-w64-mingw32-g++-posix -x c++ -E -v /dev/null 2>&1 | sed -n 's/^ \(.*c++.*\)/\1/p')
    sed -n 's|^ *"file": "\(.*\.cpp\)".*|\1|p' "$buildDir/x64/compile_commands.json" | grep -v /tests/ | grep -v /googletest/ |
        xargs -P "$(nproc)" -n 4 clang-tidy-16 -p "$buildDir/x64" --quiet "${includes[@]}"
}
