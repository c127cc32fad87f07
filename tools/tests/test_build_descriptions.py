"""What build_descriptions.py writes, byte by byte, and that it refuses each fault with its place."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[1] / "build_descriptions.py"
sys.path.insert(0, str(TOOL.parent))
from build_descriptions import build
from text_file import SourceError

DATA = Path(__file__).resolve().parents[2] / "data" / "cv"

STEPS = ", ".join(str(3 + 4 * step) for step in range(28))

COMMON = """\
[model]
name = "common"
abstract = true

[unused]
name = { de = "Nicht belegt", nl = "Niet gebruikt", en = "Not used", es = "Sin función", fr = "Non utilisée" }
help = { de = "Bitte lassen.", nl = "Laten staan.", en = "Leave it.", es = "No tocar.", fr = "Laisser." }
values = { de = "-", nl = "-", en = "-", es = "-", fr = "-" }

[[series]]
from = 97
to = 70
lower = 3
name = { de = "Fahrstufe {n}", nl = "Rijstap {n}", en = "Speed step {n}", es = "Paso {n}", fr = "Cran {n}" }
help = { de = "Motorwert.", nl = "Motorwaarde.", en = "Motor value.", es = "Valor.", fr = "Valeur." }
values = { de = "1/255", nl = "1/255", en = "1/255", es = "1/255", fr = "1/255" }

[[cv]]
number = 2
default = 5
lower = 3
upper = 139
factory = 6

[cv.name]
de = "Anfahren"
nl = "Wegrijden"
en = "Start"
es = "Arranque"
fr = "Démarrage"

[cv.help]
de = "Für den Motor."
nl = "Voor de motor."
en = "For the motor."
es = "Para el motor."
fr = "Pour le moteur."

[cv.values]
de = "3 bis 139"
nl = "3 tot 139"
en = "3 to 139"
es = "3 a 139"
fr = "3 à 139"

[cv.advice]
de = "Unter CV5."
nl = "Onder CV5."
en = "Below CV5."
es = "Menor que CV5."
fr = "Sous CV5."

[[cv]]
number = 21
default = 1
lower = 0
upper = 131
name = { de = "Schalter", nl = "Schakelaar", en = "Switches", es = "Interruptor", fr = "Interrupteur" }
help = { de = "Art.", nl = "Soort.", en = "Kind.", es = "Tipo.", fr = "Type." }
values = { de = "Bits", nl = "Bits", en = "Bits", es = "Bits", fr = "Bits" }
expert = { de = "Wird geprüft.", nl = "Getest.", en = "Tested.", es = "Probado.", fr = "Testé." }

[cv.bits]
1 = { de = "eins", nl = "een", en = "one", es = "uno", fr = "un" }
2 = { de = "zwei", nl = "twee", en = "two", es = "dos", fr = "deux" }
128 = { de = "oben", nl = "boven", en = "top", es = "alto", fr = "haut" }
"""

MODEL = f"""\
[model]
name = "kv07"
header = "Standard KV07"
base = "common"
rows = 176
top_speed = 168
speed_steps = [{STEPS}]

[[cv]]
number = 21
default = 2
upper = 130

[cv.bits]
1 = {{}}
"""

PRESETS = """\
[bus_v1]
header = "Bus V1"

[bus_v1.values]
2 = 30
"""

FILES = """\
[description.kv07]
"CV_Standart_kv07.txt" = "de"
"CV_Standart_kv07es.txt" = "es"

[expert.kv07]
"CV_exp_kv07_EN.txt" = "en"

