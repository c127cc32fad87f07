"""What the project's own sources of the CVs come to in the installed files."""

import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from build_descriptions import build


class Knowledge(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.output = Path(folder.name)
        build(ROOT / "data" / "cv", cls.output)

    def row(self, file, number):
        line = (self.output / file).read_bytes().decode("cp1252").split("\r\n")[number]
        return line.split(";")

    def test_the_wire_and_the_editors_can_count_on_these_rows(self):
        cases = [
            (1, "1", "126"),
            (3, "1", "126"),
            (15, "0", "39"),
            (17, "0", "39"),
            (29, "0", "255"),
            (48, "0", "255"),
            (52, "96", "150"),
            (53, "0", "255"),
            (54, "0", "255"),
            (73, "5", "168"),
            (97, "3", "168"),
            (100, "0", "255"),
            (101, "0", "255"),
        ]
        for number, lower, upper in cases:
            with self.subTest(number):
                row = self.row("CV_Standart_kv07.txt", number)
                self.assertEqual((row[0], row[3], row[4]), (str(number), lower, upper))

    def test_the_switches_of_the_newer_models_are_named(self):
        switches = [19, 20, 21, 22, 23, 24, 25, 26, 27, 29, 57, 60, 61, 100, 112, 160, 161]
        for file in ("CV_Standart_kv07.txt", "CV_Standart_kv07fr.txt"):
            named = [number for number in range(1, 177) if self.row(file, number)[9]]
            self.assertEqual(named, switches)
            self.assertEqual({self.row(file, number)[9].count("$") for number in switches}, {7})

    def test_the_motor_range_of_each_generation(self):
        cases = [
            ("CV_Standart180.txt", "180"),
            ("CV_Standart180_v1.txt", "180"),
            ("CV_Standart172.txt", "168"),
            ("CV_Standart_kv08.txt", "168"),
            ("CV_Standart_kv07_F5.txt", "120"),
            ("CV_Standart_kv08_F5fr.txt", "120"),
        ]
        for file, top in cases:
            with self.subTest(file):
                self.assertEqual(self.row(file, 70)[4], top)
                self.assertEqual(self.row(file, 5)[4], top)

    def test_base_and_top_speed_are_those_of_the_table(self):
        for file in sorted(path.name for path in self.output.glob("CV_Standart1*.txt")):
            with self.subTest(file):
                self.assertEqual(self.row(file, 2)[1], self.row(file, 97)[1])
                self.assertEqual(self.row(file, 5)[1], self.row(file, 70)[1])

    def test_names_that_follow_no_rule(self):
        names = [
            "CV_exp_Receiver.txt_nl.txt",
            "CV_exp_Receiver_270222_nl",
            "CV_exp_Receiver_270222_nl.txt",
            "CV_exp_Receiver_240216_en_neu.txt",
            "CV_exp_kv08LCnl.txt",
            "CV_exp_kv07_F3_EN.txt",
            "CV_exp_v1_6.txt",
            "CV_Standart_an07_V1en.txt",
            "CV_Standart_kv08_F5fr.txt",
            "CV_Standart_kv07LCes.txt",
            "CV_Standart_kv07Tacho.txt",
            "CV_Standart_receiver_nl.txt",
            "CV_Standart172_Mai10_6.txt",
            "CV_Standart_Mai10_6.txt",
            "CV_Standart_November12_5.txt",
            "CV_KV04_Bus_V4_08.txt",
            "CV_KV04_FW_V1_09.txt",
            "CV_KV08_FW_V4.txt",
        ]
        self.assertEqual([name for name in names if not (self.output / name).is_file()], [])

    def test_both_letter_cases_of_a_receiver_file_are_one(self):
        for language in ("", "_en", "_es", "_fr", "_nl"):
            one = (self.output / f"CV_exp_receiver{language}.txt").read_bytes()
            self.assertEqual(one, (self.output / f"CV_exp_Receiver{language}.txt").read_bytes())

    def test_a_german_file_without_language_forms_has_companions(self):
        stems = ["CV_Standart172", "CV_Standart180", "CV_Standart180_v1", "CV_Standart_kv08Tacho", "CV_KV06_Bus_V2"]
        for stem in stems:
            for companion in ("", "_EN", "_ES", "_FR", "_NL"):
                self.assertTrue((self.output / f"{stem}{companion}.txt").is_file(), stem + companion)

    def test_every_description_has_its_rows_in_order_and_the_speed_steps_behind_them(self):
        # At most 551 lines of a file are read.
        for path in sorted(self.output.glob("CV_*")):
            if path.name.startswith("CV_exp"):
                continue
            with self.subTest(path.name):
                lines = path.read_bytes().split(b"\r\n")
                self.assertLess(len(lines), 552)
                rows = lines.index(b"Anfang FS") - 1 if "receiver" not in path.name else len(lines) - 2
                self.assertGreaterEqual(rows, 176)
                self.assertEqual([line.split(b";")[0] for line in lines[1 : rows + 1]],
                                 [b"%d" % number for number in range(1, rows + 1)])
                self.assertEqual({line.count(b";") for line in lines[1 : rows + 1]}, {16})

    def test_an_xt_module_and_a_missing_servo_are_recognised(self):
        self.assertIn(b"KV05-XT", (self.output / "CV_Standart_receiver.txt").read_bytes().split(b"\r\n")[0])
        self.assertEqual(self.row("CV_Standart172.txt", 153)[1], "")
        for number in (11, 12, 13, 14):
            self.assertEqual(self.row("CV_Standart172.txt", number)[2], "Nicht belegt")
            self.assertNotEqual(self.row("CV_Standart_kv07.txt", number)[2], "Nicht belegt")

    def test_a_cv_without_a_meaning_may_hold_any_byte(self):
        for path in sorted(self.output.glob("CV_*")):
            if path.name.startswith("CV_exp"):
                continue
            rows = [line.split(";") for line in path.read_bytes().decode("cp1252").split("\r\n") if ";" in line]
            unused = ("Nicht belegt", "Niet gebruikt", "Not used", "Sin función", "Non utilisée")
            with self.subTest(path.name):
                limits = {(row[3], row[4], row[5]) for row in rows if row[2] in unused}
                self.assertEqual(limits, {("0", "255", "")})

    def test_every_expert_line_tells_a_name_and_what_happens_inside(self):
        files = sorted(self.output.glob("CV_exp*"))
        self.assertTrue(files)
        for path in files:
            rows = [line.split(";") for line in path.read_bytes().decode("cp1252").split("\r\n")[1:-1]]
            with self.subTest(path.name):
                self.assertTrue(rows)
                for row in rows:
                    self.assertEqual(len(row), 17)
                    self.assertTrue(row[0].isdecimal() and row[2] and row[6], row)

    def test_an_expert_file_tells_of_no_cv_that_a_decoder_lacks(self):
        cases = [
            ("CV_exp.txt", ("CV_Standart180.txt", "CV_Standart180_v1.txt", "CV_KV04_Bus_V1_08.txt")),
            ("CV_exp_v1.txt", ("CV_Standart172.txt",)),
            ("CV_exp_v1_5.txt", ("CV_Standart172_v1_5.txt", "CV_KV05_FW_V1.txt")),
            ("CV_exp_v1_6.txt", ("CV_Standart172_v1_6.txt", "CV_KV06_FW_V1.txt")),
            ("CV_exp_Mai10_4.txt", ("CV_Standart172_Mai10_4.txt", "CV_Standart_Mai10_4.txt")),
            ("CV_exp_Mai10_5.txt", ("CV_Standart172_Mai10_5.txt", "CV_Standart_Mai10_5.txt")),
            ("CV_exp_Mai10_6.txt", ("CV_Standart172_Mai10_6.txt", "CV_Standart_Mai10_6.txt")),
            ("CV_exp_an07.txt", ("CV_Standart_an07.txt",)),
            ("CV_exp_an07_V1.txt", ("CV_Standart_an07_V1.txt",)),
            ("CV_exp_receiver.txt", ("CV_Standart_receiver.txt",)),
        ]
        for expert, descriptions in cases:
            lines = (self.output / expert).read_bytes().decode("cp1252").split("\r\n")[1:-1]
            for description in descriptions:
                with self.subTest(expert, description=description):
                    lacking = [line.split(";")[0] for line in lines
                               if self.row(description, int(line.split(";")[0]))[2] == "Nicht belegt"]
                    self.assertEqual(lacking, [])

    def test_the_ready_made_lists_switch_one_run_on(self):
        for model in ("KV04", "KV05", "KV06", "KV07", "KV08"):
            date = "_09" if model == "KV04" else ""
            runs = [[self.row(f"CV_{model}_{run}{date}.txt", number)[1] for number in (102, 108)]
                    for run in ("Bus_V1", "FW_V3")]
            self.assertEqual(runs, [["8", "0"], ["0", "180"]])


if __name__ == "__main__":
    unittest.main()
