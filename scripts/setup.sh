#!/usr/bin/env bash
# Installs every system package AmpDesk needs to build, test, fuzz and take
# screenshots. Safe to run any number of times: it only installs what is missing.
set -euo pipefail

PACKAGES=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-serialport-dev libqt6serialport6
  libgl-dev
  libxlsxwriter-dev
  libcli11-dev
  libtomlplusplus-dev prometheus-cpp-dev prometheus
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  clang libclang-rt-14-dev clang-format clang-tidy python3 git
  xvfb xauth
  qt6-qpa-plugins fonts-dejavu-core
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: all ${#PACKAGES[@]} packages present"
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "setup: done"
