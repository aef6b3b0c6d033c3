#!/usr/bin/env bash
# Installs the build into a scratch prefix, runs the installed skin tool on the demo skin,
# and builds an outside program against it, once through pkg-config and once through the
# CMake packages, then runs both.
set -euo pipefail
build=$1
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/prefix" >/dev/null
export PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig"
# The skin tool is installed with the libraries and runs from there.
"$work/prefix/bin/zel-skin" check "$build/demo/default.rc"
g++ -std=c++20 "$here/consumer.cpp" $(pkg-config --cflags --libs zel-controls) -o "$work/by-pkg-config"
"$work/by-pkg-config"
mkdir "$work/cmake"
cat >"$work/cmake/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.25)
project(consumer CXX)
set(CMAKE_CXX_STANDARD 20)
find_package(zel-controls REQUIRED)
add_executable(consumer "$here/consumer.cpp")
target_link_libraries(consumer zel::controls)
CMAKE
cmake -S "$work/cmake" -B "$work/cmake/b" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/cmake/b" >/dev/null
"$work/cmake/b/consumer"
