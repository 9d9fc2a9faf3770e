#!/usr/bin/env bash
# Installs what is missing, builds, and runs the AmpDesk panel. With no
# arguments the unit is the simulated amplifier on loopback; otherwise the
# arguments name the unit, e.g.  scripts/run.sh --tcp 192.0.2.10   or
#                 scripts/run.sh --serial /dev/ttyUSB0 --settings 19200,N,8,1
# (build/bin/ampdesk --help lists every option). Without a display the panel
# runs on a virtual one: add --screenshot FILE --after MS to see it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
if [ $# -eq 0 ]; then set -- --demo; fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "run: no display; the panel runs on a virtual display" >&2
  exec xvfb-run -a build/bin/ampdesk "$@"
fi
exec build/bin/ampdesk "$@"
