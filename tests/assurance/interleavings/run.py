#!/usr/bin/python3
"""Tries every order with a bounded number of interruptions in which threads can take turns in the library's shared
parts, and every state of their models.

Each program explores its scenarios, each model is verified by a model checker; then each of them has to find what is
broken in its mutants. --long has each scenario interrupt its threads once more, and the handle's control go and come
once more.
"""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
PROGRAMS = ["handle", "observertable", "observerlist", "temperatures"]
# A model, what makes it larger for the long run, and what breaks it, each with the assertion that fails then.
MODELS = {
    "handle": (["-DCONTROLS=3"], {
        "COPIED_WITHOUT_LOCK": "copy==counters",
        "ASKED_UNDER_LOCK": "mutex!=_pid",
        "CHECK_BEFORE_COUNTING": "gone[locked]",
    }),
    "observers": ([], {
        "NOT_PUT_RIGHT": "has==registration[i].attached",
        "DECIDED_IN_TWO_STEPS": "has==0",
    }),
}


class Finding(Exception):
    """What is not as it must be, in words for people."""


def run(command, folder=None, seconds=None):
    try:
        return subprocess.run(command, cwd=folder, capture_output=True, text=True, errors="replace", check=False,
                              timeout=seconds)
    except subprocess.TimeoutExpired as late:
        raise Finding(f"{command[0]} does not end") from late


def explore(programs, more, figures):
    total = 0
    for program in PROGRAMS:
        began = time.monotonic()
        result = run([programs / f"interleavings-{program}", "--more", str(more)])
        print(result.stdout, end="", flush=True)
        if result.returncode != 0:
            raise Finding(f"interleavings-{program} has found something:\n{result.stderr}")
        schedules = sum(int(line.split("\t")[0]) for line in result.stdout.splitlines())
        scenarios = len(result.stdout.splitlines())
        if scenarios == 0:
            raise Finding(f"interleavings-{program} has no scenario")
        total += schedules
        figures[f"{program} scenarios"] = scenarios
        figures[f"{program} schedules explored"] = schedules
        figures[f"{program} seconds"] = round(time.monotonic() - began, 1)
    figures["schedules explored"] = total


def explore_mutants(programs, figures):
    """Of each the schedules until it is found, for the right reason."""
    mutants = json.loads((HERE / "mutants.json").read_text(encoding="utf-8"))
    for mutant in mutants:
        result = run([programs / f"interleavings-mutant-{mutant['name']}"], seconds=600)
        found = re.search(r'^FOUND after (\d+) schedules of "(.*)": (.*)$', result.stdout, re.MULTILINE)
        if result.returncode == 0 or not found or found[3] != mutant["found"]:
            raise Finding(f"the mutant {mutant['name']} was to be found by \"{mutant['found']}\", but:\n"
                          f"{result.stdout}{result.stderr}")
        print(f"mutant {mutant['name']}: found after {found[1]} schedules: {found[3]}", flush=True)
        figures[f"mutant {mutant['name'].replace('-', ' ')} schedules"] = int(found[1])
    figures["mutants of the code found"] = len(mutants)


def verify(model, definitions, optimization="-O0"):
    """What the verifier of `model` prints. To optimize one that soon finds something takes longer than it does."""
    with tempfile.TemporaryDirectory() as folder:
        for command in (["spin", *definitions, "-a", HERE / f"{model}.pml"],
                        ["gcc", optimization, "-w", "-DSAFETY", "-o", "pan", "pan.c"]):
            made = run(command, folder)
            if made.returncode != 0:
                raise Finding(f"the model {model} cannot be made:\n{made.stdout}{made.stderr}")
        return run(["./pan", "-m100000"], folder).stdout


def verify_models(is_long, figures):
    for model, (larger, mutants) in MODELS.items():
        began = time.monotonic()
        verdict = verify(model, larger if is_long else [], "-O1")
        states = re.search(r"^ *(\d+) states, stored", verdict, re.MULTILINE)
        if not states or "errors: 0" not in verdict or "max search depth too small" in verdict:
            raise Finding(f"the model {model} fails:\n{verdict}")
        print(f"model {model}: {states[1]} states, no error", flush=True)
        figures[f"model {model} states"] = int(states[1])
        for mutant, assertion in mutants.items():
            verdict = verify(model, [f"-D{mutant}"])
            if "assertion violated" not in verdict or assertion not in verdict.splitlines()[0]:
                raise Finding(f"the model {model} does not find {mutant} by {assertion}:\n{verdict}")
            print(f"model {model}, {mutant}: found", flush=True)
        figures[f"model {model} mutants found"] = len(mutants)
        figures[f"model {model} seconds"] = round(time.monotonic() - began, 1)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--long", action="store_true")
    parser.add_argument("--json", metavar="FILE", type=pathlib.Path)
    parser.add_argument("--build", metavar="FOLDER", type=pathlib.Path,
                        default=HERE.parents[2] / "build" / "asan")
    arguments = parser.parse_args()
    os.environ["ASAN_OPTIONS"] = "quarantine_size_mb=16"

    began = time.monotonic()
    figures = {}
    programs = arguments.build.resolve() / "bin"
    try:
        verify_models(arguments.long, figures)
        explore_mutants(programs, figures)
        explore(programs, 1 if arguments.long else 0, figures)
    except Finding as finding:
        print(finding, file=sys.stderr)
        return 1
    figures["seconds"] = round(time.monotonic() - began, 1)
    print(f"{figures['schedules explored']} schedules explored within their bounds, nothing found")
    if arguments.json:
        arguments.json.write_text(json.dumps(figures, indent=2) + "\n", encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
