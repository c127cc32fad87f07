"""What the tools that turn data/ into the program folder's files share.

Reading: `TomlSource` parses a TOML file and knows the line of every table and key in it, so that a complaint about
an entry can name the place. Writing: `encode_line` gives one line in Windows-1252, `write_if_changed` replaces a file
as a whole and only when its content is new. `run_builder` is the command line of a tool.
"""

import argparse
import os
import re
import sys
import tempfile
import tomllib
from pathlib import Path

LINE_END = b"\r\n"


class SourceError(Exception):
    """A fault in a source file; its text is "file:line: message"."""

    def __init__(self, path, line, message):
        super().__init__(f"{path}:{line}: {message}")
        self.path = path
        self.line = line
        self.message = message


class UnfitText(ValueError):
    """A text that cannot stand in one line of an installed file; its text says why."""


def encode_line(text):
    """Returns `text` in Windows-1252 without a line end.

    Raises UnfitText for a character that Windows-1252 lacks and for a line break inside the text. Control characters
    other than the tab are refused as well: they are never meant, and no editor shows them.
    """
    for character in text:
        if character in "\r\n":
            raise UnfitText("line break inside a text")
        if (character < " " and character != "\t") or character == "\x7f":
            raise UnfitText(f"control character U+{ord(character):04X} inside a text")
    try:
        return text.encode("cp1252")
    except UnicodeEncodeError as error:
        character = text[error.start]
        raise UnfitText(f"character '{character}' (U+{ord(character):04X}) does not exist in Windows-1252") from error


# "tot" leaves open whether the number behind it belongs to the range. "{2}" stands for a number.
_OPEN_RANGE = re.compile(r"[0-9}] tot (?=[A-Z]{0,2}[0-9]|[{][0-9])")


def refuse_open_range(language, text):
    """Raises UnfitText for a Dutch range that does not say whether it includes its end."""
    if language == "nl" and _OPEN_RANGE.search(text):
        raise UnfitText("'tot' between numbers does not tell whether the last one belongs to them: write 't/m'")


def write_if_changed(path, content):
    """Makes the file `path` hold the bytes `content`; returns whether it had to be written.

    An equal file is left alone, its time of change too, so that a build does not start over. A reader sees the old
    file or the new one, never a part: the content goes to a file beside it that then takes its name.
    """
    path = Path(path)
    try:
        if path.read_bytes() == content:
            return False
    except FileNotFoundError:
        pass
    path.parent.mkdir(parents=True, exist_ok=True)
    handle, temporary = tempfile.mkstemp(prefix=path.name + ".", dir=path.parent)
    try:
        with os.fdopen(handle, "wb") as file:
            file.write(content)
        # mkstemp gives 0600; installed files are for everybody.
        os.chmod(temporary, 0o644)
        os.replace(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise
    return True


def run_builder(description, source_help, build, arguments=None):
    """Calls `build` with the folders named on the command line. Returns 1, with the place told, at a fault."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--source", type=Path, required=True, help=source_help)
    parser.add_argument("--output", type=Path, required=True, help="the folder that gets the files")
    options = parser.parse_args(arguments)
    try:
        build(options.source, options.output)
    except (SourceError, OSError) as error:
        print(error, file=sys.stderr)
        return 1
    return 0


class TomlSource:
    """A parsed TOML file: `path`, `data` (the tables), and the lines where they stand."""

    def __init__(self, path):
        """Reads `path` (UTF-8, a leading mark is allowed). Raises SourceError where it is no TOML."""
        self.path = Path(path)
        raw = self.path.read_bytes()
        try:
            text = raw.decode("utf-8-sig")
        except UnicodeDecodeError as error:
            raise SourceError(self.path, raw[: error.start].count(b"\n") + 1, "not UTF-8") from error
        text = text.replace("\r\n", "\n")
        try:
            self.data = tomllib.loads(text)
        except tomllib.TOMLDecodeError as error:
            raise SourceError(self.path, _line_in_message(error, text), str(error)) from error
        self._lines = _scan_lines(text)

    def line_of(self, *where):
        """The line, counted from 1, of the table or key at `where`, e.g. `line_of("entry", 3, "tip", "de")`.

        Array members are counted from 0. A key that is not there gives the line of the nearest table around it,
        so a missing key is reported at its block.
        """
        for length in range(len(where), 0, -1):
            line = self._lines.get(tuple(str(part) for part in where[:length]))
            if line is not None:
                return line
        return 1

    def error(self, message, *where):
        """A SourceError for the table or key at `where` (see line_of)."""
        return SourceError(self.path, self.line_of(*where), message)


def _line_in_message(error, text):
    found = re.search(r"at line (\d+)", str(error))
    return int(found.group(1)) if found else text.count("\n") + 1


_HEADER = re.compile(r"\s*(\[\[?)\s*([^\[\]]+?)\s*\]\]?\s*(#.*)?$")
_KEY = re.compile(r"""\s*((?:[A-Za-z0-9_-]+|"[^"]*"|'[^']*')(?:\s*\.\s*(?:[A-Za-z0-9_-]+|"[^"]*"|'[^']*'))*)\s*=""")
_TRIPLE_QUOTES = re.compile(r"\"{3}|'{3}")
_KEY_PART = re.compile(r"""[A-Za-z0-9_-]+|"[^"]*"|'[^']*'""")


def _scan_lines(text):
    """Maps the path of every table header and key, its parts as texts, to its line. tomllib gives no lines itself."""
    lines = {}
    counts = {}
    table = ()
    open_quotes = None
    for number, line in enumerate(text.split("\n"), start=1):
        if open_quotes is None:
            header = _HEADER.match(line)
            key = None if header else _KEY.match(line)
            if header:
                path = table = _table_path(header, counts)
            else:
                path = table + tuple(_key_parts(key.group(1))) if key else ()
            # A table that is only named in a longer path begins where that path stands.
            for length in range(1, len(path) + 1):
                lines.setdefault(path[:length], number)
        open_quotes = _quotes_after(line, open_quotes)
    return lines


def _key_parts(text):
    return [part.strip("\"'") for part in _KEY_PART.findall(text)]


def _table_path(header, counts):
    """The path of a table header, each array on its way followed by the index of its newest member."""
    parts = _key_parts(header.group(2))
    path = ()
    for depth, part in enumerate(parts):
        path += (part,)
        if depth == len(parts) - 1 and header.group(1) == "[[":
            # A new member of an outer array starts its inner arrays anew: they are counted by the full path.
            counts[path] = counts.get(path, -1) + 1
        if path in counts:
            path += (str(counts[path]),)
    return path


def _quotes_after(line, open_quotes):
    """Which triple quotes are still open after `line`, given those open before it; None when none are."""
    if open_quotes is None and line.lstrip().startswith("#"):
        return None
    position = 0
    while True:
        if open_quotes is None:
            found = _TRIPLE_QUOTES.search(line, position)
            if not found:
                return None
            open_quotes = found.group()
            position = found.end()
        else:
            end = line.find(open_quotes, position)
            if end < 0:
                return open_quotes
            position = end + 3
            open_quotes = None
