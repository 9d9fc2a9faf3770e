#!/usr/bin/env bash
# Runs clang-tidy (.clang-tidy) over the program sources, using the compile
# commands of build/ (run scripts/build.sh first).
#   scripts/check-tidy.sh            every source file of src/, cli/ and sim/
#   scripts/check-tidy.sh REV        only those changed since REV (a header
#                                    change checks the sources beside it)
set -euo pipefail
cd "$(dirname "$0")/.."
if [ ! -f build/compile_commands.json ]; then
  echo "tidy: build/compile_commands.json missing: run scripts/build.sh first" >&2
  exit 2
fi
if [ $# -ge 1 ]; then
  mapfile -t changed < <(git diff --name-only "$1" -- src cli sim | grep -E '\.(cpp|h)$' || true)
  files=()
  for f in "${changed[@]}"; do
    [ -e "$f" ] || continue
    if [[ $f == *.h ]]; then
      for c in "$(dirname "$f")"/*.cpp; do files+=("$c"); done
    else
      files+=("$f")
    fi
  done
  mapfile -t files < <(printf '%s\n' "${files[@]}" | grep . | sort -u || true)
else
  mapfile -t files < <(git ls-files 'src/*.cpp' 'cli/*.cpp' 'sim/*.cpp')
fi
if [ ${#files[@]} -eq 0 ]; then
  echo "tidy: no source changed"
  exit 0
fi
log=$(mktemp)
status=0
printf '%s\n' "${files[@]}" |
  xargs -P 2 -n 4 clang-tidy -p build --quiet >"$log" 2>/dev/null || status=1
grep -E ': (warning|error):' "$log" | sort -u || true
rm -f "$log"
if [ $status -ne 0 ]; then
  echo "tidy: findings above (${#files[@]} files checked)" >&2
  exit 1
fi
echo "tidy: ok (${#files[@]} files)"
