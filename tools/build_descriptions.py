#!/usr/bin/env python3
"""Writes the description, expert, bus and fire-engine files of the program folder from data/cv.

    build_descriptions.py --source data/cv --output DIR

`<model>.toml` holds what a model's CVs mean, `presets.toml` the values of the ready-made bus and fire-engine lists,
`files.toml` which files are installed. A fault in a source ends the run with "file:line: message" and exit code 1
before anything is written.
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from cv_kinds import group_field, unit_field, words_field
from cv_models import NUMBERS, WEIGHTS, Models, Row, check_row
from cv_text import LANGUAGES, check_text, refuse_unknown
from text_file import SourceError, TomlSource, run_builder, write_if_changed

LINE_END = "\r\n"
FIELDS = 16
DESCRIBED = ("name", "help", "values", "advice")
CV_SHOWN_AS_MISSING = 153
SPEED_MARK = "Anfang FS"
END_MARK = "Ende CV"  # of the rows where no speed steps follow
DESCRIPTION = "description"
EXPERT = "expert"
EXPERT_HEADER = " Experte"


# The lines of a file


def bits_field(row, language):
    bits = row.values["bits"]
    if not bits:
        return ""
    return "$".join(bits[weight][language] if weight in bits else "" for weight in WEIGHTS)


def marks_field(row):
    marks = row.values.get("mark", [])
    return "mark=" + ",".join(marks) if marks else ""


def joined(fields):
    return ";".join(fields) + ";" * (FIELDS - len(fields) + 1)


def description_line(number, row, language):
    name, *texts = [row.values[key][language] if key in row.values else "" for key in DESCRIBED]
    default, *limits = [str(row.values[key]) for key in NUMBERS]
    kind = [group_field(row), words_field(row, language), unit_field(row), marks_field(row)]
    return joined([str(number), default, name, *limits, *texts, bits_field(row, language), *kind])


def unused_row(model, number):
    """A CV without a meaning: nobody knows its factory value, and the program shows CV153 as "---" without a value."""
    default = "" if number == CV_SHOWN_AS_MISSING else 0
    return Row(model.source, ("model",), {"default": default, "lower": 0, "upper": 255, "factory": ""}, model.unused)


def description_lines(model, language):
    yield model.settings["header"]
    for number in range(1, model.rows_count + 1):
        yield description_line(number, model.rows.get(number) or unused_row(model, number), language)
    if "speed_steps" in model.settings:
        yield SPEED_MARK
        for step, value in enumerate(model.settings["speed_steps"], start=1):
            yield f"FS{step} = {value}"
        yield ""
    else:
        yield END_MARK


def expert_lines(model, language):
    """Only the CVs that experts know more of; the reader finds them by their first field."""
    yield model.settings["header"] + EXPERT_HEADER
    for number, row in sorted(model.rows.items()):
        if "expert" in row.values:
            texts = [row.values[key][language] for key in ("name", "expert")]
            yield joined([str(number), "", texts[0], "", "", "", texts[1]])


def file_content(kind, model, language):
    """The bytes of a file. Its texts were checked when they were read, so none can fail to be encoded here."""
    lines = expert_lines if kind == EXPERT else description_lines
    return "".join(line + LINE_END for line in lines(model, language)).encode("cp1252")


# Which files there are


class Catalogue:
    """The models by what files.toml asks for: a kind ("description", "expert" or a set of presets) and a model."""

    def __init__(self, folder):
        self.models = Models(folder)
        self.presets = TomlSource(folder / "presets.toml")
        self.prepared = {}

    def model(self, source, kind, name):
        """The model as `kind` shows it; raises SourceError at the table of `source` that asks for what is not there."""
        if (kind, name) not in self.prepared:
            if not self.models.knows(name):
                raise source.error(f"no model '{name}'", kind, name)
            model = self.models.complete(name)
            if model.settings["abstract"]:
                raise source.error(f"'{name}' is only a base", kind, name)
            if kind == EXPERT and not any("expert" in row.values for row in model.rows.values()):
                raise source.error(f"'{name}' has nothing for experts", kind, name)
            if kind not in (DESCRIPTION, EXPERT):
                model = self.with_presets(model, kind)
            self.prepared[kind, name] = model
        return self.prepared[kind, name]

    def with_presets(self, model, name):
        """The model with the values of a ready-made list; the factory values stay the model's own."""
        preset = self.presets.data[name]
        refuse_unknown(self.presets, preset, ("header", "values"), name)
        for key in ("header", "values"):
            if key not in preset:
                raise self.presets.error(f"'{key}' is missing", name)
        check_text(self.presets, preset["header"], name, "header")
        result = model.copy()
        result.settings["header"] += " " + preset["header"]
        for number, value in preset["values"].items():
            self.preset_row(result, number, value, name, "values", number)
        return result

    def preset_row(self, model, number, value, *where):
        row = model.rows.get(int(number)) if number.isdecimal() else None
        if row is None:
            raise self.presets.error(f"CV{number} has no meaning on '{model.settings['name']}'", *where)
        if type(value) is not int:
            raise self.presets.error(f"the value of CV{number} is no whole number", *where)
        model.rows[int(number)] = Row(self.presets, where, {"default": value, "factory": row.values["factory"]}, row)
        check_row(model.rows[int(number)])


def read_file_list(source, catalogue):
    """Yields name, kind, model and language of each installed file, listed as [kind.model] name = language."""
    seen = set()
    for kind, tables in source.data.items():
        if kind not in (DESCRIPTION, EXPERT) and kind not in catalogue.presets.data:
            raise source.error(f"unknown kind of file '{kind}'", kind, *list(tables)[:1])
        for model, names in tables.items():
            catalogue.model(source, kind, model)
            for name, language in names.items():
                if language not in LANGUAGES:
                    raise source.error(f"unknown language '{language}'", kind, model, name)
                if name in seen:
                    raise source.error(f"'{name}' stands here for the second time", kind, model, name)
                seen.add(name)
                yield name, kind, model, language


def build(folder, output):
    """Writes the files that changed; nothing at all when a source has a fault."""
    catalogue = Catalogue(folder)
    source = TomlSource(folder / "files.toml")
    contents = {}
    files = list(read_file_list(source, catalogue))
    for _, kind, model, language in files:
        if (kind, model, language) not in contents:
            contents[kind, model, language] = file_content(kind, catalogue.model(source, kind, model), language)
    for name, kind, model, language in files:
        write_if_changed(output / name, contents[kind, model, language])


def main():
    return run_builder("Writes the program folder's description files.",
                       "folder of the models, presets.toml and files.toml", build)


if __name__ == "__main__":
    sys.exit(main())
