#!/usr/bin/python3
"""Looks whether the tests run every line and take every branch of the library, each of its conditions by itself too.

run.py [--long] [--json FILE] [BUILD]

BUILD is the preset clang's folder, whose tests record what of the library ran. Conditions are measured by MC/DC: for
each condition of a decision there are two runs that differ in that one alone and are decided differently. What a
template is made into more than once is one place in the sources: it has run, or has gone one way, if it did so in one
of its makings; the two runs of a condition are always of the same one. A template that nobody makes anything of is not
seen; the mutants of its code are, as never reached.

What cannot be reached stands in unreached.json with its reason, and must not be reached. Each time all is looked at
once more without what library-tests ran, to see that something is missed then. The short and the long form are the
same.
"""

import argparse
import collections
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[2]
PROGRAMS = ["library-tests", "signal-tests", "allocation-tests"]
MEASURED = [PROJECT / "service", PROJECT / "devices"]
CODE = 0  # the kind of a region that is neither a gap nor an expansion


class Places:
    """By place, in how many ways the code there can go, and which of them some test took."""

    def __init__(self):
        self.ways = collections.defaultdict(set)
        self.taken = collections.defaultdict(set)

    def add(self, place, ways):
        for way, isTaken in ways.items():
            self.ways[place].add(way)
            if isTaken:
                self.taken[place].add(way)

    def count(self):
        return sum(map(len, self.ways.values()))

    def missing(self):
        return [(place, way) for place, ways in sorted(self.ways.items()) for way in sorted(ways - self.taken[place])]


def recorded(build, program, scratch):
    """The files that a run of the program's tests writes: what ran of the program and what of the library."""
    run = subprocess.run([build / "bin" / program, "--gtest_brief=1"], stdout=subprocess.PIPE, text=True, check=False,
                         stderr=subprocess.DEVNULL,
                         env={**os.environ, "LLVM_PROFILE_FILE": f"{scratch}/{program}-%m.profraw",
                              "RC_PARAMS": "seed=1"})
    if run.returncode != 0:
        sys.exit(f"{run.stdout}error: {program} fails, so what it covers does not count")
    files = sorted(pathlib.Path(scratch).glob(f"{program}-*.profraw"))
    if not files:
        sys.exit(f"error: {program} records nothing; configure {build} with DEVICESSERVICE_COVERAGE")
    return files


def functions(build, program, files, scratch):
    """What of each function of the program and of the library ran. Each by itself: both may have one of the same name
    that was made of other code."""
    merged = f"{scratch}/{program}.profdata"
    subprocess.run(["llvm-profdata-19", "merge", "--sparse", "-o", merged, *files], check=True)
    for binary in (build / "bin" / program, build / "lib" / "libDevicesService.so"):
        export = subprocess.run(["llvm-cov-19", "export", "--instr-profile", merged, binary], stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, text=True, check=True)
        yield from json.loads(export.stdout)["data"][0]["functions"]


def places(of):
    """What of the library can run, go two ways, and decide; by its place, whatever it was instantiated with."""
    code, branches, conditions = Places(), Places(), Places()
    for function in of:
        names = [pathlib.Path(name) for name in function["filenames"]]

        def is_library(name):
            return any(name.is_relative_to(folder) for folder in MEASURED)

        if not any(map(is_library, names)):
            continue
        for *extent, count, index, _, kind in function["regions"]:
            if kind == CODE and is_library(names[index]):
                code.add((names[index], *extent), {"run": count > 0})
        for *extent, true, false, index, _, _ in function["branches"]:
            if is_library(names[index]):
                branches.add((names[index], *extent), {"true": true > 0, "false": false > 0})
        for *extent, _, _, covered in function["mcdc_records"]:  # of decisions in the function's own file
            if is_library(names[0]):
                conditions.add((names[0], *extent), {f"condition {number} decides": isCovered
                                                     for number, isCovered in enumerate(covered, 1)})
    return code, branches, conditions


def text(place):
    """What stands there; where that is less than a word, the line."""
    file, line, column, last, end = place
    lines = file.read_text().splitlines()[line - 1:last]
    whole = lines[0]
    lines[-1] = lines[-1][:end - 1]
    lines[0] = lines[0][column - 1:]
    words = " ".join(" ".join(lines).split())
    return words if len(words) > 1 else whole.strip()


def lines(of):
    return {(place[0], line) for place in of for line in range(place[1], place[3] + 1)}


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("build", nargs="?", type=pathlib.Path, default=PROJECT / "build" / "clang")
    arguments.add_argument("--long", action="store_true")
    arguments.add_argument("--json", type=pathlib.Path)
    arguments = arguments.parse_args()

    begin = time.monotonic()
    with tempfile.TemporaryDirectory() as scratch:
        files = {program: recorded(arguments.build, program, scratch) for program in PROGRAMS}
        covered = {program: list(functions(arguments.build, program, files[program], scratch)) for program in PROGRAMS}

    everything = places(function for each in covered.values() for function in each)
    fewer = places(function for program in PROGRAMS[1:] for function in covered[program])
    excused = json.loads((HERE / "unreached.json").read_text())
    reached = [(each["file"], each["text"], each["never"]) for each in excused]
    figures, failures = {"lines": len(lines(everything[0].ways))}, []
    for name, all_, some in zip(["regions", "branch directions", "conditions"], everything, fewer, strict=True):
        missing = [each for each in all_.missing() if text(each[0]) != "Q_OBJECT"]  # which is Qt's
        figures[name] = all_.count()
        figures[f"{name} missed"] = len(missing)
        figures[f"{name} missed without library-tests"] = len(some.missing())
        for place, way in missing:
            key = (str(place[0].relative_to(PROJECT)), text(place), way)
            if key in reached:
                reached.remove(key)
            else:
                failures.append(f"{key[0]}:{place[1]}: never {way}: {key[1][:100]}")
        if not set(some.missing()) - set(missing):
            failures.append(f"{name}: nothing is missed without library-tests, so this looks at nothing")
    figures["excused"] = len(excused)
    failures += [f"{file}: unreached.json lists what is reached or not there: {words}" for file, words, _ in reached]
    figures["seconds"] = round(time.monotonic() - begin, 1)

    for name, figure in figures.items():
        print(f"{figure:8} {name}")
    for failure in failures:
        print(f"error: {failure}")
    if arguments.json:
        arguments.json.write_text(json.dumps(figures, indent=2) + "\n")
    sys.exit(bool(failures))


if __name__ == "__main__":
    main()
