#!/usr/bin/python3
"""Breaks the library in every small way that mutants.py knows and looks whether a test notices.

run.py [--long] [--json FILE] [--prepare] [--jobs N]

A mutant is killed when a test fails, crashes or hangs with it. Each is given the tests that reach its place, the
fastest first, by a program of the library's own tests that is built once, of a copy that holds all mutants. Who
survives must stand in explained.json with the reason why nobody can notice; who stands there must survive.

The short form tries the mutants of files that changed since the last long run, and fills up with others, the same
each time. --long tries all, and those that do not lock by the tests of threads under the thread sanitizer too.
--prepare only writes and builds the copy, in build/mutation; it needs the preset assurance to be configured.
"""

import argparse
import collections
import itertools
import json
import os
import pathlib
import random
import re
import shlex
import subprocess
import sys
import tempfile
import time
from concurrent import futures

import mutants

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[2]
BUILD = PROJECT / "build" / "mutation"
TREE = BUILD / "tree"
SAMPLE = 100  # that are tried in the short form


# The copy.

def write(path, content):
    """Leaves a file alone that is as it should be, and what was built of it."""
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_bytes() != content:
        path.write_bytes(content)


def link(path, target):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.unlink(missing_ok=True)
    path.symlink_to(target)


def commands():
    """How the library's sources are compiled: what the syntax depends on."""
    database = PROJECT / "build" / "asan" / "compile_commands.json"
    if not database.exists():
        sys.exit("error: the preset assurance is not configured")
    found = {}
    for entry in json.loads(database.read_text()):
        words, file = shlex.split(entry["command"]), pathlib.Path(entry["file"])
        if file.is_relative_to(PROJECT / "service") and "DevicesService.dir" in entry["command"]:
            found[file] = [word for word in words if word.startswith(("-I", "-D", "-std="))]
            found[file] += [each for before, word in zip(words, words[1:]) if before == "-isystem"
                            for each in (before, word)]
    return found


def copy():
    """Writes the copy and what belongs to it; gives the mutants that are in it."""
    for name in ("cmake", "platform", "testing", "tests"):
        link(TREE / name, PROJECT / name)
    link(TREE / "program", HERE / "program")
    link(TREE / "CMakeLists.txt", HERE / "program" / "CMakeLists.txt")
    all_ = []
    for source in mutants.read(PROJECT, commands(), BUILD):
        write(TREE / source.name, source.rendered().encode())
        all_ += source.mutants
    for folder in ("service", "devices"):
        for path in (PROJECT / folder).rglob("*"):
            if path.is_file() and path.suffix not in (".h", ".cpp"):
                write(TREE / path.relative_to(PROJECT), path.read_bytes())
    return all_


def build(folder, *options):
    for command in (["cmake", "-G", "Ninja", "-S", TREE, "-B", folder, "-DCMAKE_CXX_COMPILER=clang++-19", *options],
                    ["cmake", "--build", folder, "--target", "mutated-tests"]):
        run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if run.returncode != 0:
            sys.exit(f"{run.stdout[-8000:]}error: the copy cannot be built")


def program(isLong):
    build(BUILD / "plain")
    if isLong:
        build(BUILD / "thread", "-DDEVICESSERVICE_SANITIZE=thread", "-DCMAKE_CXX_FLAGS=-g1")


# The runs.

