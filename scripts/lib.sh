# What the scripts share: installing packages, configuring and building. Sourced, not run; needs bash.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$root/scripts/packages.sh"

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# missing_packages NAME...: those that are not installed, one a line.
missing_packages() {
    local installed name
    installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' | sed -n 's/ installed$//p')
    for name in "$@"; do
        grep -qxF -- "$name" <<<"$installed" || printf '%s\n' "$name"
    done
}

# need_packages NAME...: installs what is missing, as root or through sudo.
need_packages() {
    command -v dpkg-query >/dev/null || fail "These scripts install Debian packages; needed are: $*"
    local missing as_root=()
    mapfile -t missing < <(missing_packages "$@" | sort -u)
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "Please install, as root: apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# use_ccache: repeated builds take what has not changed from the cache, where there is one.
use_ccache() {
    command -v ccache >/dev/null || return 0
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_NOHASHDIR=1 CCACHE_BASEDIR="$root"
}

# build PRESET [TARGET...]: configures quietly and builds. FUNKHAUS_CMAKE_OPTIONS may hold further words for cmake.
build() {
    local preset=$1 target targets=() options=()
    shift
    read -ra options <<<"${FUNKHAUS_CMAKE_OPTIONS:-}"
    for target in "$@"; do targets+=(--target "$target"); done
    use_ccache
    (cd "$root" && cmake --preset "$preset" "${options[@]}" >/dev/null && cmake --build --preset "$preset" "${targets[@]}")
}

# source_files: the C++ files of the project, each ended with a NUL.
source_files() {
    find "$root" \( -path "$root/build*" -o -path "$root/.git" \) -prune -o \
        \( -name '*.h' -o -name '*.cpp' \) -type f -print0
}
