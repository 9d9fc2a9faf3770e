#!/usr/bin/env bash
# Installs what is missing, builds, and runs AmpDesk. With no arguments the
# unit is the simulated amplifier on loopback; otherwise the arguments name
# the unit, e.g.  scripts/run.sh --tcp 192.0.2.10   or
#                 scripts/run.sh --serial /dev/ttyUSB0 --settings 19200,N,8,1
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
if [ $# -eq 0 ]; then set -- --demo; fi
exec build/bin/ampdesk-cli "$@" monitor
