#!/bin/sh
# Installs what a purpose needs and this machine lacks. usage: install-packages.sh run|test|bench
set -eu

run_debian='build-essential cmake ninja-build qt6-base-dev libgl-dev nlohmann-json3-dev libutf8proc-dev'
test_debian="$run_debian libgtest-dev procps xvfb xauth dbus openbox xfce4-panel xdotool x11-utils x11-xserver-utils
    at-spi2-core fonts-noto-cjk clang-19 llvm-19 libclang-rt-19-dev libc++-19-dev musl-dev libgnustep-gui-dev gobjc"
bench_debian="$run_debian i3status procps xvfb xauth dbus"
run_brew='cmake ninja qt nlohmann-json utf8proc'
test_brew="$run_brew googletest"

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

purpose=$1
if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
    eval "packages=\$${purpose}_debian"
    # shellcheck disable=SC2086,SC2154
    with_apt $packages
elif command -v brew >/dev/null; then
    case $purpose in
        test) packages=$test_brew ;;
        *) packages=$run_brew ;;
    esac
    # shellcheck disable=SC2086
    with_brew $packages
else
    for tool in c++ cmake ninja; do
        command -v "$tool" >/dev/null || lacking="${lacking-} $tool"
    done
    [ -z "${lacking-}" ] || {
        echo "Please install:$lacking, Qt 6.4 or newer (Widgets, Network, DBus), nlohmann-json and utf8proc" >&2
        exit 1
    }
fi
