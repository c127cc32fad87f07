#!/usr/bin/env python3
"""Changes single lines of the logic and tells whether a test notices.

    mutate.py --save FILE        draw and run the mutants, keep them with their fate in FILE
    mutate.py --again FILE       run exactly these once more, against the tests of today
    mutate.py --list             print what would be drawn
    mutate.py --only src/link/read.cpp:57   run what can be done to one line

A mutant is one line of a logic room, changed by a fixed rule: a comparison turned, a constant off by one, a condition
negated, a statement left out, a return value changed. All lines of the rooms are candidates; a fixed seed puts the
candidates of each rule into an order, and of each rule the first ones that compile are taken, the same number of each.

Each mutant is built in a copy of the checkout under build/mutants. The tests of its room run first, then those of the
rooms that stand on it, until a case fails, crashes or does not end. A case counts when it fails once more alone, and one
of another room three times: some of these measure real time, and this runs for hours on a machine with other work. Exit
code 0 when at least --aim per cent are killed.
"""

import argparse
import json
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from collections import Counter
from dataclasses import asdict, dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
# The simulator is left out: it is what the tests measure with.
ROOMS = ["program", "language", "link", "cvdata", "workbench", "editors", "firmware"]
# In this order after the room's own: what is fast and near comes first, what measures real time last.
TESTS = [*ROOMS, "simulator", "cli", "platform", "ui", "shell"]
CASE_SECONDS = 60  # for a case alone; the longest takes a tenth of it
MEMORY = 4 << 30  # bytes, for each program of tests: an endless loop that collects ends here
NEAR = 80  # lines: how far a saved mutant's line may have moved
OPERATORS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}


def comparison_turned(line):
    for match in re.finditer(r" (<=|>=|==|!=|<|>) ", line):
        yield line[: match.start(1)] + OPERATORS[match[1]] + line[match.end(1) :]


def constant_off_by_one(line):
    for match in re.finditer(r"(?<![\w.'\"])(\d+)(?![\w.'\"])", line):
        yield f"{line[:match.start()]}{int(match[1]) + 1}{line[match.end():]}"
    for match in re.finditer(r"\b0x([0-9A-Fa-f]+)\b", line):
        yield f"{line[:match.start()]}0x{int(match[1], 16) + 1:x}{line[match.end():]}"


def condition_negated(line):
    match = re.fullmatch(r"(\s*(?:(?:\} )?else )?(?:if|while) \()(.*)(\)(?: \{)?)", line)
    if match and is_balanced(match[2]) and not re.search(r"(?<![=!<>])=(?!=)", match[2]):
        yield f"{match[1]}!({match[2]}){match[3]}"


def statement_left_out(line):
    match = re.fullmatch(r"(\s+)([\w:.>()\[\]*-]+(?:\(.*\)| (?:[-+|&]?=) .*)|\+\+\w+|--\w+);", line)
    if not match or not is_balanced(match[2]) or ".reserve(" in line:  # a reserve changes the speed alone
        return
    if not re.match(r"(return|throw|using|break|continue|else|case)\b", match[2]):
        yield f"{match[1]};"


def return_value_changed(line):
    match = re.fullmatch(r"(\s*return )(.+);", line)
    if not match or not is_balanced(match[2]):
        return
    value = match[2]
    if value in ("true", "false"):
        yield f"{match[1]}{'false' if value == 'true' else 'true'};"
    elif re.search(r" (<=|>=|==|!=|<|>|&&|\|\|) ", value) and "?" not in value:
        yield f"{match[1]}!({value});"
    elif value not in ("{}", "0", "nullptr", "std::nullopt"):
        yield f"{match[1]}{{}};"


RULES = {
    "comparison turned": comparison_turned,
    "constant off by one": constant_off_by_one,
    "condition negated": condition_negated,
    "statement left out": statement_left_out,
    "return value changed": return_value_changed,
}


def is_balanced(text):
    depth = 0
    for character in text:
        depth += {"(": 1, ")": -1, "{": 1, "}": -1}.get(character, 0)
        if depth < 0:
            return False
    return depth == 0


def is_code(line):
    """Comments, includes and texts are no code; what a static_assert says the compiler notices."""
    return not re.match(r"\s*(//|\*|#|static_assert|using |namespace |$)", line) and '"' not in line


