# shellcheck shell=bash
# What ./run, ./test and .ci/run have in common: the packages the project needs, and how a preset is
# built. Sourced by them, never run. Everything here reports on stderr, so that the standard output
# of a caller stays its own; nothing here changes the caller's working folder.

root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")

# Each need is a package name as in Debian and Ubuntu, and a command by which it is recognised where
# there is no apt-get.
# shellcheck disable=SC2034  # read by the scripts that source this file
build_needs=(
    "cmake cmake"         # configures from CMakePresets.json
    "ninja-build ninja"   # the presets' generator
    "g++ g++"             # C++20, with the sanitizers' libraries
    "qt6-base-dev qmake6" # Qt Core, Gui, Network, Widgets, D-Bus; Qt Test for the tests
    "qt6-svg-dev qmake6"  # the drawings
    "libssl-dev openssl"  # signatures of updates
    "libxcb1-dev xcb-proto" # whether a compositing manager runs
    "fonts-inter fc-list" # the window's look where the desktop brings no font of its own
    "qt6-qpa-plugins qmake6" # Qt on X11
    "qt6-wayland qmake6"  # and on Wayland
)
# shellcheck disable=SC2034
test_needs=(
    "python3 python3"         # the rules in scripts/check-*.py and the totals
    "e2fsprogs mkfs.ext4"     # file systems in image files, and inode flags (chattr, lsattr)
    "mount mount"             # mounting them
    "util-linux setarch"      # loop devices, unprivileged children, runs without address randomisation
    "dbus dbus-daemon"        # buses of the tests' own
    "xvfb Xvfb"               # a display without a screen
    "openbox openbox"         # a window manager
    "xdotool xdotool"         # keys and mouse
    "x11-utils xprop"         # what a window says of itself
    "imagemagick import"      # pictures of the window
    "at-spi2-core atspi"      # texts and names as screen readers get them
    "python3-pyatspi atspi"
    "gir1.2-gtk-3.0 atspi"    # a program of another toolkit to drag files from
    "desktop-file-utils desktop-file-validate" # judges the entries for menus
    "appstream appstreamcli"  # and the page for software centres
)
# shellcheck disable=SC2034
fuzz_needs=(
    "clang clang++"           # libFuzzer's compiler
    "libclang-rt-dev clang++" # and its library
)

# Each argument is a line.
say() {
    printf '%s\n' "$@" >&2
}

die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# logged <name> <command>...: runs it with its output in build/<name>.log, shown only if it fails.
logged() {
    local log="$root/build/$1.log"
    shift
    mkdir -p -- "$root/build" || return
    "$@" </dev/null >"$log" 2>&1 && return
    local status=$?
    cat -- "$log" >&2
    return "$status"
}

# The packages of the given needs that are not installed, one a line.
missing_packages() {
    local need installed
    installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${@%% *}" 2>/dev/null)
    for need; do
        grep -qxF -- "${need%% *} installed" <<<"$installed" || printf '%s\n' "${need%% *}"
    done
}

# The packages of the given needs whose command is not found, one a line.
missing_commands() {
    local need
    for need; do
        (PATH=$PATH:/usr/sbin:/sbin && command -v -- "${need##* }" >/dev/null) || printf '%s\n' "${need%% *}"
    done
}

# install_packages <package>...: with apt-get, as root or through sudo.
install_packages() {
    local command="apt-get update && apt-get install --no-install-recommends $*"
    local as_root=()
    if [[ $EUID -ne 0 ]]; then
        command -v sudo >/dev/null || {
            say "Packages are missing, and there is no sudo. Run this as root, then start again:" "  $command"
            exit 1
        }
        as_root=(sudo)
        # Without a terminal nobody could type a password.
        { : >/dev/tty; } 2>/dev/null || as_root+=(-n)
        "${as_root[@]}" true || {
            say "Packages are missing, and sudo refused. Run this as root, then start again:" "  $command"
            exit 1
        }
    fi
    say "Installing packages that are missing: $*"
    as_root+=(env DEBIAN_FRONTEND=noninteractive)
    local options=(-q -o DPkg::Lock::Timeout=600)
    # A source that does not answer need not be one that is wanted; installing tells.
    logged packages-update "${as_root[@]}" apt-get "${options[@]}" update || true
    logged packages "${as_root[@]}" apt-get "${options[@]}" -y install --no-install-recommends "$@" ||
        die "the packages could not be installed: $*"
}

# ensure_packages <need>...: installs what is missing; silent and without network if nothing is.
ensure_packages() {
    local missing
    if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
        mapfile -t missing < <(missing_packages "$@")
        [[ ${#missing[@]} -eq 0 ]] || install_packages "${missing[@]}"
    else
        mapfile -t missing < <(missing_commands "$@")
        if [[ ${#missing[@]} -ne 0 ]]; then
            say "There is no apt-get here. Install what these Debian packages stand for, then start again:"
            say "  ${missing[*]}"
            exit 1
        fi
    fi
    ensure_cmake_version
}

ensure_cmake_version() {
    local wanted=3.25 found
    found=$(cmake --version) || die "cmake does not start"
    [[ $found =~ ([0-9]+(\.[0-9]+)+) ]] || die "cmake does not tell its version"
    found=${BASH_REMATCH[1]}
    [[ $(printf '%s\n' "$wanted" "$found" | sort -V | head -n 1) == "$wanted" ]] ||
        die "cmake $wanted or newer is needed; $(command -v cmake) is $found"
}

# build_preset <preset>: configures if need be, and builds into build/<preset>.
build_preset() (
    local name=$1 folder="$root/build/$1" configure=(cmake --preset "$1")
    mkdir -p -- "$folder" && cd -- "$root" || exit
    # One build at a time; the lock goes with this subshell.
    exec 9>"$folder/.lock" || exit
    flock 9 || exit
    if [[ ! -e $folder/build.ninja || ! $folder/.configured -nt CMakePresets.json ]] ||
        ! grep -qxF -- "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        # A build folder that came along with a copied or moved tree still points to the old one.
        configure+=(--fresh)
        say "Building Vantorel ($name); the first time takes a while."
        logged "$name-configure" "${configure[@]}" || exit
        touch -- "$folder/.configured"
    fi
    logged "$name-build" cmake --build --preset "$name" --parallel "$(nproc)"
)
