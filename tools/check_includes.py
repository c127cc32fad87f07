#!/usr/bin/env python3
"""Holds every include in src/ against the picture of the rooms in docs/architecture.md; stops at the first against it."""

import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SRC = ROOT / "src"
ROOMS = {path.name for path in SRC.iterdir() if path.is_dir()}
PLATFORM = {"shell", "cli", "ui", "platform"}  # all other rooms are plain logic


def picture():
    """By room, the rooms that it may know, from the block that draws them: "cvdata -> link, language, program"."""
    known = {}
    page = (ROOT / "docs" / "architecture.md").read_text(encoding="utf-8")
    for rooms, knows in re.findall(r"^(.*?) -> (.*)$", re.sub(r" {2,}(?=\w+ ->)", "\n", page), re.MULTILINE):
        words = set(re.split(r"[,\s]+", re.sub(r"\(.*?\)", "", knows).strip()))
        logic = ROOMS - PLATFORM if "all logic" in knows else set()
        for room in rooms.split(", "):
            known[room] = set(ROOMS) if "everything" in words else (words & ROOMS) | logic
    return known


def may_know(room, is_form, other, other_is_form, known):
    """Forms stand on ui as well, and on other forms; of all other code only shell knows forms."""
    if room == "shell" or (is_form and other == "ui"):
        return True
    return (is_form or not other_is_form) and (other == room or other in known[room])


def main():
    known = picture()
    if missing := ROOMS - set(known):
        sys.exit(f"docs/architecture.md does not say whom these rooms know: {', '.join(sorted(missing))}")
    for path in sorted([*SRC.rglob("*.h"), *SRC.rglob("*.cpp")]):
        parts = path.relative_to(SRC).parts
        is_form = "forms" in parts
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            where = f"{path.relative_to(ROOT).as_posix()}:{number}"
            own = re.match(r'#include "(\w+)/(forms/)?', line)
            if own and not may_know(parts[0], is_form, own[1], bool(own[2]), known):
                sys.exit(f"{where}: {line} is against the picture in docs/architecture.md")
            if re.match(r"#include <Q", line) and parts[0] not in PLATFORM and not is_form:
                sys.exit(f"{where}: {line} brings the toolkit into plain logic")
    return 0


if __name__ == "__main__":
    sys.exit(main())
