"""Tests of the shared helpers: encoding, replacing files, and finding lines in TOML."""

import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import text_file  # noqa: E402


class EncodeLine(unittest.TestCase):
    def test_gives_one_byte_per_character(self):
        self.assertEqual(text_file.encode_line("Größe €  "), b"Gr\xf6\xdfe \x80  ")

    def test_keeps_a_tab(self):
        self.assertEqual(text_file.encode_line("a\tb"), b"a\tb")

    def test_refuses_what_an_installed_line_cannot_hold(self):
        cases = [
            ("5 → 6", "character '→' (U+2192) does not exist in Windows-1252"),
            ("a\x81", "character '\x81' (U+0081) does not exist in Windows-1252"),
            ("a\nb", "line break inside a text"),
            ("a\rb", "line break inside a text"),
            ("a\x00b", "control character U+0000 inside a text"),
            ("a\x7fb", "control character U+007F inside a text"),
        ]
        for text, message in cases:
            with self.subTest(text=text):
                with self.assertRaises(text_file.UnfitText) as caught:
                    text_file.encode_line(text)
                self.assertEqual(str(caught.exception), message)


class WriteIfChanged(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def test_writes_a_new_file_with_its_folder(self):
        path = self.folder / "deep" / "a.txt"
        self.assertTrue(text_file.write_if_changed(path, b"1\r\n"))
        self.assertEqual(path.read_bytes(), b"1\r\n")
        self.assertEqual(path.stat().st_mode & 0o777, 0o644)

    def test_leaves_an_equal_file_alone(self):
        path = self.folder / "a.txt"
        text_file.write_if_changed(path, b"1")
        before = path.stat()
        self.assertFalse(text_file.write_if_changed(path, b"1"))
        after = path.stat()
        self.assertEqual((before.st_ino, before.st_mtime_ns), (after.st_ino, after.st_mtime_ns))

    def test_replaces_a_changed_file_and_leaves_nothing_beside_it(self):
        path = self.folder / "a.txt"
        text_file.write_if_changed(path, b"1")
        self.assertTrue(text_file.write_if_changed(path, b"2"))
        self.assertEqual(path.read_bytes(), b"2")
        self.assertEqual([entry.name for entry in self.folder.iterdir()], ["a.txt"])

    def test_a_failed_write_keeps_the_old_file_alone(self):
        path = self.folder / "a.txt"
        text_file.write_if_changed(path, b"1")
        with self.assertRaises(TypeError):
            text_file.write_if_changed(path, "no bytes")
        self.assertEqual(path.read_bytes(), b"1")
        self.assertEqual([entry.name for entry in self.folder.iterdir()], ["a.txt"])


SAMPLE = '''# [[entry]]
[model]
name = "KV07"

[[cv]]
number = 29
help = """
[[cv]]
number = 1
"""
[cv.name]   # the short text
de = "Konfiguration"
[cv.bits.1]
de = "a"
[[cv]]
number = 30
name.de = "b"
[[cv.step]]
n = 1
[[cv.step]]
n = 2
[[cv]]
[[cv.step]]
n = 3
"quoted.key" = 1
'''


class Lines(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = Path(folder.name) / "sample.toml"

    def source(self, content):
        self.path.write_bytes(content if isinstance(content, bytes) else content.encode("utf-8"))
        return text_file.TomlSource(self.path)

    def test_finds_tables_and_keys(self):
        source = self.source(SAMPLE)
        cases = [
            (("model",), 2),
            (("model", "name"), 3),
            (("cv",), 5),
            (("cv", 0), 5),
            (("cv", 0, "number"), 6),
            (("cv", 0, "name"), 11),
            (("cv", 0, "name", "de"), 12),
            (("cv", 0, "bits"), 13),
            (("cv", 0, "bits", 1, "de"), 14),
            (("cv", 1), 15),
            (("cv", 1, "number"), 16),
            (("cv", 1, "name", "de"), 17),
            (("cv", 1, "step", 0, "n"), 19),
            (("cv", 1, "step", 1), 20),
            (("cv", 2, "step", 0, "n"), 24),
            (("cv", 2, "step", 0, "quoted.key"), 25),
        ]
        for where, line in cases:
            with self.subTest(where=where):
                self.assertEqual(source.line_of(*where), line)

    def test_a_missing_key_is_found_at_its_block(self):
        source = self.source(SAMPLE)
        self.assertEqual(source.line_of("cv", 1, "name", "fr"), 17)
        self.assertEqual(source.line_of("cv", 1, "help", "fr"), 15)
        self.assertEqual(source.line_of("nowhere"), 1)

    def test_a_windows_editor_changes_no_line(self):
        source = self.source(b"\xef\xbb\xbf" + SAMPLE.replace("\n", "\r\n").encode("utf-8"))
        self.assertEqual(source.line_of("cv", 1), 15)
        self.assertEqual(source.data["cv"][1]["number"], 30)

    def test_an_error_names_file_and_line(self):
        error = self.source(SAMPLE).error("unknown key", "cv", 1, "number")
        self.assertEqual(str(error), f"{self.path}:16: unknown key")

    def test_what_is_no_toml_is_refused_at_its_line(self):
        cases = [("a = 1\nb =\n", 2), ("a = 1\na = 2\n", 2), (b"a = 1\n\nb = '\xff'\n", 3), ('a = 1\nb = "c', 2)]
        for content, line in cases:
            with self.subTest(content=content):
                with self.assertRaises(text_file.SourceError) as caught:
                    self.source(content)
                self.assertEqual(caught.exception.line, line)


if __name__ == "__main__":
    unittest.main()
