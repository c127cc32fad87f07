#!/usr/bin/env python3
"""Writes the installed language files from their TOML sources.

    build_language.py --source data/language --output DIR

Five languages, three tables each: messages ("Deutsch_var.txt"), menu captions ("Deutsch_mnu.txt") and control captions
("Deutsch_cap.txt"). The program finds an entry by its line, so line n holds entry n: four digits of the number, then
the text, Windows-1252, CR LF. A number without an entry keeps its line with the four digits alone.

The first fault in the sources stops the tool with "file:line: message" and exit code 1; then no file is written.
"""

import re
import sys
from pathlib import Path

from text_file import LINE_END, SourceError, TomlSource, UnfitText, encode_line, refuse_open_range, run_builder, write_if_changed

LANGUAGES = {"de": "Deutsch", "nl": "Dutch", "en": "English", "es": "Spanisch", "fr": "Franz"}

# Stands behind the value in a speed step's list line; positions in that line are counted on its width.
SPEED_STEP_UNIT = 301
SPEED_STEP_UNIT_LENGTH = 10


class Table:
    """One of the three tables: its name in the sources, its installed files' ending, how many entries it can hold."""

    def __init__(self, name, suffix, size, keys):
        self.name = name
        self.suffix = suffix
        self.size = size
        self.keys = {"number", "use", *LANGUAGES, *keys}


MESSAGES = Table("messages", "var", 1000, [])
MENU = Table("menu", "mnu", 500, ["item"])
CAPTIONS = Table("captions", "cap", 1000, ["control", "tip"])
TABLES = [MESSAGES, MENU, CAPTIONS]


class Ranges:
    """Which room owns which number of each table: its reserved range, and the numbers prescribed for it.

    A prescribed number that lies inside a range is taken out of that range.
    """

    def __init__(self, path):
        self._source = TomlSource(path)
        self._owners = {}
        self._prescribed = {}
        for name in self._source.data:
            if name not in [table.name for table in TABLES]:
                raise self._source.error(f"unknown table '{name}'", name)
        for table in TABLES:
            for key in self._section(table.name):
                if key not in ("range", "prescribed"):
                    raise self._source.error(f"unknown key '{key}'", table.name, key)
            self._prescribed[table] = self._read_prescribed(table)
            self._owners[table] = self._read_ranges(table) | self._prescribed[table]

    def _section(self, *where):
        """The TOML table at `where`; an absent one is empty."""
        section = self._source.data
        for name in where:
            section = section.get(name, {})
            if not isinstance(section, dict):
                raise self._source.error(f"'{name}' is a table, one line per room", *where)
        return section

    def _read_ranges(self, table):
        owners = {}
        for room, bounds in self._section(table.name, "range").items():
            where = (table.name, "range", room)
            several = isinstance(bounds, list) and not _is_number_list(bounds)
            for pair in bounds if several else [bounds]:
                if not _is_number_list(pair) or len(pair) != 2 or pair[0] > pair[1]:
                    raise self._source.error("a range is [first, last], or several of them are a list", *where)
                self._claim(table, owners, range(pair[0], pair[1] + 1), where)
        return owners

    def _read_prescribed(self, table):
        owners = {}
        for room, numbers in self._section(table.name, "prescribed").items():
            where = (table.name, "prescribed", room)
            if not _is_number_list(numbers):
                raise self._source.error("prescribed numbers are a list", *where)
            self._claim(table, owners, numbers, where)
        return owners

    def _claim(self, table, owners, numbers, where):
        for number in numbers:
            if not 1 <= number <= table.size:
                raise self._source.error(f"number {number} is beyond the table (1 to {table.size})", *where)
            if number in owners:
                raise self._source.error(f"number {number} belongs to '{owners[number]}' already", *where)
            owners[number] = where[-1]

    def knows_room(self, room):
        return any(room in owners.values() for owners in self._owners.values())

    def allows(self, table, room, number):
        """Whether `room` may use `number`. Room None stands for the menu's file, which holds all rooms' numbers."""
        owner = self._owners[table].get(number)
        return owner is not None and room in (owner, None)

    def is_prescribed(self, table, number):
        return number in self._prescribed[table]

    def check_prescribed_are_used(self, table, used):
        """Raises SourceError for a prescribed number without an entry: its line would be shown empty."""
        for number, room in self._prescribed[table].items():
            if number not in used:
                raise self._source.error(f"prescribed number {number} has no entry", table.name, "prescribed", room)


