#!/bin/bash
# SPDX-License-Identifier: MIT
#
# try_installed.sh STAGE: builds the consumer against the library that is installed in STAGE, by CMake and by pkg-config,
# and runs both. The library alone is then configured on the installed kernel, as on an application's own.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
stage=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export QT_QPA_PLATFORM=offscreen

libdir=$(dirname "$(find "$stage" -name libqtutils.so)")
test -n "$libdir"

echo "== by CMake"
cmake -S "$here" -B "$folder/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$stage" > "$folder/configure.log"
cmake --build "$folder/cmake" > "$folder/build.log"
"$folder/cmake/consumer"
"$folder/cmake/form"

plugin=$(find "$stage" -name libzevadesigner.so)
if [ -n "$plugin" ]; then
    echo "== a form with the installed plugin"
    QT_PLUGIN_PATH=$(dirname "$(dirname "$plugin")") \
        "$folder/cmake/load_form" "$here/../auto/designer/all_widgets.ui" "$folder/form.png"
fi

echo "== by pkg-config"
export PKG_CONFIG_PATH=$libdir/pkgconfig
flags=$(pkg-config --cflags --libs zevaqt)
# shellcheck disable=SC2086
c++ "$here/main.cpp" -o "$folder/by_pkg_config" $flags -Wl,-rpath,"$libdir"
"$folder/by_pkg_config"

echo "== the workbench"
"$stage/bin/zvworkbench" --version

echo "== the library on a kernel that is installed"
cmake -S "$here/../.." -B "$folder/library" -G Ninja -DCMAKE_PREFIX_PATH="$stage" \
    -DZevaKernel_DIR="$libdir/cmake/ZevaKernel" -DZEVA_BUILD_TESTS=OFF -DZEVA_BUILD_WORKBENCH=OFF \
    -DZEVA_BUILD_DESIGNER=OFF > "$folder/library.log"
test ! -e "$folder/library/kernel"
ninja -C "$folder/library" src/qtutils/CMakeFiles/qtutils.dir/zvcolorcombobox.cpp.o > "$folder/object.log"
echo "== all of it works"
