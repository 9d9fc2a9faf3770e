#!/usr/bin/env bash
# Configures and builds everything into build/ (programs in build/bin).
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j2
