"""What build_presets.py writes, and what it refuses."""

import unittest

from folder_test import FolderTest
import build_presets

PRESET = '[[preset]]\nfiles = ["A.bcr", "B.bcr"]\nwith = "S.fcr"\ncv48 = 20\ncv52 = 103\ncv53 = 20\ncv54 = 40\n'
STEPS = ", ".join(str(3 + 4 * step) for step in range(28))
SPEED = f'[[preset]]\nfiles = ["S.fcr"]\nbased = ["B.fcr"]\nsteps = [{STEPS}]\n'


class Presets(FolderTest):
    def build(self, source, speed=SPEED):
        self.source.mkdir(exist_ok=True)
        (self.source / "distances.toml").write_text(source, encoding="utf-8")
        (self.source / "speed_steps.toml").write_text(speed, encoding="utf-8")
        build_presets.build(self.source, self.output)

    def lines(self, name):
        return (self.output / "original" / name).read_bytes().split(b"\r\n")

    def test_writes_each_name(self):
        self.build(PRESET)
        lines = self.lines("ABS_listen/B.bcr")
        self.assertEqual(lines[0], b"CV-Nummer;CV-Wert;CV-Text;")
        self.assertTrue(lines[1].startswith(b"48;20;Bremswert ") and lines[1].endswith(b";"))
        self.assertTrue(lines[4].startswith(b"54;40;Zeit ") and lines[4].endswith(b"liegt"))
        self.assertEqual(lines[5:], [b"Ende CV", b""])
        self.assertEqual(self.lines("ABS_listen/A.bcr"), lines)
        steps = self.lines("FS_listen/S.fcr")
        self.assertEqual(steps[:2], [b"CV-Nummer;CV-Wert;CV-Text", b"97;3;Fahrstufe 1"])
        self.assertEqual(steps[28:], [b"70;111;Fahrstufe 28", b""])
        self.assertEqual(self.lines("FS_listen/B.fcr")[1:],
                         [b"2;3;Grundgeschwindigkeit", b"5;111;H\xf6chstgeschwindigkeit", *steps[1:]])

    def test_renews_its_own_files_and_leaves_the_users(self):
        own = self.output / "ABS_listen" / "A.bcr"
        own.parent.mkdir(parents=True)
        own.write_bytes(b"own")
        for value in (20, 21):
            self.build(PRESET.replace("cv48 = 20", f"cv48 = {value}"))
            self.assertIn(b"48;%d;" % value, self.lines("ABS_listen/A.bcr")[1])
            self.assertFalse((self.output / "original/ABS_listen/A.bcr").stat().st_mode & 0o222)
        self.assertEqual(own.read_bytes(), b"own")

    # 103, 107 and 111 are the upper steps: in other pairs a time never acts.
    def test_refuses_what_is_no_preset(self):
        distances = [PRESET.replace("103", "95"), PRESET.replace("cv54 = 40\n", ""), PRESET + PRESET,
                     PRESET.replace("S.fcr", "X.fcr"), PRESET.replace('with = "S.fcr"\n', ""),
                     *(PRESET.replace("cv52 = 103", f"cv52 = {upper}") for upper in (107, 111, 150))]
        steps = [SPEED.replace("[3, ", "[2, "), SPEED.replace("[3, ", "["), SPEED.replace("[3, ", "[9, "),
                 SPEED.replace("111]", "121]"), SPEED + SPEED]
        for file, cases in [("distances.toml", [(wrong, SPEED) for wrong in distances]),
                            ("speed_steps.toml", [(PRESET, wrong) for wrong in steps]),
                            ("", [(PRESET, SPEED + SPEED.replace("S.fcr", "T.fcr").replace("B.fcr", "C.fcr"))])]:
            for case in cases:
                with self.assertRaisesRegex(build_presets.PresetError, file):
                    self.build(*case)
                self.assertFalse(self.output.exists())
        self.build(PRESET.replace("cv52 = 103", "cv52 = 106"))


if __name__ == "__main__":
    unittest.main()
