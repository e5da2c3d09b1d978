# The Debian 12 packages that the scripts install, by purpose. Sourced by scripts/lib.sh.
# shellcheck shell=bash disable=SC2034

# To run the program. ca-certificates must be named because nothing below brings it along; fonts-dejavu-core gives the
# window a font with umlauts on a machine that has none, and libqt6svg6 reads the icons of most themes. Without
# qt6-wayland the window opens on a Wayland desktop only where that runs an X server as well.
packages_run=(
    ca-certificates
    fonts-dejavu-core
    gstreamer1.0-alsa
    gstreamer1.0-plugins-bad
    gstreamer1.0-plugins-base
    gstreamer1.0-plugins-good
    libcurl4
    libicu72
    libxcb1
    libqt6dbus6
    libqt6svg6
    libqt6widgets6
    qt6-translations-l10n
    qt6-wayland
)

# To build it. python3 runs the check of the include table.
packages_build=(
    build-essential
    cmake
    libcurl4-openssl-dev
    libgstreamer-plugins-base1.0-dev
    libgstreamer1.0-dev
    libicu-dev
    libxcb1-dev
    ninja-build
    pkg-config
    python3
    qt6-base-dev
)

# To test it: servers, a sound card and a screen that need no hardware (openssl, for certificates, comes with
# ca-certificates).
packages_test=(
    dbus-daemon
    ffmpeg
    icecast2
    imagemagick
    libgmock-dev
    libglib2.0-bin
    libgtest-dev
    playerctl
    procps
    pulseaudio
    pulseaudio-utils
    xauth
    xdotool
    xvfb
)

# To see and hear the demonstration without a screen and a sound card.
packages_demo=(
    imagemagick
    pulseaudio
    pulseaudio-utils
    python3
    xdotool
    xvfb
)

# To soak it: a bus for its media keys, and the mouse and the keys of a virtual screen.
packages_soak=(
    dbus-daemon
    libglib2.0-bin
    libx11-6
    libxtst6
    mount
)

# To make the documents' pictures small.
packages_pictures=(
    optipng
    pngquant
)

# For the checks around the tests: the second compiler, its run-time library for fuzzing, the formatter, the linter;
# and a cache, because two stages compile the same files.
packages_check=(
    ccache
    clang
    clang-format
    clang-tidy
    libclang-rt-14-dev
    llvm
)

# To check packages, and to try them in a root of their own.
packages_package=(
    appstream
    binutils
    desktop-file-utils
    dpkg-dev
    lintian
    man-db
    mmdebstrap
    util-linux
)

# To measure, and the programs to compare with: scripts/bench.
packages_bench=(
    audacious
    audacious-plugins
    curl
    dbus-daemon
    ffmpeg
    goodvibes
    gstreamer1.0-plugins-base-apps
    libbenchmark-dev
    mpv
    vlc
    vlc-plugin-qt
)

# To build the program for Windows and to try it here. GoogleTest is compiled from its source for that system, and
# g++ makes the servers that its tests are given on this one. Wine loads the plugins and libraries of sound, TLS and the
# screen when it needs them.
packages_windows=(
    binutils-mingw-w64-x86-64
    cmake
    cmark-gfm
    ffmpeg
    g++
    g++-mingw-w64-x86-64-posix
    googletest
    gstreamer1.0-plugins-bad
    gstreamer1.0-plugins-base
    gstreamer1.0-plugins-good
    icecast2
    libgnutls30
    libxcomposite1
    libxcursor1
    libxfixes3
    libxi6
    libxinerama1
    libxrandr2
    libxrender1
    ninja-build
    openssl
    pulseaudio
    pulseaudio-utils
    python3
    wine
    wine64
    xauth
    xvfb
)
