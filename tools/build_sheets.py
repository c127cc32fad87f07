#!/usr/bin/env python3
"""Writes the function sheets of the program folder, FKT_*.txt, from data/functions.

    build_sheets.py --source data/functions --output DIR

A sheet names CVs alone: their names, limits and words come from data/cv beside the source, against which each CV and
each value is held. The values of menu presets come from data/presets/functions.toml. A fault ends the run with
"file:line: message" and exit code 1 before anything is written. docs/files.md describes what is written.
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from cv_models import Models
from cv_text import LANGUAGES, check_languages, refuse_unknown
from text_file import SourceError, TomlSource, run_builder, write_if_changed

LINE_END = "\r\n"
# How a model is called in a sheet, and the beginnings of the headers of its descriptions.
HEADERS = {
    "KV04": "Standard KV04", "KV05": "Standard KV05", "KV06": "Standard KV06", "KV07": "Standard KV07",
    "KV08": "Standard KV08", "AN07": "Standard AN07", "KV-R": "Standard KV05-XT", "KV-XT": "Standard KV05-XT",
}  # fmt: skip
BUILDS = ("LC", "Tacho")
# How many numbers a field names: the CV, and for some of them more.
FIELDS = {"cv": 1, "shown": 1, "bits": 2, "switch": 2, "number": 2, "address": 1, "measured": 0, "set": 2}
ADDRESSES = ("first", "second")

SHEET_KEYS = {"item", "window", "picture", "models", "title", "note", "section", "variant", "ready", "sentence"}


def words_lines(words):
    return [f"text;{language};{words[language]};" for language in LANGUAGES] if words else []


def models_lines(part):
    return ["models;" + ";".join(part["models"]) + ";"] if "models" in part else []


def text_of(values):
    return " ".join(f"CV{cv}={value}" for cv, value in values.items())


class Descriptions:
    """The rows of the models, by the word that a sheet has for them."""

    def __init__(self, folder):
        self.models = Models(folder)
        self.presets = TomlSource(folder / "presets.toml")
        self.known = []
        for table in TomlSource(folder / "files.toml").data["description"]:
            model = self.models.complete(table)
            self.known.append((model.settings["header"], model.rows))

    def of(self, word):
        """The rows of each generation of a model."""
        name, _, build = word.partition(" ")
        return [rows for header, rows in self.known if self.is_of(header, name) and (not build or header.endswith(" " + build))]

    @staticmethod
    def is_of(header, name):
        return header.startswith(HEADERS[name]) and ("XT" in header) == name.startswith("KV-")


class Sheet:
    """One source, checked against the descriptions of its models."""

    def __init__(self, source, descriptions):
        self.source = source
        self.data = source.data
        self.descriptions = descriptions
        refuse_unknown(source, self.data, SHEET_KEYS)
        for key in ("item", "models", "title"):
            if key not in self.data:
                raise source.error(f"'{key}' is missing")
        self.check_models(self.data, ())
        check_languages(source, self.data["title"], "title")

    def error(self, message, *where):
        return self.source.error(message, *where)

    def check_models(self, part, where):
        for word in part.get("models", []):
            name, _, build = word.partition(" ")
            if name not in HEADERS or build not in ("", *BUILDS) or not self.descriptions.of(word):
                raise self.error(f"unknown model '{word}'", *where, "models")

    def rows(self, *parts):
        """The rows of all generations that the innermost part with models is for."""
        words = next(part["models"] for part in reversed((self.data, *parts)) if "models" in part)
        return [rows for word in words for rows in self.descriptions.of(word)]

    def check_cv(self, cv, rows, where):
        if not any(cv in one for one in rows):
            raise self.error(f"none of the models has CV{cv}", *where)

    def check_bits(self, cv, weights, rows, where):
        for weight in weights:
            if not any(str(weight) in one[cv].values["bits"] for one in rows if cv in one):
                raise self.error(f"CV{cv} has no bit {weight} on any of the models", *where)

    def check_values(self, values, rows, where):
        """Each value is allowed by each model that has the CV."""
        for key, value in values.items():
            cv = int(key)
            self.check_cv(cv, rows, where)
            for row in (one[cv] for one in rows if cv in one):
                if type(value) is not int or not row.values["lower"] <= value <= row.values["upper"]:
                    raise self.error(f"CV{cv} can not be {value}", *where)

    def check_condition(self, text, rows, where):
        try:
            values = dict(word.removeprefix("CV").split("=") for word in text.split())
            values = {cv: int(value) for cv, value in values.items()}
        except ValueError as error:
            raise self.error(f"'{text}' are no values", *where) from error
        self.check_values(values, rows, where)

    def field_lines(self, field, rows, where):
        field = {"field": field} if isinstance(field, str) else field
        refuse_unknown(self.source, field, {"field", "name", "models", "only"}, *where)
        kind, *rest = field["field"].split(";")
        if kind not in FIELDS or len(rest) < FIELDS[kind]:
            raise self.error(f"no field '{field['field']}'", *where)
        self.check_models(field, where)
        rows = rows if "models" not in field else self.rows(field)
        self.check_field(kind, rest, rows, where)
        lines = [";".join([kind, *rest]) + ";"]
        if "name" in field:
            check_languages(self.source, field["name"], *where, "name")
        for condition in field.get("only", []):
            self.check_condition(condition, rows, where)
        only = ["only;" + ";".join(field["only"]) + ";"] if "only" in field else []
        return lines + words_lines(field.get("name")) + models_lines(field) + only

    def check_field(self, kind, rest, rows, where):
        if kind == "address":
            if rest[0] not in ADDRESSES:
                raise self.error(f"no address '{rest[0]}'", *where)
        elif kind in ("bits", "switch"):
            self.check_cv(int(rest[0]), rows, where)
            self.check_bits(int(rest[0]), rest[1:], rows, where)
        elif kind == "set":
            self.check_cv(int(rest[0]), rows, where)
            if rest[1] != "factory":
                self.check_values({rest[0]: int(rest[1])}, rows, where)
        else:
            for cv in rest:
                self.check_cv(int(cv), rows, where)

    def note_lines(self, part, *where):
        lines = []
        for index, note in enumerate(part.get("note", [])):
            words = {key: text for key, text in note.items() if key != "models"}
            check_languages(self.source, words, *where, "note", index)
            self.check_models(note, (*where, "note", index))
            lines += ["note;", *words_lines(words), *models_lines(note)]
        return lines

    def output_words(self, number, where):
        """What an output is called: "Output 3, brake light"."""
        for light in self.descriptions.models.outputs.lights:
            if light.get("output") == number:
                return self.descriptions.models.outputs.numbered(light)
        raise self.error(f"no output {number}", *where)

    def section_lines(self):
        lines = []
        for index, section in enumerate(self.data.get("section", [])):
            where = ("section", index)
            refuse_unknown(self.source, section, {"title", "output", "models", "note", "fields"}, *where)
            self.check_models(section, where)
            words = section.get("title")
            if words:
                check_languages(self.source, words, *where, "title")
            elif "output" in section:
                words = self.output_words(section["output"], where)
            lines += ["section;", *words_lines(words), *models_lines(section), *self.note_lines(section, *where)]
            for field in section.get("fields", []):
                lines += self.field_lines(field, self.rows(section), (*where, "fields"))
        return lines

    def value_set_lines(self, word, part, item, *where):
        """A set of values, its own or those of a ready-made list of data/cv."""
        refuse_unknown(self.source, part, {"name", "models", "values", "preset"}, *where)
        self.check_models(part, where)
        check_languages(self.source, part.get("name", {}), *where, "name")
        values = dict(part.get("values", {}))
        if "preset" in part:
            if part["preset"] not in self.descriptions.presets.data:
                raise self.error(f"no preset '{part['preset']}'", *where, "preset")
            values |= self.descriptions.presets.data[part["preset"]]["values"]
        self.check_values(values, self.rows(part), where)
        lines = [";".join([word, *([item] if item else []), text_of(values)]) + ";"]
        return lines + words_lines(part["name"]) + models_lines(part)

    def sentence_lines(self):
        lines = []
        for index, sentence in enumerate(self.data.get("sentence", [])):
            where = ("sentence", index)
            words = {key: text for key, text in sentence.items() if key in LANGUAGES}
            refuse_unknown(self.source, sentence, {"cvs", "only", "unless", "models", *LANGUAGES}, *where)
            check_languages(self.source, words, *where)
            self.check_models(sentence, where)
            rows = self.rows(sentence)
            for cv in sentence.get("cvs", []):
                self.check_cv(cv, rows, where)
            for condition in (*sentence.get("only", []), *([sentence["unless"]] if "unless" in sentence else [])):
                self.check_condition(condition, rows, where)
            lines += ["sentence;" + ";".join(map(str, sentence["cvs"])) + ";", *words_lines(words), *models_lines(sentence)]
            lines += ["only;" + ";".join(sentence["only"]) + ";"] if "only" in sentence else []
            lines += [f"unless;{sentence['unless']};"] if "unless" in sentence else []
        return lines

    def lines(self, presets):
        data = self.data
        lines = [f"sheet;{data['item']};", *words_lines(data["title"]), *models_lines(data)]
        lines += [f"{key};{data[key]};" for key in ("window", "picture") if key in data]
        lines += self.note_lines(data) + self.section_lines()
        for key in ("variant", "ready"):
            for index, part in enumerate(data.get(key, [])):
                lines += self.value_set_lines(key, part, "", key, index)
        for preset in presets:
            lines += Sheet.value_set_lines(preset.on(self), "ready", preset.values, preset.item, *preset.where)
        return lines + self.sentence_lines()


class Preset:
    """Values that a menu item fills into a sheet: a [[preset]] of data/presets/functions.toml."""

    def __init__(self, source, index):
        block = source.data["preset"][index]
        self.source = source
        self.where = ("preset", index)
        refuse_unknown(source, block, {"item", "sheet", "values", "name"}, *self.where)
        for key in ("item", "sheet", "values", "name"):
            if key not in block:
                raise source.error(f"'{key}' is missing", *self.where)
        self.item = block["item"]
        self.sheet = block["sheet"]
        self.values = {key: block[key] for key in ("values", "name")}

    def on(self, sheet):
        """The sheet, with faults told at the preset."""
        other = Sheet.__new__(Sheet)
        other.source, other.data, other.descriptions = self.source, sheet.data, sheet.descriptions
        return other


def contents(folder, descriptions):
    """The bytes of each file by its name."""
    source = TomlSource(folder.parent / "presets" / "functions.toml")
    presets = [Preset(source, index) for index in range(len(source.data.get("preset", [])))]
    sheets = [Sheet(TomlSource(path), descriptions) for path in sorted(folder.glob("*.toml"))]
    items = [sheet.data["item"] for sheet in sheets]
    for preset in presets:
        if preset.sheet not in items:
            raise source.error(f"no sheet '{preset.sheet}'", *preset.where, "sheet")
    files = {}
    for sheet in sheets:
        name = f"FKT_{sheet.data['item']}.txt"
        if name in files or sheet.source.path.stem != sheet.data["item"]:
            raise sheet.error(f"the item must be '{sheet.source.path.stem}', as the file", "item")
        lines = sheet.lines([preset for preset in presets if preset.sheet == sheet.data["item"]])
        files[name] = "".join(line + LINE_END for line in lines).encode("cp1252")
    return files


def build(source, output):
    """Writes all sheets. Raises SourceError, before the first write, at a fault."""
    for name, content in contents(source, Descriptions(source.parent / "cv")).items():
        write_if_changed(output / name, content)


def main():
    return run_builder("Writes the program folder's function sheets.",
                       "folder of the sheets, beside those of cv and presets", build)


if __name__ == "__main__":
    sys.exit(main())
