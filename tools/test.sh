#!/bin/sh
# Installs what is missing, builds everything and runs the whole test suite
# offscreen. Extra arguments go to CMake's configure step.
set -eu
cd "$(dirname "$0")/.."
./tools/install-deps.sh
cmake -S . -B build "$@"
cmake --build build -j"$(nproc)"
QT_QPA_PLATFORM=offscreen ctest --test-dir build --output-on-failure -j"$(nproc)"