def _is_number(value):
    return isinstance(value, int) and not isinstance(value, bool)


def _is_number_list(value):
    return isinstance(value, list) and all(_is_number(member) for member in value)


def _is_text(value):
    return isinstance(value, str) and value.strip() != ""


class Entry:
    """One [[entry]] block: its checks, and its lines in the five languages."""

    def __init__(self, table, source, index):
        self._table = table
        self._source = source
        self._index = index
        self._block = source.data["entry"][index]
        self.number = self._block.get("number")
        self.place = f"{source.path}:{source.line_of('entry', index)}"

    def error(self, message, *key):
        """A SourceError at the line of `key`, or of the block where the key is not there."""
        return self._source.error(message, "entry", self._index, *key)

    def check(self, room, ranges):
        """Raises SourceError for a number that `room` may not use, and for keys that are unknown or missing."""
        if not _is_number(self.number):
            raise self.error("the entry has no number", "number")
        if not 1 <= self.number <= self._table.size:
            raise self.error(f"number {self.number} is beyond the table (1 to {self._table.size})", "number")
        if not ranges.allows(self._table, room, self.number):
            whose = f"of '{room}'" if room else "of the menu"
            raise self.error(f"number {self.number} is not among the numbers {whose}", "number")
        for key in self._block:
            if key not in self._table.keys:
                raise self.error(f"unknown key '{key}'", key)
        if not _is_text(self._block.get("use")):
            raise self.error("'use' is missing: say in English what the text is for", "use")
        # A prescribed number of the menu's table is no menu item but a text of another kind.
        needs_item = self._table is MENU and not ranges.is_prescribed(self._table, self.number)
        for key in ("item", "control"):
            if (key in self._block or (key == "item" and needs_item)) and not _is_text(self._block.get(key)):
                raise self.error(f"'{key}' is missing or empty: it names what shows the text", key)
        self._check_tips()
        self._check_placeholders()

    def _tips(self):
        return self._block.get("tip", {})

    def texts(self):
        """The texts by language, and the tool tips if there are any, each with the key where they stand."""
        yield self._block, ()
        if self._tips():
            yield self._tips(), ("tip",)

    def _check_tips(self):
        if not isinstance(self._tips(), dict):
            raise self.error("a tool tip is written per language: tip.de, tip.nl, ...", "tip")
        for code in self._tips():
            if code not in LANGUAGES:
                raise self.error(f"unknown key 'tip.{code}'", "tip", code)

    def _check_placeholders(self):
        """A value that the program puts in at {1}, {2} needs its place in every language."""
        for texts, where in self.texts():
            expected = re.findall(r"\{\d+\}", str(texts.get("de", "")))
            for code in texts.keys() & LANGUAGES.keys():
                if sorted(re.findall(r"\{\d+\}", str(texts[code]))) != sorted(expected):
                    raise self.error("other placeholders than the German text", *where, code)

    def lines(self):
        """The entry's line in each language, without number and line end: text, and behind a tab its tool tip."""
        return {code: self._line(code) for code in LANGUAGES}

    def _line(self, code):
        line = self._encoded(self._block, code)
        if self._tips():
            line += b"\t" + self._encoded(self._tips(), "tip", code)
        if self._table is MESSAGES and self.number == SPEED_STEP_UNIT and len(line) != SPEED_STEP_UNIT_LENGTH:
            raise self.error(f"{len(line)} characters; this text has exactly {SPEED_STEP_UNIT_LENGTH}", code)
        return line

    def _encoded(self, texts, *key):
        name = ".".join(key)
        text = texts.get(key[-1])
        if text is None:
            raise self.error(f"translation '{name}' is missing", *key)
        if not _is_text(text):
            raise self.error(f"translation '{name}' is empty", *key)
        if "\t" in text:
            raise self.error("tab inside a text; a tool tip has keys of its own: tip.de, tip.nl, ...", *key)
        try:
            refuse_open_range(key[-1], text)
            return encode_line(text)
        except UnfitText as error:
            raise self.error(str(error), *key) from error


