# The package for users: both components with their manifests, the sample host, samples and documents.

readonly packageDir="$buildDir/package/Sylvex"

commandPackage() {
    [ $# -eq 0 ] || fail "package: takes no options"
    installMissing
    buildPreset x64 SylvexControl SylvexHost
    buildPreset x86 SylvexControl SylvexHost
    makePackage x64 x86
    (cd "$buildDir/package" && cmake -E tar cf "$buildDir/Sylvex.zip" --format=zip Sylvex)
    say 'The package: build/Sylvex.zip'
}

# makePackage ARCH...: what is in the package, unpacked, for these builds.
makePackage() {
    local build
    rm -rf "$packageDir"
    for build in "$@"; do
        mkdir -p "$packageDir/$build"
        cp "$buildDir/$build/SylvexControl.ocx" "$buildDir/$build/SylvexHost.exe" \
            "$buildDir/$build/manifest/SylvexControl.manifest" "$packageDir/$build/"
    done
    cp -r README.md CHANGELOG.md CONTRIBUTING.md docs samples component/SylvexControl.idl "$packageDir/"
}

# testPackage LABEL: the packaged host in a prefix in which nothing is registered: the manifest beside it is all it has.
# Its screen has twice the usual resolution.
testPackage() {
    local before="$WINEPREFIX" log="$logDir/package-$1.log"
    say "Running the packaged host where nothing is registered ($1)"
    makePackage "$arch"
    killPrograms
    export WINEPREFIX="$before-bare"
    makePrefix unmanaged
    "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 192 /f >"$log" 2>&1 </dev/null 9>&-
    killPrograms
    (cd "$WINEPREFIX/drive_c" && timeout -k 10 120 "$wine" "$packageDir/$arch/SylvexHost.exe" \
        --script "$(windowsPath "$packageDir/samples/script/tick.vbs")" --exit) \
        2>"$log" </dev/null 9>&- | tr -d '\r' >"$log.out" || true
    if grep -q '^Listed: 1 rows, first C:\\SylvexScript\\\*$' "$log.out"; then
        passed=$((passed + 1))
    else
        cat "$log.out" "$log"
        countFailure package 'the host did not fill its list without a registration'
    fi
    lookAtForm "$1"
    killPrograms
    export WINEPREFIX="$before"
}

# lookAtForm LABEL: whether the form that is twice as large fills the screen, which is too small for it, and is painted.
lookAtForm() {
    local log="$logDir/form-192-$1" ready="$WINEPREFIX/drive_c/ready" job tries size colors
    rm -f "$ready"
    (cd "$WINEPREFIX/drive_c" && exec timeout -k 10 60 "$wine" "$packageDir/$arch/SylvexHost.exe" \
        --ready-file 'C:\ready') >"$log.log" 2>&1 </dev/null 9>&- &
    job=$!
    for ((tries = 0; tries < 300; tries++)); do
        [ ! -f "$ready" ] && kill -0 "$job" 2>/dev/null || break
        sleep 0.2
    done
    import -window root "$log.png"
    size="$(xdotool search --onlyvisible --name '^Sylvex sample host$' getwindowgeometry | sed -n 's/.*Geometry: //p')"
    colors="$(identify -format %k "$log.png")"
    if [ "$size" = "$screenSize" ] && [ "$colors" -gt 100 ]; then
        passed=$((passed + 1))
    else
        countFailure 'form at 192 dots per inch' "it is $size on a screen of $screenSize, in $colors colours: ${log#"$root"/}.png"
    fi
    killPrograms
    wait "$job" || true
}
