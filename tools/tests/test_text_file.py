"""Tests of the shared helpers: encoding, replacing files, and finding lines in TOML."""

import re
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import text_file  # noqa: E402

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
[[cv]]
name.de = "b"
[[cv.step]]
n = 1
[[cv.step]]
n = 2
[[cv]]
[[cv.step]]
"quoted.key" = 1
'''


class TextFile(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = Path(folder.name) / "deep" / "a.txt"

    def test_one_byte_per_character_and_nothing_that_a_line_cannot_hold(self):
        self.assertEqual(text_file.encode_line("Größe\t€  "), b"Gr\xf6\xdfe\t\x80  ")
        cases = [("→", "'→' (U+2192) does not exist"), ("\x81", "does not exist"), ("\r", "line break"),
                 ("a\nb", "line break"), ("\x00", "U+0000"), ("\x7f", "U+007F")]
        for text, message in cases:
            with self.assertRaisesRegex(text_file.UnfitText, re.escape(message)):
                text_file.encode_line(text)

    def test_a_file_is_replaced_as_a_whole_and_only_when_it_changes(self):
        self.assertTrue(text_file.write_if_changed(self.path, b"1\r\n"))
        self.assertEqual(self.path.stat().st_mode & 0o777, 0o644)
        before = self.path.stat()
        self.assertFalse(text_file.write_if_changed(self.path, b"1\r\n"))
        self.assertEqual((self.path.stat().st_ino, self.path.stat().st_mtime_ns), (before.st_ino, before.st_mtime_ns))
        with self.assertRaises(TypeError):
            text_file.write_if_changed(self.path, "no bytes")
        self.assertEqual(self.path.read_bytes(), b"1\r\n")
        self.assertTrue(text_file.write_if_changed(self.path, b"2"))
        self.assertEqual((self.path.read_bytes(), list(self.path.parent.iterdir())), (b"2", [self.path]))

    def source(self, content):
        self.path.parent.mkdir(exist_ok=True)
        self.path.write_bytes(content)
        return text_file.TomlSource(self.path)

    def test_tables_and_keys_have_lines_also_from_a_windows_editor(self):
        cases = [(("model", "name"), 3), (("cv",), 5), (("cv", 0, "number"), 6), (("cv", 0, "name", "de"), 12),
                 (("cv", 1), 13), (("cv", 1, "name", "de"), 14), (("cv", 1, "name", "fr"), 14), (("cv", 1, "help"), 13),
                 (("cv", 1, "step", 0, "n"), 16), (("cv", 1, "step", 1), 17), (("cv", 2, "step", 0), 20),
                 (("cv", 2, "step", 0, "quoted.key"), 21), (("nowhere",), 1)]
        for content in (SAMPLE.encode(), b"\xef\xbb\xbf" + SAMPLE.replace("\n", "\r\n").encode()):
            source = self.source(content)
            self.assertEqual([source.line_of(*where) for where, _ in cases], [line for _, line in cases])
            self.assertEqual(str(source.error("wrong", "cv", 1)), f"{self.path}:13: wrong")

    def test_what_is_no_toml_is_refused_at_its_line(self):
        for content, line in [(b"a = 1\nb =\n", 2), (b"a = 1\na = 2\n", 2), (b"\n\nb = '\xff'\n", 3), (b'\nb = "c', 2)]:
            with self.assertRaises(text_file.SourceError) as caught:
                self.source(content)
            self.assertEqual(caught.exception.line, line)


if __name__ == "__main__":
    unittest.main()
