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


def texts(*words):
    """One text for each language, in one line; a single one stands for all."""
    pairs = zip(("de", "nl", "en", "es", "fr"), words * 5)
    return "{ " + ", ".join(f'{code} = "{word}"' for code, word in pairs) + " }"


COMMON = f"""[model]
name = "common"
abstract = true

[unused]
name = {texts("Nicht belegt", "Niet gebruikt", "Not used", "Sin función", "Non utilisée")}
help = {texts("Lassen.")}
values = {texts("-")}

[[series]]
from = 97
to = 70
lower = 3
name = {texts("Fahrstufe {n}")}
help = {texts("Motorwert.")}
values = {texts("1/255")}

[[cv]]
number = 2
default = 5
lower = 3
upper = 139
factory = 6
help = {texts("Für den Türen.")}
values = {texts("3 bis 139", "3 t/m 139", "3 to 139", "3 a 139", "3 à 139")}
advice = {texts("Unter CV5.")}

[cv.name]
de = "Anfahren"
nl = "Wegrijden"
en = "Start"
es = "Arranque"
fr = "Démarrage"

[[cv]]
number = 21
default = 1
lower = 0
upper = 131
name = {texts("Schalter")}
help = {texts("Art.")}
values = {texts("Bits")}
expert = {texts("Wird geprüft.", "Getest.", "Tested.", "Probado.", "Testé.")}

[cv.bits]
1 = {texts("Ausgang 3, eins", "Uitgang 3, een", "Output 3, one", "Salida 3, uno", "Sortie 3, un")}
2 = {texts("zwei")}
128 = {texts("oben")}
"""

MODEL = f"""[model]
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

SOURCES = {
    "common.toml": COMMON,
    "kv07.toml": MODEL,
    "tacho.toml": '[model]\nname = "tacho"\nrows = 178\n\n[[cv]]\nnumber = 2\ndefault = 9\n\n'
                  "[[cv]]\nnumber = 21\ndefault = 3\n",
    "presets.toml": '[bus_v1]\nheader = "Bus V1"\n\n[bus_v1.values]\n2 = 30\n',
    "files.toml": '[description.kv07]\n"CV_Standart_kv07.txt" = "de"\n"CV_Standart_kv07es.txt" = "es"\n\n'
                  '[expert.kv07]\n"CV_exp_kv07_EN.txt" = "en"\n\n[bus_v1.kv07]\n"CV_KV07_Bus_V1.txt" = "de"\n',
    "outputs.toml": f"""known = {texts("Ausgang {n}, {light}", "Uitgang {n}, {light}", "Output {n}, {light}",
                                       "Salida {n}, {light}", "Sortie {n}, {light}")}
