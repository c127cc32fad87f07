"""The version stands in CMakeLists.txt; what else tells it has to tell the same."""

import re
import tomllib
import unittest

from folder_test import TOOLS

ROOT = TOOLS.parent


class Version(unittest.TestCase):
    def test_changelog_and_menu_tell_that_of_the_project(self):
        cmake = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
        project = re.search(r"project\(\w+ VERSION (\d+)\.(\d+)\.(\d+)", cmake)
        newest = re.search(r"^## ([\d.]+)", (ROOT / "CHANGELOG.md").read_text(encoding="utf-8"), re.MULTILINE)
        self.assertEqual(newest[1], ".".join(project.groups()))
        menu = tomllib.loads((ROOT / "data" / "language" / "menu.toml").read_text(encoding="utf-8"))
        item = next(entry for entry in menu["entry"] if entry.get("item") == "mnu_version")
        self.assertEqual({item[language] for language in ("de", "nl", "en", "es", "fr")},
                         {f"V{int(project[1]):02}_{int(project[2]):02}"})


if __name__ == "__main__":
    unittest.main()
