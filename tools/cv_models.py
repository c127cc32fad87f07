"""What data/cv knows of the CVs: `Models` loads a model with all it takes over from its base, and checks it.

A row (all that is known of one CV) may be refined from base to model key by key. Every fault is a SourceError that
names the file and the line of the block.
"""

from cv_kinds import check_kind, check_words
from cv_outputs import Outputs
from cv_text import LANGUAGES, check_languages, check_text, refuse_unknown
from text_file import TomlSource

WEIGHTS = ("1", "2", "4", "8", "16", "32", "64", "128")
TEXTS = ("name", "help", "values", "advice", "expert")
NUMBERS = ("default", "lower", "upper", "factory")

# The program's CV table ends here, a decoder's description covers at least this.
TABLE_ROWS = 256
DECODER_ROWS = 176

# What field 14 can say of a CV: the decoder alone decides its value, or the receivers' firmware has it from one of
# these releases on. They are named as in the names of the installed files, oldest first.
RELEASES = ("010915", "240216", "240216_neu", "270222")
MARKS = ("read-only", *(f"from={release}" for release in RELEASES))

SPEED_STEPS = 28
# Below 4, CV73 means to the program that the decoder has no speed table.
CV_OF_GENERATION = 73
CV_OF_GENERATION_LOWEST = 5
LOWEST_FIRST_STEP = 3

MODEL_KEYS = {"name", "header", "base", "adds", "abstract", "rows", "remove", "release", "top_speed", "speed_steps"}
ADDITION_KEYS = {"name", "rows", "remove", "top_speed", "speed_steps"}
KIND = ("group", "unit", "choice", "special", "named")
CV_KEYS = {"number", "bits", "mark", *KIND, *NUMBERS, *TEXTS}
SERIES_KEYS = CV_KEYS - {"number"} | {"from", "to", "first"}


class Row:
    """What is known of one CV; `values` holds numbers, and texts by language, under their keys in the source.

    Over a base, a value replaces the base's; bits and named values do so one by one, an empty one takes the base's
    away. A default without a factory value is the factory value too.
    """

    def __init__(self, source, where, values, base=None):
        self.source = source
        self.where = where
        self.values = dict(base.values) if base else {}
        merged = {key: {**self.values.get(key, {}), **values.get(key, {})} for key in ("bits", "named")}
        self.values.update(values)
        for key, texts in merged.items():
            self.values[key] = {name: words for name, words in texts.items() if words}
        if "default" in values:
            self.values["factory"] = values.get("factory", values["default"])

    def error(self, message, *key):
        return self.source.error(message, *self.where, *key)


class Model:
    """A model merged with its base: `settings` of its [model] table, `rows` by CV number, `unused` for all others."""

    def __init__(self, source, base):
        self.source = source
        self.settings = {**(base.settings if base else {}), "abstract": False, **source.data["model"]}
        self.rows = dict(base.rows) if base else {}
        self.unused = base.unused if base else None
        self.remarks = list(base.remarks) if base else []

    def copy(self):
        return Model(self.source, self)

    def take(self, source):
        """Puts what a source says over what the model has."""
        for number in source.data["model"].get("remove", []):
            if self.rows.pop(number, None) is None:
                raise source.error(f"CV{number} has no meaning that could be removed", "model", "remove")
        if "unused" in source.data:
            check_block(source, source.data["unused"], set(TEXTS), "unused")
            self.unused = Row(source, ("unused",), source.data["unused"])
        add_rows(self, source)
        self.remarks += own_remarks(self, source)
        if "release" in source.data["model"]:
            self.leave_out_later(source.data["model"]["release"])

    def leave_out_later(self, release):
        """Takes away the CVs that are marked as those of a later firmware."""
        later = {f"from={name}" for name in RELEASES[RELEASES.index(release) + 1 :]}
        self.rows = {number: row for number, row in self.rows.items() if not later & set(row.values.get("mark", []))}

    def add_advice(self, number, sentence):
        row = self.rows[number]
        own = row.values.get("advice", {})
        advice = {language: f"{own.get(language, '')} {sentence[language]}".strip() for language in LANGUAGES}
        self.rows[number] = Row(row.source, row.where, {"advice": advice}, row)

    @property
    def rows_count(self):
        return self.settings.get("rows", max(self.rows, default=0))

    def error(self, message, *key):
        return self.source.error(message, "model", *key)


# Reading the sources


def check_marks(source, marks, *where):
    if not isinstance(marks, list):
        raise source.error("expected a list of marks", *where)
    for mark in marks:
        if mark not in MARKS:
            raise source.error(f"unknown mark '{mark}'", *where)


def check_needed(source, table, *where):
    needed = table.get("needs", 1)
    if type(needed) is not int:
        raise source.error("'needs' names one CV", *where, "needs")
    check_number(source, needed, *where, "needs")


def words_of(table):
    """The texts of a bit or a remark, without what they are for."""
    return {key: text for key, text in table.items() if key not in ("cvs", "needs", "group")}


