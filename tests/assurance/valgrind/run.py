#!/usr/bin/python3
"""Runs the tests under valgrind, which sees what no sanitizer does: memory that was never written, in Qt too.

run.py [--long] [--json FILE] [BUILD]

BUILD is the preset dev's folder: valgrind cannot read what clang 19 writes for debuggers. Before that it looks whether
valgrind finds what is there to be found. The short and the long form are the same.
"""

import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import time

PROJECT = pathlib.Path(__file__).resolve().parents[3]
PROGRAMS = ["library-tests", "signal-tests"]
VALGRIND = ["valgrind", "--leak-check=full", "--errors-for-leak-kinds=definite", "--error-exitcode=99",
            "--fair-sched=yes", "--child-silent-after-fork=yes"]
# Valgrind has one processor for all threads: what races for its own sake takes hours there, and the thread sanitizer
# runs it. Who dies on purpose leaves memory behind.
FILTER = "-*Threads*:*DeathTest*"
BREACHES = {"reads what was freed": "int* number = new int(1); delete number; return *number == 1;",
            "decides by what was never written": "int* number = new int; bool one = *number == 1; delete number;"
                                                 "if (one) return 2;",
            "loses a block": "int* number = new int(1); number = nullptr; return number != nullptr;"}


def notices(breach, scratch):
    """Whether a program of this body is found to be wrong."""
    source, program = scratch / "breach.cpp", scratch / "breach"
    source.write_text("int main() { " + breach + " }\n")
    subprocess.run(["g++", "-w", "-g", "-O0", source, "-o", program], check=True)
    return subprocess.run([*VALGRIND, "-q", program], capture_output=True, check=False).returncode == 99


def tests_run(output):
    return int(re.search(r"(\d+) tests? from \d+ test suites? ran", output).group(1))


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--long", action="store_true")
    arguments.add_argument("--json", type=pathlib.Path)
    arguments.add_argument("build", nargs="?", type=pathlib.Path, default=PROJECT / "build" / "dev")
    given = arguments.parse_args()

    begin = time.monotonic()
    with tempfile.TemporaryDirectory() as scratch:
        for name, breach in BREACHES.items():
            if not notices(breach, pathlib.Path(scratch)):
                sys.exit(f"error: valgrind does not notice a program that {name}")

    tests = 0
    for program in PROGRAMS:
        run = subprocess.run([*VALGRIND, given.build / "bin" / program, "--gtest_brief=1", f"--gtest_filter={FILTER}"],
                             text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if run.returncode:
            sys.exit(f"{run.stdout}\nerror: {program} ends with {run.returncode} under valgrind")
        tests += tests_run(run.stdout)

    print(f"{tests} tests run under valgrind, which found nothing and {len(BREACHES)} breaches on purpose")
    if given.json:
        given.json.write_text(json.dumps({"tests": tests, "breaches on purpose found": len(BREACHES),
                                          "seconds": round(time.monotonic() - begin)}))


if __name__ == "__main__":
    main()
