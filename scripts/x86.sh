# The 32-bit component: built here, and run in a 32-bit Debian root with a 32-bit Wine, which a
# 64-bit machine does not have.

readonly x86Root="$buildDir/root-x86"
readonly x86Packages=(
    wine wine32 libxrender1 libxcursor1 libxcomposite1 libxi6 libxrandr2 libxfixes3 libxinerama1
    fonts-wine fonts-liberation
)

testX86() {
    buildPreset x86
    makeX86Root
    [ -z "${WINEPREFIX:-}" ] || killPrograms
    useX86
    useHiddenDesktop
    registerComponent
    runTests x86 900 "$buildDir/x86/sylvex_component_tests.exe" "$wine"
    runScripts
    runHostScript properties.js
    runHostScript events.vbs
    testPackage
}

# From here on Wine is the 32-bit root's.
useX86() {
    arch=x86
    export WINEARCH=win32
    export PATH="$root/scripts/x86:$PATH"
}

# The root is made under another name and renamed when it is whole.
makeX86Root() {
    [ ! -d "$x86Root" ] || return 0
    installMissing debootstrap
    local log="$logDir/root-x86.log" packages
    packages="$(IFS=,; echo "${x86Packages[*]}")"
    say 'Making the 32-bit root build/root-x86 (2 to 5 minutes, 1.1 GB)'
    mkdir -p "$logDir"
    asRoot rm -rf "$x86Root.part"
    asRoot debootstrap --arch=i386 --variant=minbase --include="$packages" \
        "$(debianSuite)" "$x86Root.part" $(debianMirror) >"$log" 2>&1 </dev/null 9>&- ||
        { tail -20 "$log" >&2; fail "the 32-bit root cannot be made, and 32-bit programs not be run: $log"; }
    asRoot mv "$x86Root.part" "$x86Root"
}

debianSuite() { (. /etc/os-release && echo "${VERSION_CODENAME:-bookworm}"); }

# Where this machine has its own packages from; nothing when it does not say.
debianMirror() {
    apt-get indextargets --format '$(CODENAME) $(REPO_URI)' 2>/dev/null |
        awk -v suite="$(debianSuite)" '$1 == suite { print $2; exit }'
}
