#!/usr/bin/env python3
"""Drives the programs over a serial line with a simulated decoder on it, and compares every byte.

    end_to_end.py --programs build/dev/program                       the programs of this system
    end_to_end.py --programs build/windows/program --wine wine64 --simulator build/dev/program/karvo-sim

A copy of the program folder is run, with settings of its own: language and port are stored before the first start. Under
Wine this is a prefix of its own, made anew or that of --prefix, and COM5 is a link to the simulator's device; elsewhere
--map-port leads there. Each step is a command of karvo-cli, and the last one the window of karvo with --read, which is
closed once its read is over. Of each step tests/data/end_to_end holds the exit code, the output and what passed the line:
every command, and every byte of the replies. Exit code 0 when all is as it stands there.

Without a display the window runs on Qt's offscreen platform: QT_QPA_PLATFORM=offscreen, under Wine WINEQT_QPA_PLATFORM.
"""

import argparse
import difflib
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
EXPECTED = ROOT / "tests/data/end_to_end"
STEPS = {
    "identify": ["identify"],
    "read": ["read"],
    "write": ["write", "CV100=200"],
    "flash": ["flash", "image.hex"],
}
WINDOW = "window"
STORED = {"Language": "3", "Com_Port": "5"}  # English, COM5
BAUD = 4800
BITS_PER_BYTE = 10
STEP_SECONDS = 120


class Native:
    """The programs of this system, with everything that they store below `folder`."""

    closed = -signal.SIGTERM

    def __init__(self, folder, device):
        self.device = device
        places = {name: str(folder / "home") for name in ("HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME")}
        self.environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", **places}
        settings = folder / "home/Karvo/Karvo.conf"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Parameter]\n" + "".join(f"{key}={value}\n" for key, value in STORED.items()))

    def call(self, program, arguments):
        return [f"./{program}", *arguments, "--map-port", f"COM5={self.device}"]

    def close(self, process):
        process.terminate()

    def end(self):
        pass


class Wine:
    """Windows programs, in a prefix of its own."""

    closed = 0  # Wine's own taskkill ends it so even by force

    def __init__(self, wine, prefix, device):
        self.wine = wine
        self.environment = {**os.environ, "WINEPREFIX": str(prefix), "HOME": str(prefix), "WINEARCH": "win64",
                            "WINEDEBUG": "-all", "WINEDLLOVERRIDES": "winedbg.exe=d;winemenubuilder.exe=d"}
        offscreen = os.environ.get("WINEQT_QPA_PLATFORM") == "offscreen"
        self.closing = ["taskkill", "/IM", "karvo.exe"] + (["/F"] if offscreen else [])
        prefix.mkdir(parents=True, exist_ok=True)
        # A server that stays, with streams of its own: else each call waits seconds for the services of Wine.
        self.server("-p")
        self.quietly("wineboot", "-i")
        port = prefix / "dosdevices/com5"
        port.unlink(missing_ok=True)
        port.symlink_to(device)
        for key, value in STORED.items():
            self.quietly("reg", "add", r"HKCU\Software\Karvo\Karvo\Parameter", "/v", key, "/d", value, "/f")

    def server(self, option):
        # Debian keeps it beside Wine's own programs, out of the path.
        names = ["wineserver64", "wineserver", "/usr/lib/wine/wineserver64"]
        found = next(filter(None, map(shutil.which, names)))
        subprocess.run([found, option], env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False)

    def quietly(self, *arguments):
        subprocess.run([self.wine, *arguments], env=self.environment, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True, timeout=STEP_SECONDS)

    def call(self, program, arguments):
        return [self.wine, f"{program}.exe", *arguments]

    def close(self, process):
        self.quietly(*self.closing)

    def end(self):
        self.server("-k")


class Simulator:
    """karvo-sim, and what has passed its line since the last look."""

    def __init__(self, program, pace, log):
        self.log = log
        self.seen = 0
        self.process = subprocess.Popen([program, "kv07", "--pace", pace, "--log", log], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, text=True)
        self.device = self.process.stdout.readline().strip()

    def lines(self):
        """Whole lines, each without its time, and the times of the same lines."""
        passed = self.log.read_text().splitlines(keepends=True)
        whole = [line.rstrip("\n").split(" ", 1) for line in passed if line.endswith("\n")]
        return [line for _, line in whole], [float(moment) for moment, _ in whole]

    def since_last_step(self):
        lines, _ = self.lines()
        new = lines[self.seen:]
        self.seen = len(lines)
        return [line for line in new if not line.startswith("- device ")]

    def end(self):
        self.process.terminate()
        return self.process.wait(timeout=STEP_SECONDS)


def bytes_of(lines):
    """How many bytes these lines of the log tell of."""
    return sum(len(line.split()) - 2 for line in lines)