[bus_v1.kv07]
"CV_KV07_Bus_V1.txt" = "de"
"""

SOURCES = {
    "common.toml": COMMON,
    "kv07.toml": MODEL,
    "presets.toml": PRESETS,
    "files.toml": FILES,
}


def line_of(text, part):
    """The line of `text`, counted from 1, that begins with `part`."""
    return next(number for number, line in enumerate(text.split("\n"), start=1) if line.startswith(part))


class DescriptionsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = Path(folder.name) / "source"
        self.output = Path(folder.name) / "output"
        self.source.mkdir()
        for name, text in SOURCES.items():
            (self.source / name).write_text(text, encoding="utf-8")

    def change(self, name, old, new):
        text = (self.source / name).read_text(encoding="utf-8")
        self.assertIn(old, text)
        (self.source / name).write_text(text.replace(old, new, 1), encoding="utf-8")

    def run_tool(self):
        command = [sys.executable, TOOL, "--source", self.source, "--output", self.output]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def written(self, name):
        build(self.source, self.output)
        return (self.output / name).read_bytes().split(b"\r\n")

    def refused(self, name, line, message):
        with self.assertRaises(SourceError) as caught:
            build(self.source, self.output)
        self.assertEqual(str(caught.exception), f"{self.source / name}:{line}: {message}")
        self.assertFalse(self.output.exists())


class Writing(DescriptionsTest):
    def test_rows_stand_in_the_line_of_their_number(self):
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual(lines[0], b"Standard KV07")
        self.assertEqual(lines[1], b"1;0;Nicht belegt;0;255;;Bitte lassen.;-;;;;;;;;;")
        self.assertEqual(lines[2], b"2;5;Anfahren;3;139;6;F\xfcr den Motor.;3 bis 139;Unter CV5.;;;;;;;;")
        self.assertEqual(lines[70], b"70;111;Fahrstufe 28;3;168;111;Motorwert.;1/255;;;;;;;;;")
        self.assertEqual(lines[97], b"97;3;Fahrstufe 1;3;168;3;Motorwert.;1/255;;;;;;;;;")
        self.assertEqual(lines[153], b"153;;Nicht belegt;0;255;;Bitte lassen.;-;;;;;;;;;")
        self.assertEqual(lines[176][:4], b"176;")

    def test_bits_begin_with_weight_1_and_leave_unused_ones_empty(self):
        self.change("kv07.toml", "1 = {}", "")
        self.change("kv07.toml", "upper = 130", "")
        line = self.written("CV_Standart_kv07.txt")[21]
        self.assertEqual(line, b"21;2;Schalter;0;131;2;Art.;Bits;;eins$zwei$$$$$$oben;;;;;;;")

    def test_a_model_takes_a_bit_of_its_base_away(self):
        line = self.written("CV_Standart_kv07es.txt")[21]
        self.assertEqual(line, b"21;2;Interruptor;0;130;2;Tipo.;Bits;;$dos$$$$$$alto;;;;;;;")

    def test_the_speed_steps_follow_the_rows(self):
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual(lines[177], b"Anfang FS")
        self.assertEqual(lines[178], b"FS1 = 3")
        self.assertEqual(lines[205], b"FS28 = 111")
        self.assertEqual(lines[206:], [b"", b""])

    def test_an_expert_file_holds_only_what_it_adds(self):
        self.assertEqual(
            self.written("CV_exp_kv07_EN.txt"),
            [b"Standard KV07 Experte", b"21;;Switches;;;;Tested.;;;;;;;;;;", b""],
        )

    def test_presets_change_the_value_and_not_the_factory_value(self):
        lines = self.written("CV_KV07_Bus_V1.txt")
        self.assertEqual(lines[0], b"Standard KV07 Bus V1")
        self.assertEqual(lines[2], b"2;30;Anfahren;3;139;6;F\xfcr den Motor.;3 bis 139;Unter CV5.;;;;;;;;")
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2][:4], b"2;5;")

    def test_a_removed_row_has_the_text_of_unused_ones(self):
        self.change("kv07.toml", "rows = 176", "rows = 176\nremove = [2]")
        self.change("presets.toml", "2 = 30", "21 = 2")
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2], b"2;0;Nicht belegt;0;255;;Bitte lassen.;-;;;;;;;;;")

    def test_an_addition_stands_between_base_and_model(self):
        self.change("kv07.toml", "rows = 176", 'adds = ["tacho"]')
        addition = '[model]\nname = "tacho"\nrows = 178\n\n[[cv]]\nnumber = 2\ndefault = 9\n\n[[cv]]\nnumber = 21\ndefault = 3\n'
        (self.source / "tacho.toml").write_text(addition, encoding="utf-8")
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual(lines[2].split(b";")[1], b"9")
        self.assertEqual(lines[21].split(b";")[1], b"2")
        self.assertEqual(lines[178][:4], b"178;")
        self.assertEqual(lines[179], b"Anfang FS")

    def test_an_unchanged_file_is_not_written_again(self):
        self.written("CV_Standart_kv07.txt")
        old = (self.output / "CV_Standart_kv07.txt").stat()
        changed = (self.output / "CV_Standart_kv07es.txt").stat()
        self.change("common.toml", 'es = "Arranque"', 'es = "Arrancar"')
        self.written("CV_Standart_kv07es.txt")
        self.assertEqual((self.output / "CV_Standart_kv07.txt").stat().st_ino, old.st_ino)
        self.assertNotEqual((self.output / "CV_Standart_kv07es.txt").stat().st_ino, changed.st_ino)


class Refusing(DescriptionsTest):
    def test_the_command_ends_with_the_place_of_the_fault(self):
        self.assertEqual(self.run_tool().returncode, 0)
        self.change("kv07.toml", "default = 2", "default = 131")
        result = self.run_tool()
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, f"{self.source / 'kv07.toml'}:11: default 131 lies outside 0 to 130\n")

    def test_faults_in_a_model(self):
        cases = [
            ("fr = \"Démarrage\"\n", "", "[cv.name]", "translation 'fr' is missing"),
            ('fr = "Démarrage"', 'fr = " "', "fr = \" \"", "empty text"),
            ('es = "Arranque"', 'es = "Arranque…→"', "es = \"Arranque…", "character '→' (U+2192) does not exist in Windows-1252"),
            ('de = "Anfahren"', 'de = "An;fahren"', "de = \"An;", "semicolon inside a text"),
            ('de = "Anfahren"', 'de = "An$fahren"', "de = \"An$", "'$' inside a text"),
            ('de = "Anfahren"', 'de = "An\\nfahren"', "de = \"An\\n", "line break inside a text"),
            ('de = "Anfahren"', f'de = "{"A" * 46}"', "de = \"AAA", "name longer than 45 characters"),
            ("default = 5", "default = 2", "default = 2", "default 2 lies outside 3 to 139"),
            ("factory = 6", "factory = 140", "factory = 140", "factory 140 lies outside 3 to 139"),
            ("upper = 139", "upper = 256", "[[cv]]", "limits 3 to 256 are none of a byte"),
            ("upper = 139", "upper = \"139\"", "upper = \"139\"", "'upper' is no whole number"),
            ("factory = 6", "fabrik = 6", "fabrik = 6", "unknown key 'fabrik'"),
            ("default = 5\n", "", "[[cv]]", "'default' is missing"),
            ("number = 2\n", "number = 257\n", "[[cv]]", "CV257 is beyond the table (1 to 256)"),
            ("number = 2\n", "", "[[cv]]", "'number' is missing"),
            ("128 = { de", "127 = { de", "127 = {", "unknown bit '127'"),
            ("from = 97\n", "", "[[series]]", "'from' is missing"),
        ]
        for old, new, place, message in cases:
            with self.subTest(message):
                self.setUp()
                self.change("common.toml", old, new)
                text = (self.source / "common.toml").read_text(encoding="utf-8")
                self.refused("common.toml", line_of(text, place), message)

    def test_a_number_twice(self):
        self.change("kv07.toml", "[[cv]]", "[[cv]]\nnumber = 21\n\n[[cv]]")
        self.refused("kv07.toml", 12, "CV21 stands here for the second time")

    def test_bits_above_the_limit(self):
        self.change("kv07.toml", "upper = 130", "upper = 129")
        self.refused("kv07.toml", 14, "the bits together are above the upper limit 129")

    def test_faults_in_the_model_table(self):
        cases = [
            (STEPS, STEPS.replace(" 7,", " 3,"), 7, "the speed steps do not rise"),
            (STEPS, STEPS.replace("3,", "2,", 1), 7, "speed step 1 is below 3"),
            (STEPS, ", ".join(STEPS.split(", ")[:27]), 7, "expected 28 speed steps"),
            ("top_speed = 168", "top_speed = 110", 7, "speed step 28 is above the top speed"),
            ("rows = 176", "rows = 175", 5, "a decoder's rows reach from 1 to 176 at least"),
            ("rows = 176", "rows = 257", 5, "rows beyond the table (1 to 256)"),
            ("rows = 176", "remove = [4]", 5, "CV4 has no meaning that could be removed"),
            ('base = "common"', 'base = "kv09"', 4, "no model 'kv09'"),
            ('base = "common"', 'base = "kv07"', 4, "'kv07' is based on this model"),
            ('name = "kv07"', 'name = "kv08"', 2, "the model's name must be 'kv07', as its file"),
            ('header = "Standard KV07"\n', "", 1, "'header' is missing"),
            ("rows = 176", "lines = 176", 5, "unknown key 'lines'"),
        ]
        for old, new, line, message in cases:
            with self.subTest(message):
                self.setUp()
                self.change("kv07.toml", old, new)
                self.refused("kv07.toml", line, message)

    def test_a_row_beyond_those_of_the_model(self):
        self.change("kv07.toml", "number = 21", "number = 177")
        self.refused("kv07.toml", 9, "CV177 lies beyond the 176 rows of 'kv07'")

    def test_faults_in_the_list_of_files(self):
        cases = [
            ('kv07es.txt" = "es"', 'kv07es.txt" = "it"', 3, "unknown language 'it'"),
            ('[bus_v1.kv07]\n"CV_KV07_Bus_V1.txt"', '[bus_v1.kv07]\n"CV_Standart_kv07.txt"', 9,
             "'CV_Standart_kv07.txt' stands here for the second time"),
            ("[description.kv07]", "[description.kv09]", 1, "no model 'kv09'"),
            ("[description.kv07]", "[description.common]", 1, "'common' is only a base"),
            ("[bus_v1.kv07]", "[bus_v9.kv07]", 8, "unknown kind of file 'bus_v9'"),
        ]
        for old, new, line, message in cases:
            with self.subTest(message):
                self.setUp()
                self.change("files.toml", old, new)
                self.refused("files.toml", line, message)

    def test_an_expert_file_without_content(self):
        self.change("kv07.toml", "rows = 176", "rows = 176\nremove = [21]")
        self.change("kv07.toml", "[[cv]]\nnumber = 21\ndefault = 2\nupper = 130\n\n[cv.bits]\n1 = {}\n", "")
        self.refused("files.toml", 5, "'kv07' has nothing for experts")

    def test_faults_around_an_addition(self):
        self.change("kv07.toml", "rows = 176", 'rows = 176\nadds = ["tacho"]')
        self.refused("kv07.toml", 6, "no addition 'tacho'")
        (self.source / "tacho.toml").write_text('[model]\nname = "tacho"\nremove = [2, 4]\n', encoding="utf-8")
        self.refused("tacho.toml", 3, "CV4 has no meaning that could be removed")

    def test_a_preset_that_does_not_fit_the_model(self):
        self.change("presets.toml", "2 = 30", "2 = 140")
        self.refused("presets.toml", 5, "default 140 lies outside 3 to 139")
        self.change("presets.toml", "2 = 140", "4 = 1")
        self.refused("presets.toml", 5, "CV4 has no meaning on 'kv07'")


class Knowledge(unittest.TestCase):
    """The project's own sources."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.output = Path(folder.name)
        command = [sys.executable, TOOL, "--source", DATA, "--output", cls.output]
        subprocess.run(command, check=True)

    def row(self, file, number):
        line = (self.output / file).read_bytes().decode("cp1252").split("\r\n")[number]
        return line.split(";")

    def test_the_wire_and_the_editors_can_count_on_these_rows(self):
        cases = [
            (1, "1", "126"),
            (3, "1", "126"),
            (15, "0", "39"),
            (17, "0", "39"),
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

    def test_the_ready_made_lists_switch_one_run_on(self):
        for model in ("KV04", "KV05", "KV06", "KV07", "KV08"):
            date = "_09" if model == "KV04" else ""
            self.assertEqual([self.row(f"CV_{model}_Bus_V1{date}.txt", number)[1] for number in (102, 108)], ["8", "0"])
            self.assertEqual([self.row(f"CV_{model}_FW_V3{date}.txt", number)[1] for number in (102, 108)], ["0", "180"])


if __name__ == "__main__":
    unittest.main()
