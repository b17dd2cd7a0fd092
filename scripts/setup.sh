#!/usr/bin/env bash
# Installs everything the build, the tests and the program need, from Debian packages.
set -euo pipefail

packages=(
    build-essential cmake pkg-config
    qt6-base-dev qt6-charts-dev qt6-svg-dev libqt6opengl6-dev libgl-dev
    libsqlite3-dev libcli11-dev nlohmann-json3-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    clang-format xvfb xauth
    clang libclang-rt-dev
    desktop-file-utils appstream dpkg-dev file
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo_cmd=""
    [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
    $sudo_cmd apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
