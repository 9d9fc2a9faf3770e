#!/usr/bin/env python3
"""Fails when a source file includes a layer above its own, or when code below
the Qt front end includes Qt.

Each directory under src/ (and the programs' own directories) has a rank; a
file may include headers of its own directory and of directories with a lower
rank only. Two directories of the same rank are siblings and may not include
each other. Exit status 1 lists every offending line."""
import pathlib
import re
import sys

RANKS = {
    "basic": 0, "platform": 0, "model": 0, "fleet": 0,
    "link": 1,
    "commands": 2,
    "display": 3,
    "unit": 4, "control": 4,
    "datafiles": 5,
    "app": 6,
    "frontend": 7,
    "qt": 8,
    "cli": 9,
}
# Directory of a source file -> its layer name in RANKS.
ROOTS = {"src": None, "cli": "cli", "sim": "sim"}
# The simulator stands apart from the host: it shares only the basic helpers.
SIM_MAY_INCLUDE = {"basic", "sim"}
QT_ALLOWED = {"qt", "cli"}

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')


def layer_of(path: pathlib.Path) -> str | None:
    parts = path.parts
    if parts[0] == "src" and len(parts) > 2:
        return parts[1]
    if parts[0] in ("cli", "sim"):
        return parts[0]
    return None


def check(root: pathlib.Path) -> list[str]:
    problems = []
    for path in sorted(root.glob("**/*")):
        rel = path.relative_to(root)
        if path.suffix not in (".cpp", ".h") or rel.parts[0] not in ROOTS:
            continue
        layer = layer_of(rel)
        if layer is None:
            continue
        for number, line in enumerate(path.read_text(errors="replace").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            target = match.group(1)
            where = f"{rel}:{number}: {line.strip()}"
            if re.match(r"Q[A-Za-z]+(/|$)", target) and layer not in QT_ALLOWED:
                problems.append(f"{where}  (Qt below the Qt front end)")
                continue
            head = target.split("/", 1)[0] if "/" in target else None
            if head is None or (head not in RANKS and head != "sim"):
                continue
            if layer == "sim":
                if head not in SIM_MAY_INCLUDE:
                    problems.append(f"{where}  (the simulator includes the host's {head}/)")
                continue
            if head == "sim":
                problems.append(f"{where}  (host code includes the simulator)")
            elif head != layer and RANKS[head] >= RANKS[layer]:
                problems.append(f"{where}  ({layer}/ may not include {head}/)")
    return problems


def main() -> int:
    root = pathlib.Path(__file__).resolve().parent.parent
    problems = check(root)
    for problem in problems:
        print(problem)
    if problems:
        print(f"layers: {len(problems)} include(s) against the layering", file=sys.stderr)
        return 1
    print("layers: ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())
