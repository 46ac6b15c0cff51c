#!/bin/bash
# SPDX-License-Identifier: MIT
#
# try_installed.sh STAGE CODE ANSWER: follows the documents with the library that is installed in STAGE: builds their
# programs by CMake and by pkg-config and runs them, with the library ANSWER at the keyboard, and configures the library on
# a kernel whose package is the one of the guide.
set -euo pipefail
source=$(cd "$(dirname "$0")/../.." && pwd)
stage=$1
code=$2
answer=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export QT_QPA_PLATFORM=offscreen

libdir=$(dirname "$(find "$stage" -name libqtutils.so)")
test -n "$libdir"

for program in readme first_dialog; do
    echo "== $program by CMake"
    cmake -S "$code/$program" -B "$folder/$program" -G Ninja -DCMAKE_PREFIX_PATH="$stage" > "$folder/configure.log"
    cmake --build "$folder/$program" > "$folder/build.log" || { cat "$folder/build.log"; exit 1; }
    LD_PRELOAD=$answer "$folder/$program/$program"

    echo "== $program by pkg-config"
    # As the documents have it, but for the installed library in a place of its own.
    export PKG_CONFIG_PATH=$libdir/pkgconfig
    # shellcheck disable=SC2046
    c++ -std=c++17 "$code/$program/main.cpp" -o "$folder/$program/by_hand" $(pkg-config --cflags --libs zevaqt) \
        -Wl,-rpath,"$libdir"
    test -f "$(pkg-config --variable=icons zevaqt)/question.png"
    LD_PRELOAD=$answer "$folder/$program/by_hand"
done

echo "== the library on a kernel of another make"
kernel=$folder/opt/mykernel
mkdir -p "$kernel/lib/cmake/ZevaKernel" "$kernel/include"
ln -s "$stage/include/zeva" "$kernel/include/mykernel"
echo "INPUT($libdir/libzvbase.so $libdir/libzvdb.so $libdir/libzvcore.so $libdir/libzevautils.so)" > "$kernel/lib/libmykernel.so"
cp "$code/ZevaKernelConfig.cmake" "$kernel/lib/cmake/ZevaKernel/"
cmake -S "$source" -B "$folder/mine" -G Ninja -DZevaKernel_DIR="$kernel/lib/cmake/ZevaKernel" \
    -DZEVA_BUILD_TESTS=OFF -DZEVA_BUILD_WORKBENCH=OFF > "$folder/mine.log"
ninja -C "$folder/mine" src/qtutils/CMakeFiles/qtutils.dir/qt_utils.cpp.o > "$folder/object.log" ||
    { cat "$folder/object.log"; exit 1; }
echo "== all of it works"
