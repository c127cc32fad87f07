import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
import build_presets

PRESET = '[[preset]]\nfiles = ["A.bcr", "B.bcr"]\ncv48 = 20\ncv52 = 110\ncv53 = 20\ncv54 = 40\n'


class Presets(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = Path(self.folder.name)

    def build(self, source):
        (self.path / "distances.toml").write_text(source, encoding="utf-8")
        build_presets.build(self.path, self.path / "out")
        return self.path / "out" / "ABS_listen"

    def test_writes_each_name(self):
        folder = self.build(PRESET)
        lines = (folder / "B.bcr").read_bytes().split(b"\r\n")
        self.assertEqual(lines[0], b"CV-Nummer;CV-Wert;CV-Text;")
        self.assertTrue(lines[1].startswith(b"48;20;Bremswert ") and lines[1].endswith(b";"))
        self.assertTrue(lines[4].startswith(b"54;40;Zeit ") and lines[4].endswith(b"liegt"))
        self.assertEqual(lines[5:], [b"Ende CV", b""])
        self.assertEqual((folder / "A.bcr").read_bytes(), (folder / "B.bcr").read_bytes())

    def test_leaves_what_is_there(self):
        own = self.path / "out" / "ABS_listen" / "A.bcr"
        own.parent.mkdir(parents=True)
        own.write_bytes(b"own")
        self.build(PRESET)
        self.assertEqual(own.read_bytes(), b"own")

    def test_refuses_what_is_no_preset(self):
        for wrong in (PRESET.replace("110", "95"), PRESET.replace("cv54 = 40\n", ""), PRESET + PRESET):
            with self.assertRaises(build_presets.PresetError):
                self.build(wrong)
            self.assertFalse((self.path / "out").exists())


if __name__ == "__main__":
    unittest.main()
