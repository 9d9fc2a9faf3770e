#!/usr/bin/env bash
# Fails when a C++ file of the repository is not formatted as .clang-format
# says. Fast enough to check every file, not only the changed ones.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(git ls-files '*.cpp' '*.h')
if ! clang-format --dry-run --Werror "${files[@]}" 2>/tmp/ampdesk-format.$$; then
  grep -E '^[^ ].*: (error|warning):' /tmp/ampdesk-format.$$ | cut -d: -f1 | sort -u |
    sed 's/^/format: not formatted: /'
  rm -f /tmp/ampdesk-format.$$
  echo "format: run  clang-format -i FILE  on the files above" >&2
  exit 1
fi
rm -f /tmp/ampdesk-format.$$
echo "format: ok (${#files[@]} files)"