def read_table(table, files, ranges):
    """Reads one table's sources: a dict from number to entry.

    `files` are pairs of a path and the room whose numbers it may use. Raises SourceError at the first fault.
    """
    entries = {}
    for path, room in files:
        source = TomlSource(path)
        for key in source.data:
            if key != "entry":
                raise source.error(f"unknown key '{key}'", key)
        blocks = source.data.get("entry", [])
        if not isinstance(blocks, list) or not all(isinstance(block, dict) for block in blocks):
            raise source.error("an entry begins with [[entry]]", "entry")
        for index in range(len(blocks)):
            entry = Entry(table, source, index)
            entry.check(room, ranges)
            if entry.number in entries:
                raise entry.error(f"number {entry.number} stands at {entries[entry.number].place} already", "number")
            entries[entry.number] = entry
    ranges.check_prescribed_are_used(table, entries)
    return entries


class Names:
    """What menu items and controls are called in each language, for texts that quote them."""

    def __init__(self, tables):
        self._entries = [entry for table in (MENU, CAPTIONS) for entry in tables[table].values()]
        self._by_name = {code: {} for code in LANGUAGES}
        for entry in self._entries:
            texts, _ = next(entry.texts())
            for code in LANGUAGES:
                self._by_name[code].setdefault(_bare(texts[code]), []).append(texts)

    def check(self, entry):
        """Raises SourceError where a name is quoted in one language and another one quotes something else."""
        for texts, where in entry.texts():
            quoted = {code: [_bare(part) for part in re.findall(r'"([^"]+)"', texts[code])] for code in LANGUAGES}
            for code, names in quoted.items():
                for name in names:
                    self._check_name(entry, code, name, quoted, where)

    def _check_name(self, entry, code, name, quoted, where):
        named = self._by_name[code].get(name, [])
        for other in LANGUAGES if named else []:
            wanted = [_bare(texts[other]) for texts in named]
            if not set(wanted) & set(quoted[other]):
                raise entry.error(f"'{code}' quotes \"{name}\", which is called \"{wanted[0]}\" here", *where, other)


def _bare(name):
    return name.removesuffix("...").strip()


def file_content(lines, code):
    """The bytes of one installed file: one line per number from 1 to the highest one."""
    content = b""
    for number in range(1, max(lines, default=0) + 1):
        text = lines[number][code] if number in lines else b""
        content += f"{number:04d}".encode("ascii") + text + LINE_END
    return content


def room_files(folder, ranges):
    """The TOML files of a folder, each with its room, which is its name; in a fixed order."""
    files = []
    for path in sorted(folder.glob("*.toml")):
        if not ranges.knows_room(path.stem):
            raise SourceError(path, 1, f"there is no room '{path.stem}' in ranges.toml")
        files.append((path, path.stem))
    return files


def build(source, output):
    """Writes the fifteen files; returns how many were new. Raises SourceError, before the first write, at a fault."""
    ranges = Ranges(source / "ranges.toml")
    files = {
        MESSAGES: room_files(source / "messages", ranges),
        MENU: [(source / "menu.toml", None)],
        CAPTIONS: room_files(source / "captions", ranges),
    }
    tables = {table: read_table(table, files[table], ranges) for table in TABLES}
    contents = {}
    for table in TABLES:
        lines = {number: entry.lines() for number, entry in tables[table].items()}
        for code, name in LANGUAGES.items():
            contents[f"{name}_{table.suffix}.txt"] = file_content(lines, code)
    names = Names(tables)
    for entry in [entry for entries in tables.values() for entry in entries.values()]:
        names.check(entry)
    return sum(write_if_changed(output / name, content) for name, content in contents.items())


def main(arguments=None):
    return run_builder("Write the installed language files from their TOML sources.",
                       "the folder with ranges.toml and menu.toml", build, arguments)


if __name__ == "__main__":
    sys.exit(main())
