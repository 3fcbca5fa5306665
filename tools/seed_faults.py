#!/usr/bin/env python3
"""Puts one-line faults into the sources, one at a time, and says for each room which of them the native tests catch.

The faults are in a list (tools/faults.txt, or the file that is named first). Each fault is a paragraph: the path of the
file, then the old line after "-" and the new line after "+". Without "+" the line is deleted. If the old line is in the
file several times, lines after " " before and behind it say which one is meant. Indentation does not count.

Everything happens in a copy of the sources below build/faults. The tests of the fault's own room run first, then those
of the rooms that use it, until one fails.

With --check nothing is built. It only checks that the file of each fault exists and has the old line exactly once.
"""
import argparse
import fcntl
import json
import os
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SCRATCH = ROOT / "build" / "faults"
SOURCE = SCRATCH / "copy"
BUILD = SOURCE / "build" / "debug"
RESULTS = SCRATCH / "results.json"

# The room of a file: the first row that fits. The tests of the folder run first.
ROOMS = [
    ("core", "VelkoCore/", "tests/VelkoCore"),
    ("engine", "VelkoEngine/", "tests/VelkoEngine"),
    ("simulator", "Simulator/", "tests/Simulator"),
    ("scenarios", "Scenarios/", "tests/Scenarios"),
    ("setup", "Velko/Setup/", "tests/Velko"),
    ("settings", "Velko/Settings/", "tests/Velko"),
    ("note, shelf, broom", "Velko/Note/", "tests/Velko"),
    ("note, shelf, broom", "Velko/Shelf/", "tests/Velko"),
    ("note, shelf, broom", "Velko/Broom/", "tests/Velko"),
    ("note, shelf, broom", "Velko/View/", "tests/Velko"),
    ("controller, flows", "Velko/", "tests/Velko"),
    ("page", "Playground/Serving/", "tests/Playground"),
    ("page", "Playground/Web/", "tests/Playground"),
    ("page", "Playground/Html/", "tests/Playground"),
    ("playground", "", "tests/Playground"),
]

# The folders of test programs, in the order in which they run.
FOLDERS = ["tests/VelkoCore", "fuzz", "tests/VelkoEngine", "tests/Simulator", "tests/Velko", "tests/Scenarios",
           "tests/Playground", "Playground", "tests/Soak"]

MEMORY_LIMIT = 6 << 30  # bytes; with a fault a test may need more and more memory


@dataclass
class Fault:
    file: str
    line: int  # of the list
    context: list = field(default_factory=list)  # pairs of mark and text

    @property
    def key(self):
        return "\n".join([self.file] + [mark + text for mark, text in self.context])

    @property
    def title(self):
        lines = [mark + " " + text for mark, text in self.context if mark != " "]
        return f"{self.file}: " + "  ".join(lines)

    @property
    def room(self):
        return next(row for row in ROOMS if self.file.startswith(row[1]))

    def seeded(self, content):
        """The content with the fault; None if the old line is not there exactly once."""
        old = [text for mark, text in self.context if mark != "+"]
        lines = content.split("\n")
        bare = [line.strip() for line in lines]
        places = [at for at in range(len(lines)) if bare[at:at + len(old)] == old]
        if len(places) != 1:
            return None
        new, at = [], places[0]
        for mark, text in self.context:
            indent = lines[min(at, len(lines) - 1)]
            indent = indent[:len(indent) - len(indent.lstrip())]
            if mark == " ":
                new.append(lines[at])
            if mark == "+":
                new.append(indent + text)
            at += mark != "+"
        return "\n".join(lines[:places[0]] + new + lines[places[0] + len(old):])


def read_faults(path):
    faults, fault = [], None
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if line.startswith("#"):
            continue
        if not line.strip():
            fault = None
        elif fault is None:
            fault = Fault(line.strip(), number)
            faults.append(fault)
        elif line[0] in " -+":
            fault.context.append((line[0], line[1:].strip()))
        else:
            sys.exit(f"{path}:{number}: a line begins with a blank, - or +")
    for fault in faults:
        marks = [mark for mark, _ in fault.context]
        if marks.count("-") != 1 or marks.count("+") > 1:
            sys.exit(f"{path}:{fault.line}: a fault has one old line and at most one new one")
    return faults


