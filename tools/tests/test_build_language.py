"""Tests of build_language.py: the bytes it writes, each of its refusals, and the texts that other parts rely on."""

import contextlib
import io
import re
import sys
import tempfile
import unittest
from pathlib import Path

TOOLS = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TOOLS))

import build_language  # noqa: E402

RANGES = """\
[messages.range]
shell = [4, 9]
link = [10, 19]
[messages.prescribed]
link = [2, 301]
[menu.range]
shell = [1, 500]
[menu.prescribed]
link = [3]
[captions.range]
shell = [1, 9]
"""

MESSAGES = """\
# Messages of the link.

[[entry]]
number = 2
use = "no reply"
de = "Keine Antwort für "
nl = "Geen antwoord "
en = "No reply "
es = "Sin respuesta "
fr = "Pas de réponse… "

[[entry]]
number = 301
use = "unit"
de = " von 255  "
nl = " van 255  "
en = " of 255   "
es = " de 255   "
fr = " sur 255  "

[[entry]]
number = 10
use = "group"
de = "Gruppe {1}, {2}"
nl = "Groep {1}, {2}"
en = "Group {2}, {1}"
es = "Grupo {1}, {2}"
fr = "Groupe {1}, {2}"
"""

MENU = """\
[[entry]]
number = 1
item = "mnu_datei"
use = "file menu"
de = "Datei"
nl = "Bestand"
en = "File"
es = "Archivo"
fr = "Fichier"

[[entry]]
number = 3
use = "status text"
de = "Zeit"
nl = "Tijd"
en = "Time"
es = "Tiempo"
fr = "Temps"
"""

CAPTIONS = """\
[[entry]]
number = 1
control = "Start"
use = "button"
de = "Lesen"
nl = "Lezen"
en = "Read"
es = "Leer"
fr = "Lire"
tip.de = "Liest alle €"
tip.nl = "Leest alle €"
tip.en = "Reads all €"
tip.es = "Lee todo €"
tip.fr = "Lit tout €"
"""