@dataclass
class Mutant:
    path: str  # from the root, with "/"
    number: int  # of the line, from 1
    rule: str
    before: str
    after: str
    fate: str = ""  # "killed by ROOM: CASE", "survived", "gone", "does not build"

    @property
    def room(self):
        return self.path.split("/")[1]

    def __str__(self):
        return f"{self.path}:{self.number}: {self.rule}: {self.before.strip()}  ->  {self.after.strip()}"


def mutants_of_line(path, number, line):
    code = re.split(r" +// ", line)[0].rstrip()
    if is_code(line):
        for rule, change in RULES.items():
            for changed in change(code):
                yield Mutant(path, number, rule, line, changed)


def candidates(root):
    for room in ROOMS:
        for path in sorted((root / "src" / room).glob("*.cpp")):
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                yield from mutants_of_line(path.relative_to(root).as_posix(), number, line)


def shuffled_by_rule(mutants, seed):
    """By rule, the mutants in the order in which they are tried. Each line is changed once at most by a rule."""
    order = {}
    for rule in RULES:
        of_rule = [mutant for mutant in mutants if mutant.rule == rule]
        random.Random(f"{seed} {rule}").shuffle(of_rule)
        order[rule] = list({(mutant.path, mutant.number): mutant for mutant in reversed(of_rule)}.values())[::-1]
    return order


def find_again(root, saved):
    """A saved mutant in today's source: the line with its text that is nearest to its number; None when there is none."""
    path = root / saved.path
    lines = path.read_text(encoding="utf-8").splitlines() if path.exists() else []
    numbers = [number for number, line in enumerate(lines, 1) if line == saved.before]
    number = min(numbers, key=lambda number: abs(number - saved.number), default=None)
    if number is None or abs(number - saved.number) > NEAR:
        return None
    return Mutant(saved.path, number, saved.rule, saved.before, saved.after)


class Copy:
    """A built copy of the checkout, in which one line at a time is another."""

    def __init__(self, root, folder):
        self.source, self.build = folder / "source", folder / "build"
        self.seconds = {}  # by room: what its tests take without a mutant
        self._take_over(root)
        if not (self.build / "build.ninja").exists():
            subprocess.run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                            "-DCMAKE_CXX_FLAGS_DEBUG=-O0"], check=True, stdout=subprocess.DEVNULL)
        if not self.make("all"):
            sys.exit("The unchanged source does not build.")
        self._check_unchanged()

    def _take_over(self, root):
        names = subprocess.run(["git", "-C", root, "ls-files", "-z"], check=True, capture_output=True).stdout
        wanted = {name for name in names.decode().split("\0") if name and (root / name).is_file()}
        for name in wanted:
            target = self.source / name
            target.parent.mkdir(parents=True, exist_ok=True)
            if not target.exists() or target.read_bytes() != (root / name).read_bytes():
                shutil.copy(root / name, target)
        for path in [path for path in self.source.rglob("*") if path.is_file()]:
            if path.relative_to(self.source).as_posix() not in wanted:
                path.unlink()

    def _check_unchanged(self):
        for room in TESTS:
            began = time.monotonic()
            if case := self.failing_case(room):
                sys.exit(f"Without a mutant {room}: {case} fails.")
            self.seconds[room] = time.monotonic() - began

    def make(self, target):
        return subprocess.run(["ninja", "-C", self.build, "--quiet", target], stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def program(self, room):
        return self.build / "tests" / room / f"{room}_tests"

    def run_tests(self, room, cases, seconds):
        """The case in which the run failed, crashed or did not end; None when it passed."""
        command = [self.program(room), f"--gtest_filter={cases}", "--gtest_fail_fast"]
        with tempfile.TemporaryFile() as output:
            process = subprocess.Popen(
                command, stdout=output, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, start_new_session=True,
                env={**os.environ, "QT_QPA_PLATFORM": "offscreen"},
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY)))
            try:
                if process.wait(timeout=seconds) == 0:
                    return None
            except subprocess.TimeoutExpired:
                pass
            finally:
                kill_group(process)
            output.seek(0)
            text = output.read().decode(errors="replace")
        # With fail_fast all further cases of the suite are begun too, and skipped. A crash leaves its case begun.
        failed = re.findall(r"^\[  FAILED  \] ([^\s,]+)", text, re.MULTILINE)[:1]
        begun = re.findall(r"^\[ RUN      \] (\S+)", text, re.MULTILINE)[-1:]
        return (failed or begun or ["*"])[0]

    def failing_case(self, room, more=1):
        """A case that fails, and so many times more alone; None when there is none."""
        passing = []
        while True:
            limit = 60 + 6 * self.seconds.get(room, 60)
            case = self.run_tests(room, "-" + ":".join(passing), limit)
            if case is None or all(self.run_tests(room, case, CASE_SECONDS) for _ in range(more)):
                return case
            passing.append(case)
            if len(passing) > 5:
                return None

    def set_line(self, mutant, text):
        path = self.source / mutant.path
        lines = path.read_text(encoding="utf-8").splitlines(keepends=True)
        lines[mutant.number - 1] = text + "\n"
        path.write_text("".join(lines), encoding="utf-8")

    def fate_of(self, mutant):
        self.set_line(mutant, mutant.after)
        try:
            for room in sorted(TESTS, key=lambda room: room != mutant.room):
                before = self.program(room).stat().st_mtime_ns
                if not self.make(f"{room}_tests"):
                    return "does not build"
                stands_on_it = self.program(room).stat().st_mtime_ns != before
                if stands_on_it and (case := self.failing_case(room, 1 if room == mutant.room else 3)):
                    return f"killed by {room}: {case}"
            return "survived"
        finally:
            self.set_line(mutant, mutant.before)