class Tests:
    """A program of tests, and which of them reach which mutants."""

    def __init__(self, folder):
        self.program = folder / "bin" / "mutated-tests"
        self.seconds = {}  # by test
        self.reaching = collections.defaultdict(list)  # by number of a mutant, the fastest test first
        self.noticed = collections.defaultdict(dict)  # by file, what noticed a mutant of it and is tried first
        self.survey()

    def environment(self, **more):
        return {**os.environ, "RC_PARAMS": "seed=1", "TSAN_OPTIONS": "halt_on_error=1", "QT_QPA_PLATFORM": "minimal",
                **more}

    def survey(self):
        with tempfile.TemporaryDirectory() as scratch:
            lines = pathlib.Path(scratch) / "survey"
            run = subprocess.run([self.program, "--gtest_brief=1"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                 text=True, check=False,
                                 env=self.environment(MUTANT_SURVEY=lines, MUTANT_REACHED=f"{scratch}/reached"))
            if run.returncode != 0:
                sys.exit(f"{run.stdout[-8000:]}error: the copy fails without a mutant")
            tests = [line.split("\t") for line in lines.read_text().splitlines()]
        before = set(tests[0][2].split())
        for name, milliseconds, numbers in sorted(tests[1:], key=lambda each: int(each[1])):
            self.seconds[name] = int(milliseconds) / 1000
            for number in before | set(numbers.split()):
                self.reaching[int(number)].append(name)

    def fate(self, mutant):
        """What becomes of it: failed, crashed or hung are the tests with it, or it survives or is never reached."""
        tests = self.reaching[mutant.number]
        if not tests:
            return "never reached"
        noticed = [name for name in list(self.noticed[mutant.file]) if name in set(tests)]
        few, many = 50, 500  # notice most mutants; fit into an argument
        pieces = itertools.pairwise([0, *range(few, len(tests), many), len(tests)])
        for batch in [noticed[-few:], *(tests[begin:end] for begin, end in pieces)]:
            status, output = self.run(mutant, batch) if batch else (0, "")
            if status != 0:
                self.noticed[mutant.file].update(dict.fromkeys(re.findall(r"^\[  FAILED  \] ([^\s,]+)", output, re.M)))
                return "hung" if status is None else "crashed" if status < 0 else "failed"
        return "survived"

    def run(self, mutant, names):
        """How the tests of these names end with the mutant, and what they print; a hanging one has no status."""
        command = [self.program, "--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={':'.join(names)}"]
        try:
            run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False,
                                 errors="replace", env=self.environment(MUTANT=str(mutant.number)),
                                 timeout=10 + 4 * sum(self.seconds[name] for name in names))
        except subprocess.TimeoutExpired:
            return None, ""
        return run.returncode, run.stdout


def sample(all_):
    """Those of the files that changed, and others, the same each time."""
    all_ = [each for each in all_ if each.operator != "no lock"]
    last = json.loads((HERE.parent / "results.json").read_text())["mutation"]["commit"]
    changed = subprocess.run(["git", "diff", "--name-only", last], cwd=PROJECT, stdout=subprocess.PIPE, text=True,
                             check=False).stdout.split()  # none where the history does not go as far back
    random.Random(1).shuffle(all_)
    all_.sort(key=lambda each: each.file not in changed)
    return all_[:SAMPLE]


def key(mutant):
    return mutant.file, mutant.operator, mutant.text, mutant.change


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--long", action="store_true")
    arguments.add_argument("--json", type=pathlib.Path)
    arguments.add_argument("--prepare", action="store_true")
    arguments.add_argument("--jobs", type=int, default=os.cpu_count())
    arguments = arguments.parse_args()

    begin = time.monotonic()
    all_ = copy()
    program(arguments.long)
    built = time.monotonic()
    print(f"{len(all_)} mutants, ready after {built - begin:.0f} seconds", flush=True)
    if arguments.prepare:
        return

    tried = all_ if arguments.long else sample(all_)
    with futures.ThreadPoolExecutor(arguments.jobs) as pool:
        tests = Tests(BUILD / "plain")
        fates = dict(zip(tried, pool.map(tests.fate, tried), strict=True))
        unlocked = [each for each in tried if each.operator == "no lock" and fates[each] == "survived"]
        if unlocked:
            threads = Tests(BUILD / "thread")
            fates.update(zip(unlocked, pool.map(threads.fate, unlocked), strict=True))

    survivors = [each for each, fate in fates.items() if fate in ("survived", "never reached")]
    explained = collections.Counter(tuple(each[name] for name in ("file", "operator", "text", "change"))
                                    for each in json.loads((HERE / "explained.json").read_text()))
    survived = collections.Counter(map(key, survivors))
    unexplained = survived - explained
    failures = [f"{each.file}:{each.line}: {fates[each]}: {each.operator}: {each.text[:100]} -> {each.change[:100]}"
                for each in survivors if key(each) in unexplained]
    untried = {key(each) for each in set(all_) - set(tried)}
    failures += [f"explained.json lists what is killed or no mutant: {' | '.join(each)}"
                 for each in explained - survived if each not in untried]

    figures = {"mutants": len(all_), "mutants tried": len(tried), "killed": len(tried) - len(survivors),
               "explained survivors": len(survivors) - unexplained.total(),
               "unexplained survivors": unexplained.total()}
    for operator in sorted({each.operator for each in all_}):
        figures[f"tried: {operator}"] = sum(each.operator == operator for each in tried)
    figures["seconds to build"] = round(built - begin, 1)
    figures["seconds to try"] = round(time.monotonic() - built, 1)
    for name, figure in figures.items():
        print(f"{figure:8} {name}")
    print(*(f"{count:8} {fate}" for fate, count in collections.Counter(fates.values()).most_common()), sep="\n")
    for failure in failures:
        print(f"error: {failure}")
    if arguments.json:
        arguments.json.write_text(json.dumps(figures, indent=2) + "\n")
    sys.exit(bool(failures))


if __name__ == "__main__":
    main()
