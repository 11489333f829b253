# Shared by the scripts: installs the Debian packages a build needs, only when missing.

# What the core, its tests and benchmarks need.
CORE_PACKAGES=(g++ cmake ninja-build pkg-config ccache libplist-dev libplist-utils libtiff-dev
               libxkbcommon-dev libxkbcommon-x11-dev libxcb1-dev xkb-data libx11-dev libsystemd-dev
               libxcb-ewmh-dev libxcb-icccm4-dev libxcb-shape0-dev libxcb-composite0-dev
               libfontconfig-dev libxml2-dev libglib2.0-dev
               libgtest-dev libgmock-dev libbenchmark-dev)
# What the tests start for real: an X server without a screen and a window manager on it, a
# private D-Bus session, fonts for the font menu (a symbol font among them), pgrep to compare the
# process walk with, the desktop entry's validator, xdotool and xcb's XTEST to press keys, and
# DAMAGE for the switcher bench to see a panel drawn, and GNOME's keybinding schemas with the
# schema compiler for the shortcut owners' tests.
TEST_PACKAGES=(xvfb openbox dbus-daemon fonts-dejavu-core fonts-urw-base35 procps x11-utils
               desktop-file-utils xdotool libxcb-xtest0-dev libxcb-damage0-dev
               gsettings-desktop-schemas gnome-settings-daemon-common libglib2.0-bin)
# The Qt 6 desktop front (its tests render offscreen, no display needed), with Qt's own texts in
# the languages the pane speaks.
QT_PACKAGES=(qt6-base-dev libgl-dev qt6-translations-l10n)
# The fuzzers (libFuzzer comes with clang's runtime) and the format check.
FUZZ_PACKAGES=(clang libclang-rt-dev)
FORMAT_PACKAGES=(clang-format)

install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' \
            || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# configure_and_build BUILD_DIR [CMAKE_OPTIONS...]; BUILD_TARGET, when set, builds only that.
configure_and_build() {
    local build_dir=$1
    shift
    cmake -S . -B "$build_dir" -G Ninja "$@"
    cmake --build "$build_dir" ${BUILD_TARGET:+--target "$BUILD_TARGET"}
}
