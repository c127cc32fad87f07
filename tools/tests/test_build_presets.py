import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent))
import build_presets

PRESET = '[[preset]]\nfiles = ["A.bcr", "B.bcr"]\nwith = "S.fcr"\ncv48 = 20\ncv52 = 103\ncv53 = 20\ncv54 = 40\n'
STEPS = ", ".join(str(3 + 4 * step) for step in range(28))
SPEED = f'[[preset]]\nfiles = ["S.fcr"]\nbased = ["B.fcr"]\nsteps = [{STEPS}]\n'


class Presets(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = Path(self.folder.name)

    def build(self, source, speed=SPEED):
        (self.path / "distances.toml").write_text(source, encoding="utf-8")
        (self.path / "speed_steps.toml").write_text(speed, encoding="utf-8")
        build_presets.build(self.path, self.path / "out")
        return self.path / "out" / "original" / "ABS_listen"

    def test_writes_each_name(self):
        folder = self.build(PRESET)
        lines = (folder / "B.bcr").read_bytes().split(b"\r\n")
        self.assertEqual(lines[0], b"CV-Nummer;CV-Wert;CV-Text;")
        self.assertTrue(lines[1].startswith(b"48;20;Bremswert ") and lines[1].endswith(b";"))
        self.assertTrue(lines[4].startswith(b"54;40;Zeit ") and lines[4].endswith(b"liegt"))
        self.assertEqual(lines[5:], [b"Ende CV", b""])
        self.assertEqual((folder / "A.bcr").read_bytes(), (folder / "B.bcr").read_bytes())

    def test_renews_its_own_files_and_leaves_the_users(self):
        own = self.path / "out" / "ABS_listen" / "A.bcr"
        own.parent.mkdir(parents=True)
        own.write_bytes(b"own")
        shipped = self.build(PRESET) / "A.bcr"
        self.assertFalse(shipped.stat().st_mode & 0o222)
        self.build(PRESET.replace("cv48 = 20", "cv48 = 21"))
        self.assertIn(b"48;21;", shipped.read_bytes())
        self.assertFalse(shipped.stat().st_mode & 0o222)
        self.assertEqual(own.read_bytes(), b"own")

    def test_refuses_pairs_in_which_a_time_never_acts(self):
        # 103, 107 and 111 are the upper steps.
        self.build(PRESET.replace("cv52 = 103", "cv52 = 106"))
        for wrong in ("cv52 = 107", "cv52 = 111", "cv52 = 150"):
            with self.assertRaises(build_presets.PresetError) as caught:
                self.build(PRESET.replace("cv52 = 103", wrong))
            self.assertIn("distances.toml", str(caught.exception))
        for wrong in (PRESET.replace("S.fcr", "X.fcr"), PRESET.replace('with = "S.fcr"\n', "")):
            with self.assertRaises(build_presets.PresetError):
                self.build(wrong)
        with self.assertRaises(build_presets.PresetError):
            self.build(PRESET, SPEED + SPEED.replace("S.fcr", "T.fcr").replace("B.fcr", "C.fcr"))

    def test_refuses_what_is_no_preset(self):
        for wrong in (PRESET.replace("103", "95"), PRESET.replace("cv54 = 40\n", ""), PRESET + PRESET):
            with self.assertRaises(build_presets.PresetError):
                self.build(wrong)
            self.assertFalse((self.path / "out").exists())

    def test_writes_the_steps_with_and_without_their_ends(self):
        self.build(PRESET)
        steps = (self.path / "out" / "original" / "FS_listen" / "S.fcr").read_bytes().split(b"\r\n")
        self.assertEqual(steps[:2], [b"CV-Nummer;CV-Wert;CV-Text", b"97;3;Fahrstufe 1"])
        self.assertEqual(steps[28:], [b"70;111;Fahrstufe 28", b""])
        based = (self.path / "out" / "original" / "FS_listen" / "B.fcr").read_bytes().split(b"\r\n")
        self.assertEqual(based[1:3], [b"2;3;Grundgeschwindigkeit", b"5;111;H\xf6chstgeschwindigkeit"])
        self.assertEqual(based[3:], steps[1:])

    def test_refuses_what_is_no_table_of_steps(self):
        for wrong in (SPEED.replace("[3, ", "[2, "), SPEED.replace("[3, ", "["), SPEED.replace("[3, ", "[9, "),
                      SPEED.replace("111]", "121]"), SPEED + SPEED):
            with self.assertRaises(build_presets.PresetError) as caught:
                self.build(PRESET, wrong)
            self.assertIn("speed_steps.toml", str(caught.exception))
            self.assertFalse((self.path / "out").exists())


if __name__ == "__main__":
    unittest.main()
