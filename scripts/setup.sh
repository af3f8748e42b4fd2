#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, only those missing.
# Packages named as arguments are installed instead (make compat names Wine's).
set -euo pipefail
pkgs=(cmake ninja-build g++ clang libclang-rt-14-dev qt6-base-dev libgl-dev
      qt6-image-formats-plugins libgtest-dev libgmock-dev libbenchmark-dev
      xvfb xauth fonts-liberation fonts-dejavu-core python3
      openbox xdotool at-spi2-core python3-pyatspi dbus libarchive-dev zip unzip)
[ $# -gt 0 ] && pkgs=("$@")
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then sudo=(); else sudo=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
