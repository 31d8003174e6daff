#!/bin/sh
# Installs what a purpose needs and this machine lacks. usage: install-packages.sh run|test|bench|package
set -eu

debian_packages() {
    echo build-essential cmake ninja-build qt6-base-dev libgl-dev libxcb1-dev nlohmann-json3-dev libutf8proc-dev
    echo libre2-dev pkg-config xdg-utils
    case $1 in
        test)
            echo libgtest-dev desktop-file-utils procps xvfb xauth dbus at-spi2-core
            echo openbox xcompmgr xfce4-panel xfconf xdotool x11-xserver-utils
            echo tigervnc-standalone-server
            echo appstream fakeroot file fonts-noto-cjk lintian mandoc
            echo clang-19 llvm-19 libclang-rt-19-dev libc++-19-dev musl-dev
            echo libgnustep-gui-dev gnustep-back0.29-cairo gobjc
            ;;
        bench) echo procps xvfb xauth dbus openbox xfce4-panel xfconf i3status conky-std xdotool ;;
        package) echo file ;;
    esac
}

brew_packages() {
    echo cmake ninja qt nlohmann-json utf8proc
    [ "$1" = run ] || echo googletest
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "$0: not root and no sudo; as root, please run: $*" >&2
        exit 1
    fi
}

missing_debian() {
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || printf '%s ' "$package"
    done
}

with_apt() {
    missing=$(missing_debian "$@")
    [ -n "$missing" ] || return 0
    echo "Installing: $missing"
    as_root apt-get update -qq
    # The list is split on purpose.
    # shellcheck disable=SC2086
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
}

with_brew() {
    for package in "$@"; do
        brew list --versions "$package" >/dev/null 2>&1 || brew install "$package"
    done
}

# The lists are split on purpose.
# shellcheck disable=SC2046
if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
    with_apt $(debian_packages "$1")
elif command -v brew >/dev/null; then
    with_brew $(brew_packages "$1")
else
    lacking=
    for tool in c++ cmake ninja pkg-config; do
        command -v "$tool" >/dev/null || lacking="$lacking $tool"
    done
    for library in Qt6Widgets Qt6Network Qt6DBus nlohmann_json libutf8proc re2; do
        pkg-config --exists "$library" 2>/dev/null || lacking="$lacking $library"
    done
    if [ -n "$lacking" ]; then
        echo "Please install these first (Qt 6.4 or newer; on macOS Homebrew does it):$lacking" >&2
        exit 1
    fi
fi
