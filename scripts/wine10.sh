# A newer Wine than the machine's: Debian 13's, in a root of its own, with the 64-bit and the 32-bit
# one side by side. A Debian 12 machine has neither.

readonly wine10Suite=trixie
readonly wine10Root="$buildDir/root-wine10"
readonly wine10Libraries=(libxrender1 libxcursor1 libxcomposite1 libxi6 libxrandr2 libxfixes3 libxinerama1)
readonly wine10Packages=(wine wine64 fonts-wine fonts-liberation "${wine10Libraries[@]}")
readonly wine10Packages32=(wine32 "${wine10Libraries[@]}")

# testWine10 x64|x86: the tests of the component, on the newer Wine.
testWine10() {
    buildPreset "$1"
    makeWine10Root
    useWine10 "$1"
    testOnDesktop "$1-wine10"
}

# From here on Wine is the root's; x86 has a prefix that knows nothing of 64 bits.
useWine10() {
    [ -z "${WINEPREFIX:-}" ] || killPrograms
    arch="$1"
    prefixName="wine10-$1"
    export SYLVEX_ROOT="${wine10Root##*/}"
    # Where both are installed "wine" is the 32-bit one, and finds the 32-bit cscript and the like.
    case "$1" in
        x86) wine=wine WINEARCH=win32 ;;
        *) wine=wine64 WINEARCH=win64 ;;
    esac
    [[ "$PATH" = "$root/scripts/root:"* ]] || export PATH="$root/scripts/root:$PATH"
}

# The root is made under another name and renamed when it is whole.
makeWine10Root() {
    [ ! -d "$wine10Root" ] || return 0
    installMissing debootstrap
    local log="$logDir/root-wine10.log"
    say 'Making the root build/root-wine10 with a newer Wine (2 to 5 minutes, 2 GB)'
    mkdir -p "$logDir"
    # An older Debian may have been released before the key of this one.
    [ -f /usr/share/keyrings/debian-archive-trixie-stable.gpg ] || installPackages debian-archive-keyring
    asRoot rm -rf "$wine10Root.part"
    fillWine10Root "$wine10Root.part" >"$log" 2>&1 </dev/null 9>&- ||
        { tail -20 "$log" >&2; fail "the root with the newer Wine cannot be made, nor 32-bit programs be run: $log"; }
    asRoot mv "$wine10Root.part" "$wine10Root"
}

fillWine10Root() {
    local packages
    packages="$(IFS=,; echo "${wine10Packages[*]}")"
    asRoot debootstrap --arch=amd64 --variant=minbase --include="$packages" "$wine10Suite" "$1" $(debianMirror) &&
        inRoot "$1" dpkg --add-architecture i386 &&
        inRoot "$1" apt-get update &&
        inRoot "$1" apt-get install -y --no-install-recommends "${wine10Packages32[@]/%/:i386}" &&
        inRoot "$1" apt-get clean
}

inRoot() {
    local folder="$1"
    shift
    asRoot env DEBIAN_FRONTEND=noninteractive PATH=/usr/sbin:/usr/bin:/sbin:/bin chroot "$folder" "$@"
}

# Where this machine has its own packages from; nothing when it does not say or is no Debian.
debianMirror() {
    apt-get indextargets --format '$(CODENAME) $(REPO_URI)' 2>/dev/null |
        awk -v suite="$(. /etc/os-release && [ "${ID:-}" = debian ] && echo "${VERSION_CODENAME:-}")" \
            '$1 == suite { print $2; exit }'
}