unknown = {texts("Offen: {lights}.")}
light = [ {{ output = 3, {texts("Eins", "Een", "One", "Uno", "Un")[2:]}, {texts("Oben")} ]
""",
}


class Descriptions(unittest.TestCase):
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

    def written(self, name):
        build(self.source, self.output)
        return (self.output / name).read_bytes().split(b"\r\n")

    def refused(self, name, line, message):
        with self.assertRaises(SourceError) as caught:
            build(self.source, self.output)
        self.assertEqual(str(caught.exception), f"{self.source / name}:{line}: {message}")
        self.assertFalse(self.output.exists())

    def test_rows_stand_in_the_line_of_their_number_and_the_speed_steps_behind_them(self):
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual(lines[0], b"Standard KV07")
        self.assertEqual(lines[1], b"1;0;Nicht belegt;0;255;;Lassen.;-;;;;;;;;;")
        self.assertEqual(lines[2], b"2;5;Anfahren;3;139;6;F\xfcr den T\xfcren.;3 bis 139;Unter CV5.;;;;;;;;")
        self.assertEqual(lines[70], b"70;111;Fahrstufe 28;3;168;111;Motorwert.;1/255;;;;;;;;;")
        self.assertEqual(lines[97], b"97;3;Fahrstufe 1;3;168;3;Motorwert.;1/255;;;;;;;;;")
        self.assertEqual(lines[153], b"153;;Nicht belegt;0;255;;Lassen.;-;;;;;;;;;")
        self.assertEqual(lines[176][:4], b"176;")
        self.assertEqual(lines[177:179] + lines[205:], [b"Anfang FS", b"FS1 = 3", b"FS28 = 111", b"", b""])
        self.assertEqual(self.written("CV_exp_kv07_EN.txt"),
                         [b"Standard KV07 Experte", b"21;;Schalter;;;;Tested.;;;;;;;;;;", b""])

    def test_bits_begin_with_weight_1_and_a_light_without_an_output_is_told(self):
        self.assertEqual(self.written("CV_Standart_kv07es.txt")[21],
                         b"21;2;Schalter;0;130;2;Art.;Bits;Offen: Oben.;$zwei$$$$$$oben;;;;;;;")
        self.change("kv07.toml", "1 = {}", "")
        self.change("kv07.toml", "upper = 130", "")
        self.assertEqual(self.written("CV_Standart_kv07.txt")[21].split(b";")[9], b"Ausgang 3, eins$zwei$$$$$$oben")

    def test_a_bit_and_a_remark_that_need_a_cv_go_where_the_model_has_it(self):
        self.change("common.toml", '2 = { de = "zwei"', '2 = { needs = 97, de = "zwei"')
        remark = '\n[[remark]]\ncvs = [2]\nneeds = 97\nde = "A."\nnl = "A."\nen = "A."\nes = "A."\nfr = "A."\n'
        (self.source / "common.toml").write_text((self.source / "common.toml").read_text() + remark)
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual((lines[2].split(b";")[8], lines[21].split(b";")[9][:5]), (b"Unter CV5. A.", b"$zwei"))
        self.change("kv07.toml", "rows = 176", "rows = 176\nremove = [97]")
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual(lines[2].split(b";")[8], b"Unter CV5.")
        self.assertEqual(lines[21].split(b";")[1:10:4], [b"0", b"0", b"$$$$$$$oben"])
        self.change("common.toml", "cvs = [2]", "cvs = [2, 3]")
        self.refused_at("common.toml", "cvs", "a remark on CV3, which has no meaning here")

    def refused_at(self, name, start, message):
        lines = (self.source / name).read_text(encoding="utf-8").split("\n")
        with self.assertRaises(SourceError) as caught:
            build(self.source, self.output / "new")
        line = next(number for number in range(1, len(lines)) if "\n".join(lines[number - 1 :]).startswith(start))
        self.assertEqual(str(caught.exception), f"{self.source / name}:{line}: {message}")
        self.assertFalse((self.output / "new").exists())

    def test_marks_stand_in_field_14_and_an_older_release_lacks_what_came_later(self):
        self.change("common.toml", "factory = 6", 'factory = 6\nmark = ["read-only", "from=240216"]')
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2].split(b";")[10:],
                         [b"", b"", b"", b"mark=read-only,from=240216", b"", b"", b""])
        self.change("presets.toml", "2 = 30", "21 = 2")
        self.change("kv07.toml", "rows = 176", 'rows = 176\nrelease = "240216"')
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2].split(b";")[2], b"Anfahren")
        self.change("kv07.toml", '"240216"', '"010915"')
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2], b"2;0;Nicht belegt;0;255;;Lassen.;-;;;;;;;;;")

    def test_presets_and_additions_stand_over_the_base(self):
        self.change("kv07.toml", "rows = 176", 'adds = ["tacho"]')
        self.assertEqual(self.written("CV_KV07_Bus_V1.txt")[0], b"Standard KV07 Bus V1")
        self.assertEqual(self.written("CV_KV07_Bus_V1.txt")[2].split(b";")[1:6:4], [b"30", b"9"])
        lines = self.written("CV_Standart_kv07.txt")
        self.assertEqual([lines[2].split(b";")[1], lines[21].split(b";")[1], lines[179]], [b"9", b"2", b"Anfang FS"])

    def test_faults_in_a_cv(self):
        cases = [
            ('fr = "Démarrage"\n', "", "[cv.name]", "translation 'fr' is missing"),
            ('fr = "Démarrage"', 'fr = " "', 'fr = " "', "empty text"),
            ('de = "Anfahren"', 'de = "→"', 'de = "→', "character '→' (U+2192) does not exist in Windows-1252"),
            ('de = "Anfahren"', 'de = "An;fahren"', 'de = "An;', "semicolon inside a text"),
            ('de = "Anfahren"', 'de = "An$fahren"', 'de = "An$', "'$' inside a text"),
            ('nl = "Wegrijden"', 'nl = "1"', 'nl = "1"', "'nl' names other numbers than 'de'"),
            ("3 t/m 139", "3 tot 139", "values = { de = \"3", "'tot' between numbers does not tell whether the last one "
             "belongs to them: write 't/m'"),
            ('de = "Wird ', f'de = "{"A" * 91}. ', "expert", "first sentence longer than 90 characters"),
            ('de = "Anfahren"', f'de = "{"A" * 46}"', 'de = "AAA', "name longer than 45 characters"),
            ("factory = 6", "factory = 140", "factory = 140", "factory 140 lies outside 3 to 139"),
            ("upper = 139", "upper = 256", "[[cv]]\nnumber = 2", "limits 3 to 256 are none of a byte"),
            ("upper = 139", 'upper = "139"', 'upper = "139"', "'upper' is no whole number"),
            ("factory = 6", "fabrik = 6", "fabrik = 6", "unknown key 'fabrik'"),
            ("default = 5\n", "", "[[cv]]\nnumber = 2", "'default' is missing"),
            ("number = 2\n", "number = 257\n", "[[cv]]\nnumber = 257", "CV257 is beyond the table (1 to 256)"),
            ("number = 2\n", "", "[[cv]]\ndefault = 5", "'number' is missing"),
            ("128 = { de", "127 = { de", "127 = {", "unknown bit '127'"),
            ("2 = { de", '2 = { needs = "97", de', "2 = { needs", "'needs' names one CV"),
            ("en = \"Output 3, one\"", 'en = "Output 3, two"', "1 = {", "expected 'Output 3, One'"),
            ('es = "oben"', 'es = "arriba"', "[[cv]]\nnumber = 21", "'es' does not name 'Oben', as 'de' does"),
            ("from = 97\n", "", "[[series]]\nto = 70", "'from' is missing"),
            ("factory = 6\n", "bits = 3\n", "bits = 3", "expected bits by weight"),
            ("factory = 6\n", 'mark = ["from=240217"]\n', "mark = [", "unknown mark 'from=240217'"),
            ("factory = 6\n", 'mark = "read-only"\n', "mark = ", "expected a list of marks"),
        ]
        for old, new, place, message in cases:
            with self.subTest(message):
                self.setUp()
                self.change("kv07.toml", MODEL[MODEL.index("\n[[cv]]"):], "")
                self.change("common.toml", old, new)
                self.refused_at("common.toml", place, message)

    def test_faults_in_the_other_files(self):
        cases = [
            ("kv07.toml", STEPS, STEPS.replace(" 7,", " 3,"), 7, "the speed steps do not rise"),
            ("kv07.toml", STEPS, STEPS.replace("3,", "2,", 1), 7, "speed step 1 is below 3"),
            ("kv07.toml", STEPS, ", ".join(STEPS.split(", ")[:27]), 7, "expected 28 speed steps"),
            ("kv07.toml", "top_speed = 168", "top_speed = 110", 7, "speed step 28 is above the top speed"),
            ("kv07.toml", "rows = 176", "rows = 175", 5, "a decoder's rows reach from 1 to 176 at least"),
            ("kv07.toml", "rows = 176", "rows = 257", 5, "rows beyond the table (1 to 256)"),
            ("kv07.toml", "rows = 176", "remove = [4]", 5, "CV4 has no meaning that could be removed"),
            ("kv07.toml", "rows = 176", 'adds = ["taxi"]', 5, "no addition 'taxi'"),
            ("kv07.toml", "rows = 176", "lines = 176", 5, "unknown key 'lines'"),
            ("kv07.toml", "rows = 176", 'release = "2016"', 5, "unknown release '2016'"),
            ("kv07.toml", "rows = 176", 'remove = ["2"]', 5, "'remove' has a value of the wrong kind"),
            ("kv07.toml", 'base = "common"', 'base = "kv09"', 4, "no model 'kv09'"),
            ("kv07.toml", 'base = "common"', 'base = "kv07"', 4, "'kv07' is based on this model"),
            ("kv07.toml", 'name = "kv07"', 'name = "kv08"', 2, "the model's name must be 'kv07', as its file"),
            ("kv07.toml", 'header = "Standard KV07"\n', "", 1, "'header' is missing"),
            ("kv07.toml", "[[cv]]", "[[cv]]\nnumber = 21\n\n[[cv]]", 12, "CV21 stands here for the second time"),
            ("kv07.toml", "number = 21", "number = 177", 9, "CV177 lies beyond the 176 rows of 'kv07'"),
            ("kv07.toml", "upper = 130", "upper = 129", 14, "the bits together are above the upper limit 129"),
            ("kv07.toml", "1 = {}", "2 = {}", 9, "the factory value 2 sets a bit without a meaning"),
            ("files.toml", 'kv07es.txt" = "es"', 'kv07es.txt" = "it"', 3, "unknown language 'it'"),
            ("files.toml", "CV_KV07_Bus_V1.txt", "CV_Standart_kv07.txt", 9,
             "'CV_Standart_kv07.txt' stands here for the second time"),
            ("files.toml", "[description.kv07]", "[description.kv09]", 1, "no model 'kv09'"),
            ("files.toml", "[description.kv07]", "[description.common]", 1, "'common' is only a base"),
            ("files.toml", "[bus_v1.kv07]", "[bus_v9.kv07]", 8, "unknown kind of file 'bus_v9'"),
            ("presets.toml", "2 = 30", "2 = 140", 5, "default 140 lies outside 3 to 139"),
            ("presets.toml", "2 = 30", "4 = 1", 5, "CV4 has no meaning on 'kv07'"),
            ("presets.toml", "2 = 30", '2 = "5"', 5, "the value of CV2 is no whole number"),
            ("presets.toml", 'header = "Bus V1"', "", 1, "'header' is missing"),
            ("outputs.toml", ', fr = "Un" ', "", 3, "translation 'fr' is missing"),
        ]
        for name, old, new, line, message in cases:
            with self.subTest(message):
                self.setUp()
                self.change(name, old, new)
                self.refused(name, line, message)

    def test_the_command_ends_with_the_place_of_the_fault(self):
        command = [sys.executable, TOOL, "--source", self.source, "--output", self.output]
        self.assertEqual(subprocess.run(command, check=False).returncode, 0)
        self.change("kv07.toml", "default = 2", "default = 131")
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr),
                         (1, f"{self.source / 'kv07.toml'}:11: default 131 lies outside 0 to 130\n"))


if __name__ == "__main__":
    unittest.main()
