#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds the program and starts it.
set -eu
cd "$(dirname "$0")/.."
./tools/install-deps.sh
cmake -S . -B build
cmake --build build -j"$(nproc)" --target zephlane
exec ./build/zephlane "$@"
