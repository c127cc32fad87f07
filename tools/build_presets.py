#!/usr/bin/env python3
"""Writes the presets that come with the program into its folder ABS_listen.

    build_presets.py --source data/presets --output DIR

A file that is there already may be the user's own: it is left as it is. A fault in the source ends the run with
"file: message" and exit code 1 before anything is written.
"""

import argparse
import sys
import tomllib
from pathlib import Path

FOLDER = "ABS_listen"
HEADER = "CV-Nummer;CV-Wert;CV-Text;"
END = "Ende CV"
# CV: lowest and highest value, and its text with the separator that it has in a file.
CVS = {
    48: (0, 255, "Bremswert wenn vom vorrausfahrenden Fahrzeug FAHRT empfangen wurde;"),
    52: (96, 150, "Unterhalb dieser Fahrstufe wird schneller beschleunigt, oberhalb langsamer;"),
    53: (
        0,
        255,
        "Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, "
        "wenn die Fahrstufe unterhalb von CV 52 liegt;",
    ),
    54: (
        0,
        255,
        "Zeit in 5ms die zwischen jedem Hochschalten der Fahrstufe liegt, "
        "wenn die Fahrstufe oberhalb von CV 52 liegt",
    ),
}


class PresetError(Exception):
    pass


def content(preset):
    lines = [HEADER]
    for cv, (lowest, highest, text) in CVS.items():
        value = preset.get(f"cv{cv}")
        if not isinstance(value, int) or not lowest <= value <= highest:
            raise PresetError(f"{preset.get('files')}: cv{cv} must be {lowest} to {highest}")
        lines.append(f"{cv};{value};{text}")
    lines.append(END)
    return "".join(line + "\r\n" for line in lines).encode("cp1252")


def files_of(source):
    """Returns the content of each file by its name."""
    files = {}
    for preset in tomllib.loads(source)["preset"]:
        for name in preset["files"]:
            if name in files:
                raise PresetError(f"{name} stands there twice")
            files[name] = content(preset)
    return files


def build(source, output):
    files = files_of((source / "distances.toml").read_text(encoding="utf-8"))
    folder = output / FOLDER
    folder.mkdir(parents=True, exist_ok=True)
    for name, bytes_ in files.items():
        if not (folder / name).exists():
            (folder / name).write_bytes(bytes_)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    arguments = parser.parse_args()
    try:
        build(arguments.source, arguments.output)
    except (PresetError, tomllib.TOMLDecodeError) as error:
        print(f"{arguments.source / 'distances.toml'}: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
