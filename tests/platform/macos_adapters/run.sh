#!/bin/bash
# usage: run.sh [option of GoogleTest]...
# Builds the macOS adapters against GNUstep and runs them on a scratch display. Exit status 77: packages are missing.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)
build=$root/build/macos-adapters
gcc_folder=$(dirname "$(gcc -print-libgcc-file-name)")

while read -r package file; do
    # shellcheck disable=SC2086 # some are patterns
    ls $file >/dev/null 2>&1 || { echo "missing Debian package: $package" >&2; exit 77; }
done <<LIST
clang-19 /usr/bin/clang++-19
libgnustep-gui-dev /usr/include/GNUstep/AppKit/AppKit.h
gnustep-back0.29-cairo /usr/lib/GNUstep/Bundles/libgnustep-cairo-*.bundle
gobjc $gcc_folder/libobjc.so
libgtest-dev /usr/include/gtest/gtest.h
libutf8proc-dev /usr/include/utf8proc.h
xvfb /usr/bin/xvfb-run
LIST

compile()
{
    clang++-19 -x objective-c++ -std=c++20 -g -pthread -fsanitize=address -fobjc-runtime=gcc -fobjc-exceptions \
        -fexceptions -fblocks -fconstant-string-class=NSConstantString -D_NATIVE_OBJC_EXCEPTIONS -DGNUSTEP \
        -DGNUSTEP_BASE_LIBRARY=1 -DGNU_GUI_LIBRARY=1 -DGNU_RUNTIME=1 -Wall -Wextra -Werror \
        -Wno-missing-field-initializers -Wno-objc-protocol-method-implementation -isystem "$build" -isystem "$root/macos-check/gnustep" \
        -isystem /usr/include/GNUstep -isystem "$gcc_folder/include" -I "$root/os" -I "$root/contract" -I "$root/core" -I "$root/machine" \
        -I "$root/menubar/platform" -I "$root/menubar/platform/common" \
        -I "$root/menubar/platform/macos" -c "$1" -o "$build/$(basename "$1").o"
}

mkdir -p "$build/objc" "$build/sys" "$build/home" "$build/tmp"
# GNUstep's headers include a name that gcc's Objective-C runtime does not have.
echo '#pragma once' >"$build/objc/blocks_runtime.h"
cp "$root/macos-check/apple/sys/sysctl.h" "$build/sys/"
adapters=$root/menubar/platform/macos
sources=("$adapters"/{alert,login_item,pasteboard,running_application,second_start,status_item,system,trash}_macos.mm
    "$adapters"/{updater_backend,user_defaults}_macos.mm
    "$adapters"/{process_output,process_table_macos,sysctl_string}.cpp
    "$root"/menubar/platform/common/{confined_home,settings_of_this_run}.cpp
    "$root"/os/{child_process,path_below,port_owner_macos,user_home}.cpp
    "$root"/core/text.cpp "$root"/machine/current_instant.cpp "$here"/*.mm)
for source in "${sources[@]}"; do
    compile "$source"
done
clang++-19 -fsanitize=address "$build"/*.o -o "$build/macos_adapter_test" -pthread -lgnustep-gui -lgnustep-base \
    -L"$gcc_folder" -lobjc -lgtest -lutf8proc

# Nothing of the user's is read or written. HOME alone does not do: GNUstep takes the home from the user database.
sed "s|=GNUstep/|=$build/home/|" /etc/GNUstep/GNUstep.conf >"$build/GNUstep.conf"
export GNUSTEP_CONFIG_FILE=$build/GNUstep.conf TEMP=$build/tmp ASAN_OPTIONS=detect_leaks=0
xvfb-run -a "$build/macos_adapter_test" "$@"