def check_block(source, block, known, *where):
    refuse_unknown(source, block, known, *where)
    for key in known - {"bits", "mark", *KIND, *TEXTS} & block.keys():
        if type(block[key]) is not int:
            raise source.error(f"'{key}' is no whole number", *where, key)
    for key in TEXTS:
        if key in block:
            check_languages(source, block[key], *where, key)
    check_marks(source, block.get("mark", []), *where, "mark")
    if not isinstance(block.get("bits", {}), dict):
        raise source.error("expected bits by weight", *where, "bits")
    for weight, texts in block.get("bits", {}).items():
        if weight not in WEIGHTS:
            raise source.error(f"unknown bit '{weight}'", *where, "bits", weight)
        if texts != {}:
            check_needed(source, texts, *where, "bits", weight)
            check_languages(source, words_of(texts), *where, "bits", weight)
    check_kind(source, block, *where)


def check_settings(source):
    own = source.data["model"]
    kinds = {"rows": int, "top_speed": int, "abstract": bool, "name": str, "base": str, "header": str, "release": str}
    lists = {"remove": int, "speed_steps": int, "adds": str}
    for key, value in own.items():
        if key in kinds and type(value) is not kinds[key]:
            raise source.error(f"'{key}' has a value of the wrong kind", "model", key)
        if key in lists and (type(value) is not list or any(type(member) is not lists[key] for member in value)):
            raise source.error(f"'{key}' has a value of the wrong kind", "model", key)
    if own.get("release", RELEASES[0]) not in RELEASES:
        raise source.error(f"unknown release '{own['release']}'", "model", "release")


def check_number(source, number, *where):
    if not 1 <= number <= TABLE_ROWS:
        raise source.error(f"CV{number} is beyond the table (1 to {TABLE_ROWS})", *where)


def with_number(table, number):
    return {language: text.replace("{n}", str(number)) for language, text in table.items()}


def expand_series(block):
    """Yields CV number and values of each member; `{n}` in the texts counts from `first` on, whichever way CVs run."""
    step = 1 if block["to"] >= block["from"] else -1
    for index, number in enumerate(range(block["from"], block["to"] + step, step)):
        values = {key: block[key] for key in (*NUMBERS, *KIND, "mark", "bits") if key in block}
        for key in TEXTS:
            if key in block:
                values[key] = with_number(block[key], block.get("first", 1) + index)
        yield number, values


def own_rows(source):
    """Yields number, values and place of each row that the file itself lists."""
    for index, block in enumerate(source.data.get("series", [])):
        check_block(source, block, SERIES_KEYS, "series", index)
        for key in ("from", "to"):
            if key not in block:
                raise source.error(f"'{key}' is missing", "series", index)
        for number, values in expand_series(block):
            yield number, values, ("series", index)
    for index, block in enumerate(source.data.get("cv", [])):
        check_block(source, block, CV_KEYS, "cv", index)
        if "number" not in block:
            raise source.error("'number' is missing", "cv", index)
        yield block["number"], {key: block[key] for key in block if key != "number"}, ("cv", index)


def add_rows(model, source):
    """Puts the file's rows over those of its base. A [[cv]] block refines a member of a series of the same file."""
    seen = set()
    for number, values, where in own_rows(source):
        check_number(source, number, *where)
        if (number, where[0]) in seen:
            raise source.error(f"CV{number} stands here for the second time", *where)
        seen.add((number, where[0]))
        model.rows[number] = Row(source, where, values, model.rows.get(number))


def own_remarks(model, source):
    """The sentences that the file adds to the advice on several CVs, where the model has the CV they speak of."""
    for index, remark in enumerate(source.data.get("remark", [])):
        check_needed(source, remark, "remark", index)
        check_languages(source, words_of(remark), "remark", index)
        for number in remark.get("cvs", [None]):
            if number not in model.rows:
                raise source.error(f"a remark on CV{number}, which has no meaning here", "remark", index, "cvs")
    return source.data.get("remark", [])


def has_needed(model, table):
    return table.get("needs", next(iter(model.rows), None)) in model.rows


def leave_out_bits(model):
    """Takes away the bits that only act with a CV that the model lacks, also from the values it comes with."""
    for number, row in model.rows.items():
        bits = row.values["bits"]
        lost = {weight: {} for weight, texts in bits.items() if not has_needed(model, texts)}
        if lost:
            kept = ~sum(int(weight) for weight in lost)
            numbers = {key: row.values[key] & kept for key in ("default", "factory")}
            model.rows[number] = Row(row.source, row.where, {"bits": lost, **numbers}, row)


def add_remarks(model):
    for remark in model.remarks:
        for number in remark["cvs"]:
            if number in model.rows and has_needed(model, remark):
                model.add_advice(number, remark)


def add_speed_steps(model):
    """Lets the speed table rule the rows that hold it: their values, and the top speed as their upper limit."""
    steps = model.settings.get("speed_steps")
    if steps is None:
        return
    for step, value in enumerate(steps, start=1):
        row = model.rows.get(98 - step)
        if row:
            numbers = {"default": value, "upper": model.settings["top_speed"]}
            model.rows[98 - step] = Row(row.source, row.where, numbers, row)


