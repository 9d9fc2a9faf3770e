#!/usr/bin/env bash
# One exporter in front of one `ampsim --units N` on loopback, measured over
# a window once every unit is up: the 99th percentile of the time between
# two polls of a unit, the exporter's CPU (share of one core) and resident
# memory, and the time of a /metrics scrape (worst of five).
#
#   bash bench/fleet_bench.sh [BUILD_DIR] [UNITS...]      (default: build 100 500 1000)
#   WINDOW=60 sets the measuring window in seconds.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
shift || true
counts=("$@")
[ ${#counts[@]} -eq 0 ] && counts=(100 500 1000)
window=${WINDOW:-60}
tick=$(getconf CLK_TCK)

metric_sum() {  # metrics file, metric name with labels prefix -> sum of values
  awk -v m="$2" 'index($0, m) == 1 { s += $NF } END { print s + 0 }' "$1"
}

run() {
  local n=$1 tmp sim exp port up=0
  tmp=$(mktemp -d)
  "$build/bin/ampsim" --units "$n" --tcp 127.0.0.1:0 --profile sspa120,twta127 \
    --fleet-file "$tmp/fleet.toml" </dev/null >"$tmp/sim.out" 2>&1 &
  sim=$!
  for _ in $(seq 1 120); do grep -q ready "$tmp/sim.out" && break; sleep 0.5; done
  "$build/bin/ampdesk-exporter" "$tmp/fleet.toml" --listen 127.0.0.1:0 >"$tmp/exp.out" 2>&1 &
  exp=$!
  for _ in $(seq 1 60); do grep -q listening "$tmp/exp.out" && break; sleep 0.5; done
  port=$(grep -o 'address=127.0.0.1:[0-9]*' "$tmp/exp.out" | cut -d: -f2)
  # Every unit up, and one more full poll round behind the first reads.
  for _ in $(seq 1 240); do
    curl -s "127.0.0.1:$port/metrics" >"$tmp/m0"
    up=$(metric_sum "$tmp/m0" "ampdesk_unit_up{")
    [ "${up%.*}" -ge "$n" ] && break
    sleep 0.5
  done
  sleep 3
  curl -s "127.0.0.1:$port/metrics" >"$tmp/a"
  local cpu0 cpu1 rss scrape worst=0
  cpu0=$(awk '{print $14 + $15}' "/proc/$exp/stat")
  sleep "$window"
  cpu1=$(awk '{print $14 + $15}' "/proc/$exp/stat")
  curl -s "127.0.0.1:$port/metrics" >"$tmp/b"
  rss=$(awk '/VmRSS/ {print $2}' "/proc/$exp/status")
  for _ in 1 2 3 4 5; do
    scrape=$(curl -s -o /dev/null -w '%{time_total}' "127.0.0.1:$port/metrics")
    worst=$(awk -v a="$worst" -v b="$scrape" 'BEGIN { print (b > a) ? b : a }')
  done
  # p99 from the interval histogram's growth over the window: the smallest
  # bucket bound that holds 99% of the polls.
  local p99 polls missed
  p99=$(paste <(grep '^ampdesk_exporter_poll_interval_seconds_bucket' "$tmp/a") \
    <(grep '^ampdesk_exporter_poll_interval_seconds_bucket' "$tmp/b") |
    awk '{ split($1, x, "\""); le[NR] = x[2]; d[NR] = $4 - $2 } END {
      total = d[NR]; for (i = 1; i <= NR; i++) if (d[i] >= 0.99 * total) { print "<=" le[i] "s"; exit } }')
  polls=$(($(metric_sum "$tmp/b" "ampdesk_polls_total{") - $(metric_sum "$tmp/a" "ampdesk_polls_total{")))
  missed=$(($(metric_sum "$tmp/b" "ampdesk_missed_polls_total{") - $(metric_sum "$tmp/a" "ampdesk_missed_polls_total{")))
  printf '%5d units: up %s, polls %d (missed %d) in %ss, interval p99 %s, CPU %s%% of a core, RSS %d MB, scrape %.0f ms\n' \
    "$n" "${up%.*}" "$polls" "$missed" "$window" "$p99" \
    "$(awk -v c=$((cpu1 - cpu0)) -v t="$tick" -v w="$window" 'BEGIN { printf "%.1f", 100 * c / t / w }')" \
    $((rss / 1024)) "$(awk -v s="$worst" 'BEGIN { print s * 1000 }')"
  kill "$exp" "$sim" 2>/dev/null || true
  wait "$exp" "$sim" 2>/dev/null || true
  rm -rf "$tmp"
}

for n in "${counts[@]}"; do run "$n"; done
