#!/usr/bin/env python3
"""Writes the presets that come with the program into the folders original/ABS_listen and original/FS_listen.

    build_presets.py --source data/presets --output DIR

The files are read-only. The user's own lie in DIR/ABS_listen and DIR/FS_listen, which are never touched. A fault in
the source ends the run with "file: message" and exit code 1 before anything is written.
"""

import argparse
import stat
import sys
import tomllib
from pathlib import Path

SHIPPED = "original"
DISTANCES = "ABS_listen"
SPEED_STEPS = "FS_listen"
HEADER = "CV-Nummer;CV-Wert;CV-Text"
END = "Ende CV"
STEPS = 28
STEPS_ABOVE = 2  # of CV52, at least: else CV54 never acts
STEP_LIMITS = (3, 120)  # what every generation of decoders can take
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


def file_of(lines):
    return "".join(line + "\r\n" for line in lines).encode("cp1252")


def number(preset, value, lowest, highest, what):
    if not isinstance(value, int) or not lowest <= value <= highest:
        raise PresetError(f"{preset.get('files')}: {what} must be {lowest} to {highest}")
    return value


def distance_content(preset):
    lines = [HEADER + ";"]
    for cv, (lowest, highest, text) in CVS.items():
        lines.append(f"{cv};{number(preset, preset.get(f'cv{cv}'), lowest, highest, f'cv{cv}')};{text}")
    return file_of(lines + [END])


def step_lines(preset):
    steps = preset.get("steps", [])
    if len(steps) != STEPS:
        raise PresetError(f"{preset.get('files')}: {len(steps)} steps instead of {STEPS}")
    if sorted(steps) != steps:
        raise PresetError(f"{preset.get('files')}: the steps do not rise")
    return [
        f"{98 - step};{number(preset, value, *STEP_LIMITS, f'step {step}')};Fahrstufe {step}"
        for step, value in enumerate(steps, start=1)
    ]


def step_content(preset):
    return file_of([HEADER] + step_lines(preset))


def based_content(preset):
    ends = [f"2;{preset['steps'][0]};Grundgeschwindigkeit", f"5;{preset['steps'][-1]};Höchstgeschwindigkeit"]
    return file_of([HEADER] + ends + step_lines(preset))


def check_pairs(distances, speeds):
    """Each speed-step table is loaded with distances whose threshold lies below its upper steps."""
    steps_of = {name: preset["steps"] for preset in speeds for name in preset.get("files", [])}
    for preset in distances:
        steps = steps_of.get(preset.get("with"))
        if steps is None:
            raise PresetError(f"{preset.get('files')}: there is no speed-step table {preset.get('with')}")
        above = sum(value > preset["cv52"] for value in steps)
        if not STEPS_ABOVE <= above < STEPS:
            raise PresetError(
                f"{preset['files']}: cv52 = {preset['cv52']} has {above} steps of {preset['with']} above it"
            )
    if alone := steps_of.keys() - {preset["with"] for preset in distances}:
        raise PresetError(f"no distances are loaded with {sorted(alone)}")


# Source, folder, and for each key with names of files what stands in them.
KINDS = (
    ("distances.toml", DISTANCES, {"files": distance_content}),
    ("speed_steps.toml", SPEED_STEPS, {"files": step_content, "based": based_content}),
)


def files_of(presets, contents):
    """Returns the content of each file by its name."""
    files = {}
    for preset in presets:
        for key, content in contents.items():
            for name in preset.get(key, []):
                if name in files:
                    raise PresetError(f"{name} stands there twice")
                files[name] = content(preset)
    return files


def write(path, content):
    """Touches only a file whose content changes."""
    if path.exists() and path.read_bytes() == content:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    if path.exists():
        path.chmod(stat.S_IWRITE | stat.S_IREAD)  # Windows replaces no file that is read-only
    path.write_bytes(content)
    path.chmod(stat.S_IREAD | stat.S_IRGRP | stat.S_IROTH)


def build(source, output):
    files = {}
    presets = []
    for name, folder, contents in KINDS:
        try:
            presets.append(tomllib.loads((source / name).read_text(encoding="utf-8"))["preset"])
            made = files_of(presets[-1], contents)
        except (PresetError, tomllib.TOMLDecodeError) as error:
            raise PresetError(f"{source / name}: {error}") from error
        files.update({output / SHIPPED / folder / file: content for file, content in made.items()})
    try:
        check_pairs(*presets)
    except PresetError as error:
        raise PresetError(f"{source / KINDS[0][0]}: {error}") from error
    for path, content in files.items():
        write(path, content)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    arguments = parser.parse_args()
    try:
        build(arguments.source, arguments.output)
    except PresetError as error:
        print(error, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
