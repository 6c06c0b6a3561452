#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds everything and runs the whole test suite
# offscreen. Extra arguments go to CMake's configure step; the build goes to
# build/ unless ZEPHLANE_BUILD_DIR names another directory.
set -eu
cd "$(dirname "$0")/.."
build=${ZEPHLANE_BUILD_DIR:-build}
./tools/install-deps.sh
cmake -S . -B "$build" "$@"
cmake --build "$build" -j"$(nproc)"
QT_QPA_PLATFORM=offscreen ctest --test-dir "$build" --output-on-failure -j"$(nproc)"