class Models:
    """The models of a source folder, each loaded once with its base below it. What follows from a model's rows is
    added when it is asked for by name: those that stand on it may have other rows."""

    def __init__(self, folder):
        self.folder = folder
        self.loaded = {}
        self.outputs = Outputs(TomlSource(folder / "outputs.toml"))

    def __getitem__(self, name):
        if name not in self.loaded:
            self.loaded[name] = None
            self.loaded[name] = self.load(name)
        return self.loaded[name]

    def complete(self, name):
        model = self[name].copy()
        if not model.settings["abstract"]:
            complete(model, self.outputs)
            check_model(model)
        return model

    def knows(self, name):
        return (self.folder / f"{name}.toml").is_file()

    def load(self, name):
        source = self.read(name, MODEL_KEYS)
        model = Model(source, self.base_of(source))
        for addition in source.data["model"].get("adds", []):
            self.add(model, addition)
        model.take(source)
        return model

    def add(self, model, name):
        """Puts an addition, what generations of several models have alike, over the model's base."""
        if not self.knows(name):
            raise model.error(f"no addition '{name}'", "adds")
        source = self.read(name, ADDITION_KEYS)
        model.settings = {**model.settings, **source.data["model"], **model.source.data["model"]}
        model.take(source)

    def read(self, name, keys):
        source = TomlSource(self.folder / f"{name}.toml")
        refuse_unknown(source, source.data, {"model", "unused", "cv", "series", "remark"})
        own = source.data.setdefault("model", {})
        refuse_unknown(source, own, keys, "model")
        check_settings(source)
        if own.get("name") != name:
            raise source.error(f"the model's name must be '{name}', as its file", "model", "name")
        return source

    def base_of(self, source):
        base = source.data["model"].get("base")
        if base is None:
            return None
        if not self.knows(base):
            raise source.error(f"no model '{base}'", "model", "base")
        if base in self.loaded and self.loaded[base] is None:
            raise source.error(f"'{base}' is based on this model", "model", "base")
        return self[base]


# What must hold of a merged model


def complete(model, outputs):
    """What follows from the rows together."""
    leave_out_bits(model)
    add_remarks(model)
    outputs.add_remarks(model)


def check_model(model):
    if "header" not in model.settings:
        raise model.error("'header' is missing")
    check_text(model.source, model.settings["header"], "model", "header")
    if not 1 <= model.rows_count <= TABLE_ROWS:
        raise model.error(f"rows beyond the table (1 to {TABLE_ROWS})", "rows")
    check_speed_steps(model)
    add_speed_steps(model)
    for number, row in model.rows.items():
        if number > model.rows_count:
            raise row.error(f"CV{number} lies beyond the {model.rows_count} rows of '{model.settings['name']}'")
        check_row(row)
    if len(model.rows) < model.rows_count and model.unused is None:
        raise model.error("no text for CVs without a meaning ([unused])")


def require(row, *keys):
    for key in keys:
        if key not in row.values:
            raise row.error(f"'{key}' is missing")


def check_row(row):
    require(row, "name", "help", "values", *NUMBERS)
    lower, upper = row.values["lower"], row.values["upper"]
    if not 0 <= lower <= upper <= 255:
        raise row.error(f"limits {lower} to {upper} are none of a byte")
    for key in ("default", "factory"):
        if not lower <= row.values[key] <= upper:
            raise row.error(f"{key} {row.values[key]} lies outside {lower} to {upper}", key)
    bits = sum(int(weight) for weight in row.values["bits"])
    if bits > upper:
        raise row.error(f"the bits together are above the upper limit {upper}", "bits")
    if bits and row.values["factory"] & ~bits:
        raise row.error(f"the factory value {row.values['factory']} sets a bit without a meaning", "factory")
    check_words(row)


def check_speed_steps(model):
    """A decoder has a speed table and its full set of rows; a receiver has neither."""
    steps = model.settings.get("speed_steps")
    if steps is None:
        return
    if model.rows_count < DECODER_ROWS:
        raise model.error(f"a decoder's rows reach from 1 to {DECODER_ROWS} at least", "rows")
    if len(steps) != SPEED_STEPS:
        raise model.error(f"expected {SPEED_STEPS} speed steps", "speed_steps")
    if any(faster <= slower for slower, faster in zip(steps, steps[1:])):
        raise model.error("the speed steps do not rise", "speed_steps")
    if steps[0] < LOWEST_FIRST_STEP:
        raise model.error(f"speed step 1 is below {LOWEST_FIRST_STEP}", "speed_steps")
    if steps[98 - CV_OF_GENERATION - 1] < CV_OF_GENERATION_LOWEST:
        raise model.error(f"CV{CV_OF_GENERATION} is below {CV_OF_GENERATION_LOWEST}", "speed_steps")
    if steps[-1] > model.settings.get("top_speed", 0):
        raise model.error("speed step 28 is above the top speed", "speed_steps")