def stale(fault):
    file = ROOT / fault.file
    return not file.is_file() or fault.seeded(file.read_text()) is None


def copy_sources():
    """Updates the copy of the sources. Equal files keep their date, so that they are not built again."""
    listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                            check=True, capture_output=True, text=True).stdout.split("\0")
    wanted = {name for name in listed if name and (ROOT / name).is_file() and not (ROOT / name).is_symlink()}
    for name in wanted:
        target = SOURCE / name
        if not target.is_file() or target.read_bytes() != (ROOT / name).read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, target)
    for folder, folders, files in os.walk(SOURCE):
        folders[:] = [name for name in folders if Path(folder, name) != SOURCE / "build"]
        for present in (Path(folder, name) for name in files):
            if str(present.relative_to(SOURCE)) not in wanted:
                present.unlink()


def configure(options):
    """Configures like every other debug build, so that both use the same cache of compiled files."""
    command = ["cmake", "--preset", "debug", "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST", *options]
    subprocess.run(command, cwd=SOURCE, check=True, stdout=subprocess.DEVNULL)


def build(*targets):
    done = subprocess.run(["cmake", "--build", BUILD, "--", *targets], capture_output=True, text=True)
    return done.returncode == 0, done.stdout + done.stderr


def programs(pattern):
    """The test programs, and the program that plays scenarios."""
    listing = subprocess.run(["ninja", "-t", "targets", "all"], cwd=BUILD, check=True, capture_output=True, text=True)
    found = re.findall(r"^([^:\n]+): CXX_EXECUTABLE_LINKER", listing.stdout, re.MULTILINE)
    return [name for name in found if os.path.dirname(name) in FOLDERS and re.search(pattern, name)]


@dataclass
class Run:
    """A command that runs some tests."""
    name: str
    target: str  # the program that it needs
    command: list
    environment: dict
    seconds: float = 0

    @property
    def place(self):
        return FOLDERS.index(os.path.dirname(self.target))


def find_runs(pattern, leave_out):
    """The tests that ctest knows. Those of one program run in one process, unless they need something of their own."""
    listing = subprocess.run(["ctest", "--show-only=json-v1"], cwd=BUILD, check=True, capture_output=True, text=True)
    runs = {}
    for test in json.loads(listing.stdout)["tests"]:
        ours = [part for part in test.get("command", []) if part.startswith(str(BUILD) + "/")]
        if not ours or re.search(leave_out, test["name"]):
            continue
        target = os.path.relpath(ours[0], BUILD)
        variables = [value for each in test["properties"] if each["name"] == "ENVIRONMENT" for value in each["value"]]
        name, command = test["name"], test["command"]
        if any(part.startswith("--gtest_filter=") for part in command) and not variables:
            name, command = os.path.basename(target), [ours[0], "--gtest_fail_fast", "--gtest_brief=1"]
        if os.path.dirname(target) in FOLDERS and re.search(pattern, target):
            runs[name] = Run(name, target, command, dict(value.split("=", 1) for value in variables))
    return sorted(runs.values(), key=lambda run: (run.place, run.target))


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))


