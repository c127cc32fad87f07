"""Which light hangs at which output: data/cv/outputs.toml, and what the CVs say about it."""

import re

from cv_text import LANGUAGES, check_languages, refuse_unknown


def texts_of(row, language):
    """All that a person reads of a CV before the advice."""
    bits = [texts[language] for texts in row.values["bits"].values()]
    return [row.values[key][language] for key in ("name", "help", "values") if key in row.values] + bits


class Outputs:
    """The lights of outputs.toml: their names, and the number of the output that each hangs at where it is known."""

    def __init__(self, source):
        self.source = source
        refuse_unknown(source, source.data, {"light", "known", "unknown"})
        for key in ("known", "unknown"):
            check_languages(source, source.data.get(key, {}), key)
        self.lights = source.data.get("light", [])
        for index, light in enumerate(self.lights):
            if type(light.get("output", 0)) is not int:
                raise source.error("'output' is a number", "light", index, "output")
            check_languages(source, self.name(light), "light", index)

    @staticmethod
    def name(light):
        return {key: text for key, text in light.items() if key != "output"}

    def add_remarks(self, model):
        """Whatever names a light without a known output says so in its advice."""
        for number, row in list(model.rows.items()):
            self.check_numbered(row)
            named = [light for light in self.lights if "output" not in light and self.names(row, light)]
            if named:
                sentence = {language: text.replace("{lights}", ", ".join(light[language] for light in named))
                            for language, text in self.source.data["unknown"].items()}
                model.add_advice(number, sentence)

    def names(self, row, light):
        """Whether the row's texts name the light; raises SourceError where a language calls it otherwise."""
        if not is_named(row, light, LANGUAGES[0]):
            return False
        for language in LANGUAGES:
            if not is_named(row, light, language):
                raise row.error(f"'{language}' does not name '{light[language]}', as '{LANGUAGES[0]}' does")
        return True

    def check_numbered(self, row):
        """A text "Ausgang 3, Bremslicht" is the table's."""
        for key in ("bits", "named"):
            for name, texts in row.values[key].items():
                self.check_texts(row, texts, key, name)

    def check_texts(self, row, texts, *where):
        for light in self.lights:
            expected = self.numbered(light)
            if texts[LANGUAGES[0]].startswith(expected[LANGUAGES[0]].split(",")[0] + ","):
                for language in LANGUAGES:
                    if texts[language].lower() != expected[language].lower():
                        raise row.error(f"expected '{expected[language]}'", *where)

    def numbered(self, light):
        known = self.source.data["known"]
        number = str(light.get("output", "-"))
        return {key: known[key].replace("{n}", number).replace("{light}", light[key]) for key in LANGUAGES}


def is_named(row, light, language):
    pattern = rf"\b{re.escape(light[language])}\b"
    return any(re.search(pattern, text, re.IGNORECASE) for text in texts_of(row, language))
