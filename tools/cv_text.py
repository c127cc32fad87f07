"""Checks of the texts in data/cv: five languages, each fit for one field of an installed file."""

import re

from text_file import UnfitText, encode_line, refuse_open_range

LANGUAGES = ("de", "nl", "en", "es", "fr")
# What fits beside the list in the window at its smallest.
NAME_LENGTH = 45
# The first sentence of an expert text stands alone in the list.
LEAD_LENGTH = 90


def refuse_unknown(source, table, known, *where):
    for key in table:
        if key not in known:
            raise source.error(f"unknown key '{key}'", *where, key)


def check_text(source, text, *where):
    if not isinstance(text, str) or not text.strip():
        raise source.error("empty text", *where)
    for forbidden, name in ((";", "semicolon"), ("$", "'$'")):
        if forbidden in text:
            raise source.error(f"{name} inside a text", *where)
    try:
        encode_line(text)
        refuse_open_range(where[-1], text)
    except UnfitText as error:
        raise source.error(str(error), *where) from error


def numbers_in(text):
    return sorted(re.findall("[0-9]+", text))


def check_languages(source, table, *where):
    if not isinstance(table, dict):
        raise source.error("expected one text per language", *where)
    refuse_unknown(source, table, LANGUAGES, *where)
    for language in LANGUAGES:
        if language not in table:
            raise source.error(f"translation '{language}' is missing", *where)
        check_text(source, table[language], *where, language)
        if numbers_in(table[language]) != numbers_in(table[LANGUAGES[0]]):
            raise source.error(f"'{language}' names other numbers than '{LANGUAGES[0]}'", *where, language)
        if where[-1] == "expert" and len(re.split(r"(?<=[.!?]) ", table[language])[0]) > LEAD_LENGTH:
            raise source.error(f"first sentence longer than {LEAD_LENGTH} characters", *where, language)
        if where[-1] == "name" and len(table[language]) > NAME_LENGTH:
            raise source.error(f"name longer than {NAME_LENGTH} characters", *where, language)
