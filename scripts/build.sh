#!/usr/bin/env bash
# Configures and builds everything into build/ (programs in build/bin).
# AMPDESK_WERROR=ON (set by CI) makes every compiler warning an error.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DAMPDESK_WERROR="${AMPDESK_WERROR:-OFF}" >/dev/null
cmake --build build -j2
