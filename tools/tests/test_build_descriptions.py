"""What build_descriptions.py writes, byte by byte, and that it refuses each fault with its place."""

import subprocess
import sys
import unittest

from folder_test import TOOLS, FolderTest
from build_descriptions import build
from text_file import SourceError

TOO_LONG = "A" * 46
SENTENCE = "A" * 91
STEPS = "3, 7, 11, "

# All but the common sources' faults would be hidden by what the model says over them.
OVER_COMMON = "\n[[cv]]\nnumber = 21\ndefault = 2\nupper = 130\n\n[cv.bits]\n1 = {}\n"
REFUSED_IN_COMMON = [
    ('fr = "Démarrage"\n', "", 28, "translation 'fr' is missing"),
    ('fr = "Démarrage"', 'fr = " "', 33, "empty text"),
    ('de = "Anfahren"', 'de = "→"', 29, "character '→' (U+2192) does not exist in Windows-1252"),
    ('de = "Anfahren"', 'de = "An;fahren"', 29, "semicolon inside a text"),
    ('de = "Anfahren"', 'de = "An$fahren"', 29, "'$' inside a text"),
    ('nl = "Wegrijden"', 'nl = "1"', 30, "'nl' names other numbers than 'de'"),
    ("3 t/m 139", "3 tot 139", 25, "'tot' between numbers does not tell whether the last one belongs to them: write 't/m'"),
    ('de = "Wird ', f'de = "{SENTENCE}. ', 43, "first sentence longer than 90 characters"),
    ('de = "Anfahren"', f'de = "{TOO_LONG}"', 29, "name longer than 45 characters"),
    ("factory = 6", "factory = 140", 23, "factory 140 lies outside 3 to 139"),
    ("upper = 139", "upper = 256", 18, "limits 3 to 256 are none of a byte"),
    ("upper = 139", 'upper = "139"', 22, "'upper' is no whole number"),
    ("factory = 6", "fabrik = 6", 23, "unknown key 'fabrik'"),
    ("default = 5\n", "", 18, "'default' is missing"),
    ("number = 2\n", "number = 257\n", 18, "CV257 is beyond the table (1 to 256)"),
    ("number = 2\n", "", 18, "'number' is missing"),
    ("128 = { de", "127 = { de", 48, "unknown bit '127'"),
    ("2 = { de", '2 = { needs = "97", de', 47, "'needs' names one CV"),
    ('en = "Output 3, one"', 'en = "Output 3, two"', 46, "expected 'Output 3, One'"),
    ('es = "oben"', 'es = "arriba"', 35, "'es' does not name 'Oben', as 'de' does"),
    ("from = 97\n", "", 10, "'from' is missing"),
    ("factory = 6\n", "bits = 3\n", 23, "expected bits by weight"),
    ("factory = 6\n", 'mark = ["from=240217"]\n', 23, "unknown mark 'from=240217'"),
    ("factory = 6\n", 'mark = "read-only"\n', 23, "expected a list of marks"),
]
REFUSED = [
    ("kv07.toml", STEPS, "3, 3, 11, ", 7, "the speed steps do not rise"),
    ("kv07.toml", STEPS, "2, 7, 11, ", 7, "speed step 1 is below 3"),
    ("kv07.toml", STEPS, "3, 11, ", 7, "expected 28 speed steps"),
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
    ("files.toml", "CV_KV07_Bus_V1", "CV_Standart_kv07", 9, "'CV_Standart_kv07.txt' stands here for the second time"),
    ("files.toml", "[description.kv07]", "[description.kv09]", 1, "no model 'kv09'"),
    ("files.toml", "[description.kv07]", "[description.common]", 1, "'common' is only a base"),
    ("files.toml", "[bus_v1.kv07]", "[bus_v9.kv07]", 8, "unknown kind of file 'bus_v9'"),
    ("presets.toml", "2 = 30", "2 = 140", 5, "default 140 lies outside 3 to 139"),
    ("presets.toml", "2 = 30", "4 = 1", 5, "CV4 has no meaning on 'kv07'"),
    ("presets.toml", "2 = 30", '2 = "5"', 5, "the value of CV2 is no whole number"),
    ("presets.toml", 'header = "Bus V1"', "", 1, "'header' is missing"),
    ("outputs.toml", ', fr = "Un" ', "", 3, "translation 'fr' is missing"),
]