def wire_seconds(count):
    return count * BITS_PER_BYTE / BAUD


def full_read(lines, times):
    """The seconds of a full read in the log, and those that its bytes take: from "%" to the next command."""
    at = max(i for i, line in enumerate(lines[:-2]) if line.startswith("> read ")) - 2
    return times[at + 4] - times[at], wire_seconds(bytes_of(lines[at:at + 4]))


def told(exit_code, output, lines):
    """A step as it stands in its file."""
    words = output.decode(errors="backslashreplace").replace("\r\n", "\n")
    return f"exit {exit_code}\n{words}-- line\n" + "".join(line + "\n" for line in lines)


def run_step(way, folder, arguments):
    process = subprocess.run(way.call("karvo-cli", arguments), cwd=folder, env=way.environment,
                             stdin=subprocess.DEVNULL, capture_output=True, check=False, timeout=STEP_SECONDS)
    if process.returncode != 0:
        sys.stderr.write(process.stderr.decode(errors="replace"))
    return process.returncode, process.stdout


def run_window(way, folder, simulator, pace):
    """The exit code as "closed" where the window was there until it was closed."""
    process = subprocess.Popen(way.call("karvo", ["--read"]), cwd=folder, env=way.environment,
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    end = time.monotonic() + STEP_SECONDS
    while process.poll() is None and time.monotonic() < end:
        new, _ = simulator.lines()
        if any(line.startswith("< block ") for line in new[simulator.seen:]):
            break
        time.sleep(0.05)
    # The block is on its way; then the window shows it, and nothing more is sent.
    time.sleep(1 + (wire_seconds(1025) if pace == "line" else 0))
    alive = process.poll() is None
    if alive:
        way.close(process)
    try:
        code = process.wait(timeout=STEP_SECONDS)
    except subprocess.TimeoutExpired:
        process.kill()
        code = "after it did not close"
    return "closed" if alive and code == way.closed else code


def compare(name, actual):
    """True where it is as it stands in its file; else the difference is printed."""
    expected = (EXPECTED / f"{name}.txt").read_text()
    if actual == expected:
        return True
    sys.stdout.writelines(difflib.unified_diff(expected.splitlines(True), actual.splitlines(True),
                                               f"{name}.txt", f"{name} as it went"))
    return False


def drive(way, folder, simulator, results, pace):
    sound = True
    for name in [*STEPS, WINDOW]:
        began = time.monotonic()
        code, output = ((run_window(way, folder, simulator, pace), b"") if name == WINDOW
                        else run_step(way, folder, STEPS[name]))
        seconds = time.monotonic() - began
        actual = told(code, output, simulator.since_last_step())
        right = compare(name, actual)
        (results / f"{name}.txt").write_text(actual)
        sound = sound and right
        print(f"{name}: {'as expected' if right else 'DIFFERS'}, {seconds:.2f} s", flush=True)
    return sound


def parsed():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--programs", type=Path, required=True, help="the program folder")
    parser.add_argument("--simulator", type=Path, help="karvo-sim, else that of the program folder")
    parser.add_argument("--wine", help="runs Windows programs, such as wine64")
    parser.add_argument("--prefix", type=Path, help="the Wine prefix, else a new one that is taken away afterwards; in a used "
                        "one each start was seen to take some ten seconds more")
    parser.add_argument("--pace", choices=["line", "none"], default="line", help="of the simulator")
    parser.add_argument("--results", type=Path, help="where to leave what came, in the form of the expected files")
    return parser.parse_args()


def main():
    options = parsed()
    with tempfile.TemporaryDirectory(prefix="karvo-end-to-end-") as scratch_name:
        scratch = Path(scratch_name)
        results = options.results or scratch / "results"
        results.mkdir(parents=True, exist_ok=True)
        folder = scratch / "program"
        shutil.copytree(options.programs, folder, ignore=shutil.ignore_patterns("CV_listen"))
        shutil.copy(EXPECTED / "image.hex", folder)
        simulator = Simulator(options.simulator or options.programs / "karvo-sim", options.pace, scratch / "log")
        way = None
        try:
            way = (Wine(options.wine, (options.prefix or scratch / "prefix").absolute(), simulator.device)
                   if options.wine else Native(scratch, simulator.device))
            sound = drive(way, folder, simulator, results, options.pace)
            if sound and options.pace == "line":
                seconds, wire = full_read(*simulator.lines())
                print(f"a full read: {seconds:.2f} s, its bytes take {wire:.2f} s")
            if len(list(folder.glob("CV_listen/*.kvr"))) != 1:
                print("what the vehicle held before the write was not kept")
                sound = False
        finally:
            if way:
                way.end()
            code = simulator.end()
    if code != 0:
        print(f"karvo-sim ended with {code}")
    return 0 if sound and code == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
