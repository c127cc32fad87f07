"""Tests of the shared helpers: encoding, replacing files, and finding lines in TOML."""

import re
import unittest

from folder_test import DATA, FolderTest
import text_file


class TextFile(FolderTest):
    def test_one_byte_per_character_and_nothing_that_a_line_cannot_hold(self):
        self.assertEqual(text_file.encode_line("Größe\t€  "), b"Gr\xf6\xdfe\t\x80  ")
        for text, message in [("→", "'→' (U+2192) does not exist"), ("\x81", "does not exist"), ("\r", "line break"),
                              ("a\nb", "line break"), ("\x00", "U+0000"), ("\x7f", "U+007F")]:
            with self.assertRaisesRegex(text_file.UnfitText, re.escape(message)):
                text_file.encode_line(text)

    def test_a_file_is_replaced_as_a_whole_and_only_when_it_changes(self):
        path = self.output / "a.txt"
        self.assertTrue(text_file.write_if_changed(path, b"1\r\n"))
        self.assertEqual(path.stat().st_mode & 0o777, 0o644)
        before = path.stat()
        self.assertFalse(text_file.write_if_changed(path, b"1\r\n"))
        self.assertEqual((path.stat().st_ino, path.stat().st_mtime_ns), (before.st_ino, before.st_mtime_ns))
        with self.assertRaises(TypeError):
            text_file.write_if_changed(path, "no bytes")
        self.assertEqual(path.read_bytes(), b"1\r\n")
        self.assertTrue(text_file.write_if_changed(path, b"2"))
        self.assertEqual((path.read_bytes(), list(self.output.iterdir())), (b"2", [path]))

    def source_of(self, content):
        self.source.write_bytes(content)
        return text_file.TomlSource(self.source)

    def test_tables_and_keys_have_lines_also_from_a_windows_editor(self):
        cases = [(("model", "name"), 3), (("cv",), 5), (("cv", 0, "number"), 6), (("cv", 0, "name", "de"), 12),
                 (("cv", 1), 13), (("cv", 1, "name", "de"), 14), (("cv", 1, "name", "fr"), 14), (("cv", 1, "help"), 13),
                 (("cv", 1, "step", 0, "n"), 16), (("cv", 1, "step", 1), 17), (("cv", 2, "step", 0), 20),
                 (("cv", 2, "step", 0, "quoted.key"), 21), (("nowhere",), 1)]
        sample = (DATA / "source.toml").read_bytes()
        for content in (sample, b"\xef\xbb\xbf" + sample.replace(b"\n", b"\r\n")):
            source = self.source_of(content)
            self.assertEqual([source.line_of(*where) for where, _ in cases], [line for _, line in cases])
            self.assertEqual(str(source.error("wrong", "cv", 1)), f"{self.source}:13: wrong")

    def test_what_is_no_toml_is_refused_at_its_line(self):
        for content, line in [(b"a = 1\nb =\n", 2), (b"a = 1\na = 2\n", 2), (b"\n\nb = '\xff'\n", 3), (b'\nb = "c', 2)]:
            with self.assertRaises(text_file.SourceError) as caught:
                self.source_of(content)
            self.assertEqual(caught.exception.line, line)


if __name__ == "__main__":
    unittest.main()