class Descriptions(FolderTest):
    SOURCES = "cv"

    def written(self, name):
        build(self.source, self.output)
        return (self.output / name).read_bytes().split(b"\r\n")

    def field(self, field, *numbers, of="CV_Standart_kv07.txt"):
        lines = self.written(of)
        return [lines[number].split(b";")[field - 1] for number in numbers]

    def told(self):
        with self.assertRaises(SourceError) as caught:
            build(self.source, self.output)
        return str(caught.exception)

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
        self.assertEqual(self.field(10, 21), [b"Ausgang 3, eins$zwei$$$$$$oben"])

    def test_a_bit_and_a_remark_that_need_a_cv_go_where_the_model_has_it(self):
        self.change("common.toml", '2 = { de = "zwei"', '2 = { needs = 97, de = "zwei"')
        with (self.source / "common.toml").open("a") as file:
            file.write('\n[[remark]]\ncvs = [2]\nneeds = 97\nde = "A."\nnl = "A."\nen = "A."\nes = "A."\nfr = "A."\n')
        self.assertEqual(self.field(9, 2) + self.field(10, 21), [b"Unter CV5. A.", b"$zwei$$$$$$oben"])
        self.change("kv07.toml", "rows = 176", "rows = 176\nremove = [97]")
        self.assertEqual(self.field(9, 2) + self.field(10, 21) + self.field(2, 21),
                         [b"Unter CV5.", b"$$$$$$$oben", b"0"])
        self.change("common.toml", "cvs = [2]", "cvs = [2, 3]")
        self.assertEqual(self.told(), f"{self.source / 'common.toml'}:51: a remark on CV3, which has no meaning here")

    def test_marks_stand_in_field_14_and_an_older_release_lacks_what_came_later(self):
        self.change("common.toml", "factory = 6", 'factory = 6\nmark = ["read-only", "from=240216"]')
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2].split(b";")[10:],
                         [b"", b"", b"", b"mark=read-only,from=240216", b"", b"", b""])
        self.change("presets.toml", "2 = 30", "21 = 2")
        self.change("kv07.toml", "rows = 176", 'rows = 176\nrelease = "240216"')
        self.assertEqual(self.field(3, 2), [b"Anfahren"])
        self.change("kv07.toml", '"240216"', '"010915"')
        self.assertEqual(self.written("CV_Standart_kv07.txt")[2], b"2;0;Nicht belegt;0;255;;Lassen.;-;;;;;;;;;")

    def test_presets_and_additions_stand_over_the_base(self):
        self.change("kv07.toml", "rows = 176", 'adds = ["tacho"]')
        self.assertEqual(self.written("CV_KV07_Bus_V1.txt")[0], b"Standard KV07 Bus V1")
        self.assertEqual([self.field(field, 2, of="CV_KV07_Bus_V1.txt") for field in (2, 6)], [[b"30"], [b"9"]])
        self.assertEqual(self.field(2, 2, 21), [b"9", b"2"])
        self.assertEqual(self.written("CV_Standart_kv07.txt")[179], b"Anfang FS")

    def test_each_fault_is_told_with_its_place(self):
        self.check_refusals(REFUSED, self.told)
        self.change("kv07.toml", OVER_COMMON, "")
        self.check_refusals([("common.toml", *case) for case in REFUSED_IN_COMMON], self.told)

    def test_the_command_ends_with_the_place_of_the_fault(self):
        command = [sys.executable, TOOLS / "build_descriptions.py", "--source", self.source, "--output", self.output]
        self.assertEqual(subprocess.run(command, check=False).returncode, 0)
        self.change("kv07.toml", "default = 2", "default = 131")
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr),
                         (1, f"{self.source / 'kv07.toml'}:11: default 131 lies outside 0 to 130\n"))


if __name__ == "__main__":
    unittest.main()
