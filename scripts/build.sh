# Configures and compiles one CMake preset.

# buildPreset PRESET [TARGET...]: all of it, or only the targets.
buildPreset() {
    local preset="$1" log="$logDir/configure-$1.log"
    shift
    mkdir -p "$logDir"
    say "Building $preset"
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; fail "$preset: cannot configure"; }
    cmake --build --preset "$preset" ${1:+--target "$@"} || fail "$preset: cannot build"
}