def kill_group(process):
    """With whatever it started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()


def run(copy, order, count_of_rule, keep):
    """Runs the first mutants of each rule that build. `keep` gets all of them after each."""
    results = []
    for mutants in order.values():
        taken = 0
        for mutant in mutants:
            if taken == count_of_rule:
                break
            began = time.monotonic()
            mutant.fate = mutant.fate or copy.fate_of(mutant)
            if mutant.fate == "does not build":
                continue
            taken += 1
            results.append(mutant)
            keep(results)
            print(f"{time.monotonic() - began:5.1f} s  {mutant.fate}  {mutant}", flush=True)
    return results


def summary(results):
    """Per cent killed of those that could be run, and the words."""
    ran = [mutant for mutant in results if mutant.fate != "gone"]
    killed = [mutant for mutant in ran if mutant.fate.startswith("killed")]
    share = 100 * len(killed) / max(1, len(ran))
    lines = [f"{len(ran)} mutants, {len(killed)} killed ({share:.1f} %), {len(ran) - len(killed)} survived, "
             f"{len(results) - len(ran)} gone"]
    of_rule = Counter(mutant.rule for mutant in ran)
    lines += [f"  {rule}: {count} of {of_rule[rule]}" for rule, count in Counter(m.rule for m in killed).items()]
    lines += [f"  {mutant.fate}: {mutant}" for mutant in results if not mutant.fate.startswith("killed")]
    return share, "\n".join(lines)


def saved_mutants(path):
    for fields in json.loads(path.read_text(encoding="utf-8")):
        saved = Mutant(**fields)
        saved.fate = "gone"
        yield find_again(ROOT, saved) or saved


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--count", type=int, default=150, help="how many mutants, spread evenly over the rules")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--aim", type=float, default=90.0, help="per cent that have to be killed")
    parser.add_argument("--save", type=Path, metavar="FILE", help="keep the mutants with their fate (JSON)")
    parser.add_argument("--again", type=Path, metavar="FILE", help="run the mutants of a file that --save made")
    parser.add_argument("--only", metavar="FILE:LINE", help="all that can be done to one line")
    parser.add_argument("--list", action="store_true", help="print the order of trying, run nothing")
    parser.add_argument("--folder", type=Path, default=ROOT / "build" / "mutants", help="where the copy is built")
    arguments = parser.parse_args()

    each = arguments.count // len(RULES)
    if arguments.again:
        order = {"": list(saved_mutants(arguments.again))}
    elif arguments.only:
        order = {"": [m for m in candidates(ROOT) if f"{m.path}:{m.number}" == arguments.only]}
    else:
        order = shuffled_by_rule(list(candidates(ROOT)), arguments.seed)
    if "" in order:
        each = len(order[""])
    if arguments.list:
        for of_rule in order.values():
            print(*of_rule[:each], sep="\n")
        return 0

    def keep(results):
        if arguments.save:
            text = json.dumps([asdict(mutant) for mutant in results], indent=1, ensure_ascii=False)
            arguments.save.write_text(text + "\n", encoding="utf-8")

    share, text = summary(run(Copy(ROOT, arguments.folder), order, each, keep))
    print(text)
    return 0 if share >= arguments.aim else 1


if __name__ == "__main__":
    sys.exit(main())
