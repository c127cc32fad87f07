#!/usr/bin/env python3
"""Writes the presets that come with the program into its folders ABS_listen and FS_listen.

    build_presets.py --source data/presets --output DIR

A file that is there already may be the user's own: it is left as it is. A fault in the source ends the run with
"file: message" and exit code 1 before anything is written.
"""

import argparse
import sys
import tomllib
from pathlib import Path

DISTANCES = "ABS_listen"
SPEED_STEPS = "FS_listen"
HEADER = "CV-Nummer;CV-Wert;CV-Text"
END = "Ende CV"
STEPS = 28
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


# Source, folder, and for each key with names of files what stands in them.
KINDS = (
    ("distances.toml", DISTANCES, {"files": distance_content}),
    ("speed_steps.toml", SPEED_STEPS, {"files": step_content, "based": based_content}),
)


def files_of(source, contents):
    """Returns the content of each file by its name."""
    files = {}
    for preset in tomllib.loads(source)["preset"]:
        for key, content in contents.items():
            for name in preset.get(key, []):
                if name in files:
                    raise PresetError(f"{name} stands there twice")
                files[name] = content(preset)
    return files


def build(source, output):
    files = {}
    for name, folder, contents in KINDS:
        try:
            made = files_of((source / name).read_text(encoding="utf-8"), contents)
        except (PresetError, tomllib.TOMLDecodeError) as error:
            raise PresetError(f"{source / name}: {error}") from error
        files.update({output / folder / file: content for file, content in made.items()})
    for path, content in files.items():
        path.parent.mkdir(parents=True, exist_ok=True)
        if not path.exists():
            path.write_bytes(content)


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
