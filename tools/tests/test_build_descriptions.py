"""What build_descriptions.py writes, byte by byte, and that it refuses each fault with its place."""

import subprocess
import sys
import unittest

from folder_test import TOOLS, FolderTest
from build_descriptions import build
from text_file import SourceError

# The common sources' faults would be hidden by what the model says over them.
OVER_COMMON = "\n[[cv]]\nnumber = 21\ndefault = 2\nupper = 130\n\n[cv.bits]\n1 = {}\n"


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

    def test_groups_words_and_units_stand_in_fields_11_to_13(self):
        words = {"de": "nie", "nl": "nooit", "en": "never", "es": "nunca", "fr": "jamais"}
        for language, word in words.items():
            self.change("common.toml", f'{language} = "3 ', f'{language} = "3 = {word}, 9 ')
        self.change("common.toml", "factory = 6", 'factory = 6\ngroup = ["bus", "fire"]\nunit = "0.1 s"\nspecial = [3]')
        for weight in (2, 128):
            self.change("common.toml", f"\n{weight} = {{ ", f'\n{weight} = {{ group = "servo", ')
        kinds = [self.written("CV_Standart_kv07es.txt")[number].split(b";")[10:13] for number in (2, 21)]
        self.assertEqual(kinds, [[b"group=bus,fire", b"special=3:nunca", b"unit=0.1 s"], [b"group=servo:130", b"", b""]])
        self.change("common.toml", 'unit = "0.1 s"\nspecial', "choice")
        all_words = ", ".join(f'{language} = "{{n}}:9"' for language in words)
        with (self.source / "kv07.toml").open("a") as file:
            file.write(f"\n[[cv]]\nnumber = 2\nnamed.4-7 = {{ {all_words} }}\nnamed.9-139 = {{ first = 1, {all_words} }}\n")
        field = self.field(12, 2)[0]
        self.assertTrue(field.startswith(b"choice=3:nie|4:4:9|5:5:9|6:6:9|7:7:9|9:1:9|"), field)
        self.assertTrue(field.endswith(b"|139:131:9"), field)

    def test_presets_and_additions_stand_over_the_base(self):
        self.change("kv07.toml", "rows = 176", 'adds = ["tacho"]')
        self.assertEqual(self.written("CV_KV07_Bus_V1.txt")[0], b"Standard KV07 Bus V1")
        self.assertEqual([self.field(field, 2, of="CV_KV07_Bus_V1.txt") for field in (2, 6)], [[b"30"], [b"9"]])
        self.assertEqual(self.field(2, 2, 21), [b"9", b"2"])
        self.assertEqual(self.written("CV_Standart_kv07.txt")[179], b"Anfang FS")

    def test_each_fault_is_told_with_its_place(self):
        self.check_refusals("refused_descriptions.txt", self.told)
        self.change("kv07.toml", OVER_COMMON, "")
        self.check_refusals("refused_common.txt", self.told)

    def test_the_command_ends_with_the_place_of_the_fault(self):
        command = [sys.executable, TOOLS / "build_descriptions.py", "--source", self.source, "--output", self.output]
        self.assertEqual(subprocess.run(command, check=False).returncode, 0)
        self.change("kv07.toml", "default = 2", "default = 131")
        result = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((result.returncode, result.stderr),
                         (1, f"{self.source / 'kv07.toml'}:11: default 131 lies outside 0 to 130\n"))


if __name__ == "__main__":
    unittest.main()
