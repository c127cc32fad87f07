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

ADDITION = """\
[model]
name = "tacho"
rows = 178

[[cv]]
number = 2
default = 9

[[cv]]
number = 21
default = 3
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

    def test_marks_stand_in_field_14_and_an_older_release_lacks_what_came_later(self):
        self.change("common.toml", "factory = 6", 'factory = 6\nmark = ["read-only", "from=240216"]')
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2].split(b";")[10:],
                         [b"", b"", b"", b"mark=read-only,from=240216", b"", b"", b""])
        for release, name in (("240216", b"Anfahren"), ("010915", b"Nicht belegt")):
            self.setUp()
            self.change("common.toml", "factory = 6", 'factory = 6\nmark = ["from=240216"]')
            self.change("kv07.toml", "rows = 176", f'rows = 176\nrelease = "{release}"')
            self.change("presets.toml", "2 = 30", "21 = 2")
            self.assertEqual(self.written("CV_Standart_kv07.txt")[2].split(b";")[2], name)

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
        (self.source / "tacho.toml").write_text(ADDITION, encoding="utf-8")
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
            ('es = "Arranque"', 'es = "A…→"', 'es = "A…', "character '→' (U+2192) does not exist in Windows-1252"),
            ('de = "Anfahren"', 'de = "An;fahren"', "de = \"An;", "semicolon inside a text"),
            ('de = "Anfahren"', 'de = "An$fahren"', "de = \"An$", "'$' inside a text"),
            ('de = "Anfahren"', 'de = "An\\nfahren"', "de = \"An\\n", "line break inside a text"),
            ('nl = "3 tot 139"', 'nl = "3 tot 193"', 'nl = "3 tot 193"', "'nl' names other numbers than 'de'"),
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
            ("factory = 6\n", "bits = 3\n", "bits = 3", "expected bits by weight"),
            ("factory = 6\n", 'mark = ["from=240217"]\n', "mark = [", "unknown mark 'from=240217'"),
            ("factory = 6\n", 'mark = "read-only"\n', "mark = ", "expected a list of marks"),
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
            ("rows = 176", 'rows = "176"', 5, "'rows' has a value of the wrong kind"),
            ("rows = 176", 'release = "2016"', 5, "unknown release '2016'"),
            ("rows = 176", 'remove = ["2"]', 5, "'remove' has a value of the wrong kind"),
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
        self.change("presets.toml", "4 = 1", '2 = "5"')
        self.refused("presets.toml", 5, "the value of CV2 is no whole number")
        self.change("presets.toml", 'header = "Bus V1"', "")
        self.refused("presets.toml", 1, "'header' is missing")


if __name__ == "__main__":
    unittest.main()
