"""Tests of build_language.py: the bytes it writes, each of its refusals, and the texts that other parts rely on."""

import contextlib
import io
import re
import tempfile
import unittest
from pathlib import Path

from folder_test import DATA, TOOLS, FolderTest
import build_language

LANGUAGES = ("Deutsch", "Dutch", "English", "Spanisch", "Franz")


class Sources(FolderTest):
    SOURCES = "language"

    def run_tool(self):
        said = io.StringIO()
        with contextlib.redirect_stderr(said):
            code = build_language.main(["--source", str(self.source), "--output", str(self.output)])
        return code, said.getvalue().removesuffix("\n")

    def told(self):
        code, said = self.run_tool()
        self.assertEqual(code, 1)
        return said

    def test_lines_are_exact(self):
        self.assertEqual(self.run_tool(), (0, ""))
        self.assertEqual({path.name for path in self.output.iterdir()},
                         {f"{language}_{table}.txt" for language in LANGUAGES for table in ("var", "mnu", "cap")})
        self.assertEqual((self.output / "Franz_mnu.txt").read_bytes(), b"0001Fichier\r\n0002\r\n0003Temps\r\n")
        self.assertEqual((self.output / "Dutch_cap.txt").read_bytes(), b'0001Lezen\tnl \x80\r\n0002In "Bestand"\r\n')
        lines = (self.output / "Franz_var.txt").read_bytes().split(b"\r\n")
        self.assertEqual(lines[:3] + lines[300:], [b"0001", b"0002Pour\x85 ", b"0003", b"0301 sur 255  ", b""])

    def test_each_fault_names_file_and_line_and_writes_nothing(self):
        self.check_refusals("refused_language.txt", self.told)
        shell = self.source / "captions/shell.toml"
        shell.rename(shell.with_name("shel.toml"))
        self.assertEqual(self.told(), f"{self.source}/captions/shel.toml:1: there is no room 'shel' in ranges.toml")
        (self.source / "captions/shel.toml").rename(shell)
        (self.source / "menu.toml").unlink()
        self.assertIn("menu.toml", self.told())


class OurTexts(unittest.TestCase):
    """The project's own sources: complete, and the texts that files and devices rely on."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        build_language.build(TOOLS.parent / "data" / "language", Path(folder.name))
        cls.files = {path.name: path.read_bytes().decode("cp1252").split("\r\n") for path in Path(folder.name).iterdir()}

    def in_all(self, table, number):
        return [self.files[f"{name}_{table}.txt"][number - 1][4:] for name in LANGUAGES]

    def test_texts_that_devices_files_and_tests_rely_on(self):
        for line in (DATA / "relied_on.txt").read_text(encoding="utf-8").splitlines():
            table, number, text = line.split(" ", 2)
            self.assertEqual(self.in_all(table, int(number))[0], text)
        for table, number in [("var", 426), ("var", 581), ("mnu", 133), ("cap", 21), ("cap", 22)]:
            self.assertEqual(len(set(self.in_all(table, number))), 1, "one in all languages")
        self.assertEqual([len(text) for text in self.in_all("var", 301)], [10] * 5)
        self.assertEqual({text[-1] for number in (258, 262) for text in self.in_all("var", number)}, {" "})
        self.assertLessEqual({text[0] for number in (263, 750) for text in self.in_all("var", number)}, set(" ."))

    def test_every_number_that_the_program_names_has_a_text(self):
        for name, table in (("message", "var"), ("caption", "cap")):
            header = TOOLS.parent / "src" / "language" / f"{name}_numbers.h"
            body = header.read_text(encoding="utf-8")
            named = re.findall(r"^\s*(\w+) = (\d+),", body, re.MULTILINE)
            self.assertTrue(named)
            self.assertEqual([name for name, number in named if "" in self.in_all(table, int(number))], [])


if __name__ == "__main__":
    unittest.main()