class Sources(unittest.TestCase):
    """A folder of small valid sources, to be spoilt by a test."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = Path(folder.name) / "source"
        self.output = Path(folder.name) / "program"
        self.put("ranges.toml", RANGES)
        self.put("messages/link.toml", MESSAGES)
        self.put("menu.toml", MENU)
        self.put("captions/shell.toml", CAPTIONS)

    def put(self, name, content):
        path = self.source / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(content, encoding="utf-8")

    def run_tool(self):
        """Exit code and what the tool said."""
        said = io.StringIO()
        with contextlib.redirect_stderr(said):
            code = build_language.main(["--source", str(self.source), "--output", str(self.output)])
        return code, said.getvalue()


class Output(Sources):
    def test_writes_fifteen_files(self):
        self.assertEqual(self.run_tool(), (0, ""))
        expected = {
            f"{language}_{table}.txt"
            for language in ("Deutsch", "Dutch", "English", "Spanisch", "Franz")
            for table in ("var", "mnu", "cap")
        }
        self.assertEqual({path.name for path in self.output.iterdir()}, expected)

    def test_lines_are_exact(self):
        self.run_tool()
        self.assertEqual((self.output / "Deutsch_mnu.txt").read_bytes(), b"0001Datei\r\n0002\r\n0003Zeit\r\n")
        self.assertEqual((self.output / "Franz_mnu.txt").read_bytes(), b"0001Fichier\r\n0002\r\n0003Temps\r\n")
        self.assertEqual((self.output / "Deutsch_cap.txt").read_bytes(), b"0001Lesen\tLiest alle \x80\r\n")
        self.assertEqual((self.output / "Dutch_cap.txt").read_bytes(), b"0001Lezen\tLeest alle \x80\r\n")
        lines = (self.output / "Franz_var.txt").read_bytes().split(b"\r\n")
        self.assertEqual(len(lines), 302)
        self.assertEqual(lines[:3], [b"0001", b"0002Pas de r\xe9ponse\x85 ", b"0003"])
        self.assertEqual(lines[9], b"0010Groupe {1}, {2}")
        self.assertEqual(lines[300:], [b"0301 sur 255  ", b""])
        lines = (self.output / "English_var.txt").read_bytes().split(b"\r\n")
        self.assertEqual(lines[300:], [b"0301 of 255   ", b""])

    def test_a_second_run_touches_nothing(self):
        self.run_tool()
        before = {path.name: path.stat().st_mtime_ns for path in self.output.iterdir()}
        self.run_tool()
        self.assertEqual({path.name: path.stat().st_mtime_ns for path in self.output.iterdir()}, before)

    def test_a_change_in_one_language_writes_one_file(self):
        self.run_tool()
        before = {path.name: path.stat().st_ino for path in self.output.iterdir()}
        self.put("menu.toml", MENU.replace('"Archivo"', '"Fichero"'))
        self.run_tool()
        after = {path.name: path.stat().st_ino for path in self.output.iterdir()}
        self.assertEqual({name for name in after if after[name] != before[name]}, {"Spanisch_mnu.txt"})

    def test_a_fault_leaves_the_old_files(self):
        self.run_tool()
        self.put("messages/link.toml", MESSAGES.replace('"No reply "', '"No answer "'))
        self.put("captions/shell.toml", CAPTIONS.replace('fr = "Lire"\n', ""))
        self.assertEqual(self.run_tool()[0], 1)
        self.assertIn(b"0002No reply \r\n", (self.output / "English_var.txt").read_bytes())


# name, file, text in it, its replacement, line of the complaint, complaint
REFUSALS = [
    ("missing translation", "menu.toml", 'nl = "Bestand"\n', "", 1, "translation 'nl' is missing"),
    ("empty translation", "menu.toml", '"File"', '""', 7, "translation 'en' is empty"),
    ("blank translation", "menu.toml", '"File"', '"  "', 7, "translation 'en' is empty"),
    ("no text", "menu.toml", '"File"', "7", 7, "translation 'en' is empty"),
    ("marked as empty", "menu.toml", 'en = "File"', 'en = "File"\nempty = true', 8, "unknown key 'empty'"),
    (
        "character",
        "messages/link.toml",
        "Sin respuesta ",
        "Sin → ",
        9,
        "character '→' (U+2192) does not exist in Windows-1252",
    ),
    ("line break", "messages/link.toml", '"No reply "', '"No\\nreply"', 8, "line break inside a text"),
    (
        "tab",
        "messages/link.toml",
        '"No reply "',
        '"No\\treply"',
        8,
        "tab inside a text; a tool tip has keys of its own: tip.de, tip.nl, ...",
    ),
    (
        "number twice",
        "menu.toml",
        "number = 3\n",
        'number = 1\nitem = "mnu_open"\n',
        12,
        "number 1 stands at {source}/menu.toml:1 already",
    ),
    ("number missing", "menu.toml", "number = 3\n", "", 11, "the entry has no number"),
    ("number as text", "menu.toml", "number = 3", 'number = "3"', 12, "the entry has no number"),
    ("beyond the messages", "messages/link.toml", "= 10", "= 1001", 22, "number 1001 is beyond the table (1 to 1000)"),
    ("beyond the menu", "menu.toml", "= 3", "= 501", 12, "number 501 is beyond the table (1 to 500)"),
    ("beyond the captions", "captions/shell.toml", "= 1", "= 1001", 2, "number 1001 is beyond the table (1 to 1000)"),
    ("zero", "menu.toml", "= 3", "= 0", 12, "number 0 is beyond the table (1 to 500)"),
    ("another room's", "messages/link.toml", "= 10", "= 4", 22, "number 4 is not among the numbers of 'link'"),
    ("nobody's", "captions/shell.toml", "= 1", "= 10", 2, "number 10 is not among the numbers of 'shell'"),
    ("unit too short", "messages/link.toml", '" of 255   "', '" of 255"', 17, "7 characters; this text has exactly 10"),
    ("unknown key", "menu.toml", "item = ", "itm = ", 3, "unknown key 'itm'"),
    ("tip on a message", "messages/link.toml", 'use = "unit"', 'use = "unit"\ntip.de = "a"', 15, "unknown key 'tip'"),
    ("unknown language", "captions/shell.toml", "tip.fr", "tip.it", 14, "unknown key 'tip.it'"),
    ("unknown table", "menu.toml", "[[entry]]\nnumber = 3", "[[entri]]\nnumber = 3", 11, "unknown key 'entri'"),
    ("tip missing", "captions/shell.toml", 'tip.es = "Lee todo €"\n', "", 10, "translation 'tip.es' is missing"),
    ("tip empty", "captions/shell.toml", '"Lee todo €"', '""', 13, "translation 'tip.es' is empty"),
    (
        "no use",
        "menu.toml",
        'use = "file menu"\n',
        "",
        1,
        "'use' is missing: say in English what the text is for",
    ),
    (
        "no item",
        "menu.toml",
        'item = "mnu_datei"\n',
        "",
        1,
        "'item' is missing or empty: it names what shows the text",
    ),
    (
        "no control",
        "captions/shell.toml",
        '"Start"',
        '""',
        3,
        "'control' is missing or empty: it names what shows the text",
    ),
    ("placeholder", "messages/link.toml", "Grupo {1}, {2}", "Grupo {1}", 27, "other placeholders than the German text"),
    ("no TOML", "menu.toml", '"Datei"', '"Datei', 5, None),
    ("ranges overlap", "ranges.toml", "[10, 19]", "[9, 19]", 3, "number 9 belongs to 'shell' already"),
    ("range backwards", "ranges.toml", "[10, 19]", "[19, 10]", 3, "a range is [first, last]"),
    ("range beyond", "ranges.toml", "[1, 500]", "[1, 501]", 7, "number 501 is beyond the table (1 to 500)"),
    ("prescribed twice", "ranges.toml", "[2, 301]", "[2, 301, 2]", 5, "number 2 belongs to 'link' already"),
    ("prescribed unused", "ranges.toml", "[2, 301]", "[2, 35, 301]", 5, "prescribed number 35 has no entry"),
    ("prescribed no list", "ranges.toml", "[2, 301]", "2", 5, "prescribed numbers are a list"),
    ("unknown range table", "ranges.toml", "[captions.range]", "[caption.range]", 10, "unknown table 'caption'"),
    (
        "ranges no table",
        "ranges.toml",
        "[captions.range]\nshell =",
        "[captions]\nrange =",
        11,
        "'range' is a table, one line per room",
    ),
    ("unknown range key", "ranges.toml", "[captions.range]", "[captions.ranges]", 10, "unknown key 'ranges'"),
]


class Refusals(Sources):
    def test_each_fault_names_file_and_line_and_writes_nothing(self):
        originals = {
            "ranges.toml": RANGES,
            "messages/link.toml": MESSAGES,
            "menu.toml": MENU,
            "captions/shell.toml": CAPTIONS,
        }
        for name, file, old, new, line, message in REFUSALS:
            with self.subTest(name):
                self.assertEqual(originals[file].count(old), 1, "the case must spoil one place")
                self.put(file, originals[file].replace(old, new))
                code, said = self.run_tool()
                self.put(file, originals[file])
                self.assertEqual(code, 1)
                if message is None:
                    self.assertTrue(said.startswith(f"{self.source / file}:{line}: "), said)
                else:
                    message = message.replace("{source}", str(self.source))
                    self.assertEqual(said, f"{self.source / file}:{line}: {message}\n")
                self.assertFalse(self.output.exists())

    def test_a_file_of_no_room(self):
        self.put("captions/shel.toml", CAPTIONS)
        code, said = self.run_tool()
        self.assertEqual(code, 1)
        self.assertEqual(said, f"{self.source}/captions/shel.toml:1: there is no room 'shel' in ranges.toml\n")

    def test_a_missing_source(self):
        (self.source / "menu.toml").unlink()
        code, said = self.run_tool()
        self.assertEqual(code, 1)
        self.assertIn("menu.toml", said)


LANGUAGES = ("Deutsch", "Dutch", "English", "Spanisch", "Franz")


class OurTexts(unittest.TestCase):
    """The project's own sources: complete, and the texts that files and devices rely on."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        output = Path(folder.name)
        build_language.build(TOOLS.parent / "data" / "language", output)
        cls.files = {path.name: path.read_bytes().decode("cp1252").split("\r\n") for path in output.iterdir()}

    def text(self, file, number):
        line = self.files[file][number - 1]
        self.assertEqual(line[:4], f"{number:04d}")
        return line[4:]

    def in_all(self, table, number):
        return [self.text(f"{name}_{table}.txt", number) for name in LANGUAGES]

    def test_texts_that_are_the_same_in_every_language(self):
        cases = [
            ("var", 426, "UPDATE"),
            ("var", 581, "https://www.karvo.example/download/KarvoUpd.zip"),
            ("mnu", 133, "V01_23"),
            ("cap", 21, "Firmware"),
            ("cap", 22, "Sublevel"),
        ]
        for table, number, text in cases:
            with self.subTest(number=number):
                self.assertEqual(self.in_all(table, number), [text] * 5)

    def test_the_unit_of_a_speed_step_has_ten_characters(self):
        self.assertEqual([len(text) for text in self.in_all("var", 301)], [10] * 5)

    def test_texts_around_a_value_leave_room_for_it(self):
        for name in LANGUAGES:
            with self.subTest(name):
                for number in (258, 262):
                    self.assertTrue(self.text(f"{name}_var.txt", number).endswith(" "))
                self.assertIn(self.text(f"{name}_var.txt", 750)[0], " .")
                self.assertEqual(self.text(f"{name}_var.txt", 263)[0], ".")

    def test_german_texts_are_kept_to_the_letter(self):
        cases = [
            ("mnu", 1, "Datei"),
            ("mnu", 4, "KV07 Standart Liste"),
            ("mnu", 8, "KV04 Liste ab Januar 2009"),
            ("mnu", 12, "KV07 Bus Automatik"),
            ("mnu", 23, "KV04 Feuerwehr Automatik bis Dezember 2008"),
            ("mnu", 25, "CV Liste speichern unter..."),
            ("mnu", 128, "Hilfe"),
            ("cap", 1, "Karvo Decoder Daten einlesen"),
            ("cap", 3, "DCC Adresse 1:"),
            ("cap", 884, "Alle CVs einlesen"),
            ("var", 690, "In der Datei ist ein ATmega168"),
            ("var", 691, "Fahrzeug hat einen ATmega328"),
            ("var", 692, "CVs können nicht verglichen werden."),
            ("var", 695, "Diese Funktion ist für die CV11 - CV14 nicht verfügbar !"),
            ("var", 756, "Erste Adresse ist < 128 oder > 9999 !"),
            ("var", 757, "Zweite Adresse ist < 128 oder > 9999 !"),
            ("var", 758, "CV174 muss 0 sein, wenn CV175 einen Wert enthält !"),
            ("var", 759, "CV175 muss 0 sein, wenn CV174 einen Wert enthält !"),
            ("var", 760, "CV175 wird auf 0 gesetzt."),
        ]
        for table, number, text in cases:
            with self.subTest(table=table, number=number):
                self.assertEqual(self.text(f"Deutsch_{table}.txt", number).split("\t")[0], text)

    def test_every_number_that_the_program_names_has_a_text(self):
        header = (TOOLS.parent / "src" / "language" / "text_numbers.h").read_text(encoding="utf-8")
        for enumeration, table in (("Message", "var"), ("Caption", "cap")):
            body = re.search(rf"enum class {enumeration} {{(.*?)}};", header, re.DOTALL).group(1)
            named = re.findall(r"^\s*(\w+) = (\d+),", body, re.MULTILINE)
            self.assertTrue(named)
            for name, number in named:
                with self.subTest(f"{enumeration}::{name}"):
                    self.assertNotIn("", self.in_all(table, int(number)))

    def test_buttons_carry_their_caption_before_the_tip(self):
        self.assertEqual(self.text("Deutsch_cap.txt", 5).split("\t")[0], "Diese CV in den Decoder speichern")
        self.assertEqual(self.text("Deutsch_cap.txt", 6).split("\t")[0], "Alle geänderten CVs in den Decoder speichern")


if __name__ == "__main__":
    unittest.main()
