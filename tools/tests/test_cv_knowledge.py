"""What the project's own sources of the CVs come to in the installed files."""

import tempfile
import tomllib
import unittest
from pathlib import Path

from folder_test import DATA, TOOLS
from build_descriptions import build

UNUSED = ("Nicht belegt", "Niet gebruikt", "Not used", "Sin función", "Non utilisée")

class Knowledge(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.output = Path(folder.name)
        build(TOOLS.parent / "data" / "cv", cls.output)

    def lines(self, file):
        return (self.output / file).read_bytes().decode("cp1252").split("\r\n")

    def row(self, file, number):
        return self.lines(file)[number].split(";")

    def field(self, file, field, *numbers):
        return [self.row(file, number)[field - 1] for number in numbers]

    def test_the_wire_and_the_editors_can_count_on_these_rows(self):
        limits = [(1, 1, 126), (3, 1, 126), (15, 0, 39), (17, 0, 39), (29, 0, 255), (48, 0, 255), (52, 96, 150),
                  (54, 0, 255), (73, 5, 168), (97, 3, 168), (101, 0, 255), (163, 0, 140)]
        for number, lower, upper in limits:
            self.assertEqual(self.row("CV_Standart_kv07.txt", number)[3:5], [str(lower), str(upper)], number)
        for file, top in [("180", 180), ("180_v1", 180), ("172", 168), ("_kv08", 168), ("_kv08_F5fr", 120)]:
            self.assertEqual(self.field(f"CV_Standart{file}.txt", 5, 5, 70), [str(top)] * 2, file)
        for file in sorted(self.output.glob("CV_Standart1*.txt")):
            self.assertEqual(self.field(file.name, 2, 2, 5), self.field(file.name, 2, 97, 70), file)
        self.assertEqual(self.field("CV_Standart172.txt", 3, 11, 12, 13, 14), ["Nicht belegt"] * 4)
        self.assertEqual(self.field("CV_Standart172.txt", 2, 153), [""])

    def test_a_picture_names_the_lights_as_the_table_of_outputs_does(self):
        data = TOOLS.parent / "data"
        lights = tomllib.loads((data / "cv/outputs.toml").read_text("utf-8"))["light"]
        captions = tomllib.loads((data / "language/captions/editors.toml").read_text("utf-8"))["entry"]
        named = sorted((entry for entry in captions if 455 <= entry["number"] <= 470), key=lambda entry: entry["number"])
        for light, caption in zip(lights, named, strict=True):
            self.assertLessEqual(light.items() - {("output", light.get("output"))}, caption.items())

    def test_what_decides_over_a_write_is_marked(self):
        read_only = dict.fromkeys([7, 8], "mark=read-only")
        later = {13: "270222", 14: "270222", 43: "240216", 44: "240216", 45: "240216", 80: "240216_neu", 250: "270222"}
        receiver = {72: "mark=read-only", 73: "mark=read-only", **{cv: f"mark=from={date}" for cv, date in later.items()}}
        for file, expected in [("CV_Standart_receiver_es.txt", read_only | receiver), ("CV_Standart180_EN.txt", read_only)]:
            rows = [line.split(";") for line in self.lines(file) if line.count(";") == 16]
            self.assertEqual({int(row[0]): row[13] for row in rows if row[13]}, expected)

    def test_a_switch_is_offered_where_the_model_has_what_it_switches(self):
        switches = [19, 20, 21, 22, 23, 24, 25, 26, 27, 29, 57, 60, 61, 100, 112, 160, 161]
        named = [number for number in range(1, 177) if self.row("CV_Standart_kv07fr.txt", number)[9]]
        self.assertEqual(named, switches)
        for file, bits in [("_kv07", 127), ("_kv07_F3", 95), ("172", 93), ("172_v1_5", 95), ("_November12_5", 127)]:
            texts = self.row(f"CV_Standart{file}.txt", 57)[9].split("$")
            self.assertEqual(sum(1 << bit for bit, text in enumerate(texts) if text), bits, file)
        advice = self.field("CV_Standart_kv07en.txt", 9, 172, 112, 103) + self.field("CV_Standart_kv07_V1en.txt", 9, 172)
        self.assertEqual(["CV112" in text for text in advice], [True, False, False, False])
        self.assertTrue(advice[2].endswith(" Output not known: Door light."), advice[2])

    def test_files_are_there_with_their_rows_in_order(self):
        names = (DATA / "cv_names.txt").read_text().split()  # that follow no rule, and one of each pattern that does
        self.assertEqual([name for name in names if not (self.output / name).is_file()], [])
        for path in sorted(set(self.output.glob("CV_*")) - set(self.output.glob("CV_exp*"))):
            lines = self.lines(path.name)
            last = lines.index("Ende CV" if "receiver" in path.name else "Anfang FS")
            rows = [line.split(";") for line in lines[1:last]]
            self.assertLess(len(lines), 552, path)
            self.assertGreaterEqual(len(rows), 176, path)
            self.assertEqual([(row[0], len(row)) for row in rows], [(str(n), 17) for n in range(1, last)], path)
            self.assertEqual([row for row in rows if bool(row[5]) != row[10].startswith("group=")], [], path)
            self.assertEqual({tuple(row[3:6]) for row in rows if row[2] in UNUSED}, {("0", "255", "")}, path)

    def test_expert_lines_tell_what_happens_inside_of_cvs_that_the_decoder_has(self):
        pairs = [("", "180"), ("", "180_v1"), ("_v1", "172"), ("_v1_5", "172_v1_5"), ("_v1_6", "172_v1_6"),
                 ("_Mai10_4", "172_Mai10_4"), ("_Mai10_4", "_Mai10_4"), ("_Mai10_5", "172_Mai10_5"),
                 ("_Mai10_6", "_Mai10_6"), ("_an07", "_an07"), ("_an07_V1", "_an07_V1"), ("_receiver", "_receiver")]
        for path in sorted(self.output.glob("CV_exp*")):
            rows = [line.split(";") for line in self.lines(path.name)[1:-1]]
            self.assertTrue(rows and all(len(row) == 17 and row[0] and row[2] and row[6] for row in rows), path)
        for expert, description in pairs:
            numbers = [int(line.split(";")[0]) for line in self.lines(f"CV_exp{expert}.txt")[1:-1]]
            self.assertNotIn("Nicht belegt", self.field(f"CV_Standart{description}.txt", 3, *numbers), description)
        self.assertEqual(self.lines("CV_exp_receiver_fr.txt"), self.lines("CV_exp_Receiver_fr.txt"))

    def test_the_ready_made_lists_switch_one_run_on(self):
        for model in ("KV04_{}_09", "KV05_{}", "KV06_{}", "KV07_{}", "KV08_{}"):
            runs = [self.field(f"CV_{model.format(run)}.txt", 2, 102, 108) for run in ("Bus_V1", "FW_V3")]
            self.assertEqual(runs, [["8", "0"], ["0", "180"]])


if __name__ == "__main__":
    unittest.main()