def failure_of(run, limit=None):
    """The name of what failed; None if all passed."""
    try:
        done = subprocess.run(run.command, cwd=BUILD, env={**os.environ, **run.environment}, timeout=limit,
                              preexec_fn=limit_memory, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
    except subprocess.TimeoutExpired:
        return run.name + " (does not end)"
    if done.returncode == 0:
        return None
    failed = re.search(r"\[  FAILED  \] ([\w./]+)", done.stdout.decode(errors="replace"))
    return f"{run.name} {failed.group(1)}" if failed else run.name


def measure(runs):
    """Checks that every test passes without a fault. The time it takes tells later whether a test hangs."""
    for run in runs:
        started = time.monotonic()
        failure = failure_of(run)
        if failure:
            sys.exit(f"Without any fault this fails: {failure}")
        run.seconds = time.monotonic() - started


def verdict_on(fault, runs):
    """A pair: "caught", "survived" or "does not build", and the test that has caught it."""
    first = FOLDERS.index(fault.room[2])
    built = set()
    for run in (each for each in runs if each.place >= first):
        if run.target not in built:
            builds, _ = build(run.target)
            if not builds:
                return "does not build", ""
            built.add(run.target)
        failure = failure_of(run, 60 + 10 * run.seconds)
        if failure:
            return "caught", failure
    return "survived", ""


def try_out(fault, runs):
    file = SOURCE / fault.file
    original = file.read_text()
    try:
        file.write_text(fault.seeded(original))
        return verdict_on(fault, runs)
    finally:
        file.write_text(original)


def report(faults, results):
    verdicts = ["caught", "survived", "does not build", "no longer there"]
    rooms = list(dict.fromkeys(row[0] for row in ROOMS))
    print(f"\n{'room':<20}" + "".join(f"{name:>17}" for name in verdicts) + f"{'of 100':>9}")
    for room in rooms + ["all"]:
        mine = [results.get(fault.key, ["", ""])[0] for fault in faults if room in ("all", fault.room[0])]
        counts = [mine.count(name) for name in verdicts]
        if sum(counts):
            share = f"{100 * counts[0] / (counts[0] + counts[1]):.0f}" if counts[0] + counts[1] else "-"
            print(f"{room:<20}" + "".join(f"{count:>17}" for count in counts) + f"{share:>9}")
    for name in verdicts[1:]:
        for fault in faults:
            if results.get(fault.key, ["", ""])[0] == name:
                print(f"{name}: {fault.title}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("faults", nargs="?", type=Path, default=ROOT / "tools" / "faults.txt")
    parser.add_argument("--check", action="store_true", help="only say which faults do not fit the sources any more")
    parser.add_argument("--only", default="", metavar="WORD", help="only faults with that in their room or file")
    parser.add_argument("--again", default="", metavar="VERDICT", help="only faults with that result the last time")
    parser.add_argument("--tests", default="", metavar="PATTERN", help="only test programs with such a path")
    parser.add_argument("--cmake", default="", metavar="OPTIONS", help="further options for the build")
    parser.add_argument("--leave-out", default="Hostile", metavar="PATTERN", help="tests that shall not run")
    options = parser.parse_args()

    chosen = [each for each in read_faults(options.faults) if options.only in each.room[0] + " " + each.file]
    results = json.loads(RESULTS.read_text()) if RESULTS.is_file() else {}
    if options.again:
        chosen = [each for each in chosen if results.get(each.key, ["never"])[0] == options.again]
    gone = [each for each in chosen if stale(each)]
    if options.check:
        for fault in gone:
            print(f"{options.faults}:{fault.line}: no longer there exactly once: {fault.title}")
        sys.exit(1 if gone else 0)

    SCRATCH.mkdir(parents=True, exist_ok=True)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("stopped"))
    with open(SCRATCH / "lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        copy_sources()
        configure(options.cmake.split())
        builds, output = build(*programs(options.tests))
        if not builds:
            sys.exit(output[-4000:])
        runs = find_runs(options.tests, options.leave_out)
        measure(runs)
        for number, fault in enumerate(chosen, 1):
            started = time.monotonic()
            result = ("no longer there", "") if fault in gone else try_out(fault, runs)
            results[fault.key] = result
            RESULTS.write_text(json.dumps(results, indent=1))
            print(f"{number}/{len(chosen)} {result[0]} {result[1]} ({time.monotonic() - started:.0f} s) {fault.title}",
                  flush=True)
    report(chosen, results)


if __name__ == "__main__":
    main()
