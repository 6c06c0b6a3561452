#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the Debian 12 packages that building, testing and benchmarking need.
# Packages already present are left alone; as a normal user the script only
# says what to run.
set -eu

PACKAGES="cmake g++ make pkg-config qtbase5-dev qtbase5-dev-tools libqt5svg5-dev \
libqwt-qt5-dev libqwt-doc libcurl4-openssl-dev libminizip-dev zlib1g-dev libbenchmark-dev \
xvfb xauth python3 fonts-dejavu-core desktop-file-utils appstream python3-pandas clang-14 \
libclang-rt-14-dev dpkg-dev lintian"

missing=""
for p in $PACKAGES; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $p"
    fi
done

[ -z "$missing" ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "Missing packages:$missing" >&2
    echo "Install them with:" >&2
    echo "  sudo apt-get update && sudo apt-get install -y --no-install-recommends$missing" >&2
    exit 1
fi

export DEBIAN_FRONTEND=noninteractive
apt-get update
apt-get install -y --no-install-recommends $missing
