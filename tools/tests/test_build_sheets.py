"""What build_sheets.py writes of the project's own sheets, and what it refuses."""

import shutil
import unittest

from folder_test import TOOLS, FolderTest
from build_sheets import Descriptions, contents
from text_file import SourceError

SOURCES = TOOLS.parent / "data"


class Sheets(FolderTest):
    @classmethod
    def setUpClass(cls):
        cls.descriptions = Descriptions(SOURCES / "cv")

    def setUp(self):
        super().setUp()
        for folder in ("functions", "presets"):
            shutil.copytree(SOURCES / folder, self.source / folder)

    def built(self):
        return contents(self.source / "functions", self.descriptions)

    def told(self):
        with self.assertRaises(SourceError) as caught:
            self.built()
        return str(caught.exception)

    def test_words_and_values_come_from_where_they_stand(self):
        files = {name: content.decode("cp1252") for name, content in self.built().items()}
        self.assertEqual(len(files), 23)
        bus = files["FKT_bus.txt"]
        self.assertTrue(bus.startswith("sheet;bus;\r\ntext;de;Bus Automatik;\r\ntext;nl;"), bus[:99])
        self.assertIn("\r\nvariant;CV101=3 CV102=60 CV103=20 CV104=255 CV105=0 CV106=8 CV107=5;\r\ntext;de;Endhalte", bus)
        self.assertIn("\r\nset;101;factory;\r\nonly;CV101=3;\r\n", files["FKT_bus_clear.txt"])
        self.assertIn("\r\nsection;\r\ntext;de;Ausgang 3, Bremslicht;\r\n", files["FKT_ausgaenge.txt"])
        self.assertIn("\r\ncv;115;\r\nmodels;KV04;KV05;KV06;KV07;KV08;\r\n", files["FKT_ausgaenge.txt"])
        self.assertIn("\r\nready;Pre_Fahrzeug1;CV30=2 CV35=1 CV36=0 ", files["FKT_auswerten_F.txt"])
        self.assertIn("\r\nnumber;169;170;171;\r\ntext;de;Lange Nummer;\r\n", files["FKT_tsop.txt"])
        self.assertIn("\r\nsentence;102;107;\r\ntext;de;Hält {102} ", bus)

    def test_each_fault_is_told_with_its_place(self):
        self.check_refusals("refused_sheets.txt", self.told)


if __name__ == "__main__":
    unittest.main()
