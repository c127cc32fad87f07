"""What the tests of the tools share: where things are, and a folder of its own for each test."""

import shutil
import sys
import tempfile
import unittest
from pathlib import Path

TOOLS = Path(__file__).resolve().parents[1]
DATA = TOOLS / "tests" / "data"
sys.path.insert(0, str(TOOLS))


class FolderTest(unittest.TestCase):
    """`source` holds a copy of the sources that SOURCES names below DATA; `output` is not there yet."""

    SOURCES = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = Path(folder.name) / "source"
        self.output = Path(folder.name) / "output"
        if self.SOURCES:
            shutil.copytree(DATA / self.SOURCES, self.source)

    def change(self, name, old, new):
        text = (self.source / name).read_text(encoding="utf-8")
        self.assertIn(old, text)
        (self.source / name).write_text(text.replace(old, new, 1), encoding="utf-8")

    def check_refusals(self, table, told_by):
        """Each line of a table in DATA spoils one place of a source: its file, the text there, another one, line and words."""
        for case in (DATA / table).read_text(encoding="utf-8").splitlines()[1:]:
            name, old, new, line, message = case.replace("\\n", "\n").split("|")
            with self.subTest(message):
                before = (self.source / name).read_bytes()
                self.change(name, old, new)
                self.assertEqual(told_by(), f"{self.source / name}:{line}: {message}".replace("SOURCE", str(self.source)))
                self.assertFalse(self.output.exists())
                (self.source / name).write_bytes(before)
