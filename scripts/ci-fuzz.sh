#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (build-fuzz/) and replays every seed
# of their corpora once, so a harness that no longer builds or a seed that now
# crashes fails CI. Fuzzing for real is in fuzz/README.md.
set -euo pipefail
cd "$(dirname "$0")/.."
CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DAMPDESK_FUZZ=ON >/dev/null
cmake --build build-fuzz -j2
status=0
for target in build-fuzz/bin/*_fuzz; do
  name=$(basename "$target")
  seeds=fuzz/corpus/$name
  if [ -d "$seeds" ]; then
    args=(-runs=0 "$seeds")
  else
    # No seed corpus: a short bounded run still proves the harness works.
    args=(-runs=2000 -max_total_time=30)
  fi
  if out=$("$target" "${args[@]}" 2>&1); then
    echo "$name: $(tail -1 <<<"$out")"
  else
    echo "$out" | tail -30
    echo "fuzz: $name failed" >&2
    status=1
  fi
done
[ $status -eq 0 ] && echo "fuzz: every target replayed its seeds"
exit $status
