# Installs the Debian packages that are missing.

readonly neededPackages=(
    # To build. libwine-dev has the interface definitions that the type library imports.
    g++ cmake ninja-build ccache mingw-w64 mingw-w64-tools libwine-dev googletest
    # To run and to look at what runs. Wine opens the X libraries by name, and draws with the fonts.
    wine wine64 libxrender1 libxcursor1 libxcomposite1 libxi6 libxrandr2 libxfixes3 libxinerama1
    fonts-wine fonts-liberation xvfb xdotool x11-utils imagemagick
    # To be asked what a selection means to them.
    git rsync
)

asRoot() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "installing packages needs root or sudo: $*"
    fi
}

# installMissing [PACKAGE...]: what every command needs, and the packages named.
installMissing() {
    local installed missing=()
    command -v dpkg-query >/dev/null || return 0 # Not Debian: the tools are the user's affair.
    installed="$(dpkg-query -W -f='${db:Status-Status} ${Package}\n' "${neededPackages[@]}" "$@" 2>/dev/null |
        sed -n 's/^installed //p' || true)"
    mapfile -t missing < <(printf '%s\n' "${neededPackages[@]}" "$@" | grep -vxF "$installed")
    [ ${#missing[@]} -eq 0 ] || installPackages "${missing[@]}"
}

installPackages() {
    say "Installing $* (a minute or two)"
    mkdir -p "$logDir"
    local log="$logDir/install.log"
    {
        asRoot apt-get update &&
            asRoot env DEBIAN_FRONTEND=noninteractive \
                apt-get install -y --no-install-recommends "$@"
    } >"$log" 2>&1 </dev/null || { tail -20 "$log" >&2; fail "the installation failed: $log"; }
}
