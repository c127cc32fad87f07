"""What a CV is beside its texts: the groups it belongs to, the words of its values, and its unit.

A choice has a word for each of its values, a number may have some for special ones ("0 = off"). The words stand in the
text of the values, where people read them; `named` holds those of whole ranges.
"""

import re

from cv_text import LANGUAGES, NAME_LENGTH, check_languages

GROUPS = (
    "addresses", "mode", "driving", "automatic", "speed-table", "braking", "infrared", "identity", "keys", "outputs",
    "equipment", "lights", "brightness", "blue-light", "bus", "fire", "battery", "servo", "tacho", "lane", "trailer",
    "turnout", "recognition", "return-times", "identification", "reset",
)  # fmt: skip
UNIT = re.compile(r"[1-9][0-9]* (ms|s|mV|mm)|0[.][0-9]*[1-9] s|1/255")
RANGE = re.compile(r"([0-9]+)(?:-([0-9]+))?")
WORD = re.compile(r"([0-9]+) = (.+)")


KINDS = {"group": list, "choice": list, "special": list, "unit": str, "named": dict}


def check_kind(source, block, *where):
    for key, kind in KINDS.items():
        if not isinstance(block.get(key, kind()), kind):
            raise source.error(f"'{key}' has a value of the wrong kind", *where, key)
    for index, group in enumerate(block.get("group", [])):
        if group not in GROUPS:
            raise source.error(f"unknown group '{group}'", *where, "group")
        if group in block["group"][:index]:
            raise source.error(f"group '{group}' stands here for the second time", *where, "group")
    for weight, bit in block.get("bits", {}).items():
        if bit.get("group", GROUPS[0]) not in GROUPS:
            raise source.error(f"unknown group '{bit['group']}'", *where, "bits", weight)
    for key in ("choice", "special"):
        if any(type(value) is not int for value in block.get(key, [])):
            raise source.error(f"'{key}' lists values", *where, key)
    if not UNIT.fullmatch(block.get("unit", "1/255")):
        raise source.error(f"unknown unit '{block['unit']}'", *where, "unit")
    for key, words in block.get("named", {}).items():
        if not RANGE.fullmatch(key):
            raise source.error(f"'{key}' is neither a value nor a range", *where, "named", key)
        if words:
            check_languages(source, without_first(words), *where, "named", key)


def without_first(words):
    return {key: text for key, text in words.items() if key != "first"}


def spoken_words(row, language):
    """The words in the text of the values: "0 = off, 1 = on" gives {0: "off", 1: "on"}."""
    parts = [WORD.fullmatch(part) for part in row.values["values"][language].split(", ")]
    return {int(part[1]): part[2] for part in parts if part}


def words_of(row, language):
    """The words of single values, in their order; raises SourceError where a language lacks one."""
    words = {}
    spoken = spoken_words(row, language)
    for value in (*row.values.get("choice", []), *row.values.get("special", [])):
        if value not in spoken:
            raise row.error(f"'{language}' has no word for {value} in 'values'", "values")
        words[value] = spoken[value]
    for key, texts in row.values.get("named", {}).items():
        first, last = RANGE.fullmatch(key).groups()
        for value in range(int(first), int(last or first) + 1):
            count = value - int(first) + texts.get("first", int(first))
            words[value] = texts[language].replace("{n}", str(count))
    return dict(sorted(words.items()))


def is_choice(row):
    return "choice" in row.values or bool(row.values.get("named"))


def check_words(row):
    """The words fit the limits, and a choice has one for its factory value."""
    if "special" in row.values and is_choice(row):
        raise row.error("a choice has no special values", "special")
    if "unit" in row.values and is_choice(row):
        raise row.error("a choice has no unit", "unit")
    words = {language: words_of(row, language) for language in LANGUAGES}
    for value, word in words[LANGUAGES[0]].items():
        if not row.values["lower"] <= value <= row.values["upper"]:
            raise row.error(f"'{word}' is the word of {value}, which lies outside the limits")
    if is_choice(row) and row.values["factory"] not in words[LANGUAGES[0]]:
        raise row.error(f"the factory value {row.values['factory']} has no word")
    for word in (word for texts in words.values() for word in texts.values()):
        if "|" in word or len(word) > NAME_LENGTH:
            raise row.error(f"'{word}' is no word of a value: it has a bar or more than {NAME_LENGTH} characters")


# The fields of a description


def group_field(row):
    """The groups of a CV, then those of single switches with the sum of their weights: "mode,infrared:1"."""
    switches = {}
    for weight, bit in row.values["bits"].items():
        if "group" in bit:
            switches[bit["group"]] = switches.get(bit["group"], 0) + int(weight)
    groups = [*row.values.get("group", []), *(f"{group}:{bits}" for group, bits in switches.items())]
    return "group=" + ",".join(groups) if groups else ""


def words_field(row, language):
    words = "|".join(f"{value}:{word}" for value, word in words_of(row, language).items())
    return f"{'choice' if is_choice(row) else 'special'}={words}" if words else ""


def unit_field(row):
    return f"unit={row.values['unit']}" if "unit" in row.values else ""
