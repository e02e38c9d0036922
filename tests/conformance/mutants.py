#!/usr/bin/python3
"""Runs the kit on every mutant and compares what is broken with the table of docs/conformance.md.

mutants.py BUILD [SEED...]
"""

import json
import os
import pathlib
import re
import subprocess
import sys
from concurrent import futures

PAGE = pathlib.Path(__file__).resolve().parents[2] / "docs" / "conformance.md"
ROW = re.compile(r"^\| ([A-Z]+-\d+) \| ([a-z0-9-]+) \| .+ \| (.*?) ?\|$", re.MULTILINE)


def verdicts(build, rule, control, seed):
    """By rule, what the mutant of `rule` comes to if one looks at `control`; without those that nobody can look at."""
    provider = f"{build}/tests/providers/plugins/mutants.so:late=1500,breaks={rule}"
    run = subprocess.run([f"{build}/bin/service-conformance", "--json", "--provider", provider, "--control", control,
                          "--timeout", "1", "--seed", seed], capture_output=True, text=True, check=False)
    return {each["rule"]: each["verdict"] for each in json.loads(run.stdout)["rules"]
            if each["verdict"] != "not checkable"}


def main():
    build, seeds = sys.argv[1], sys.argv[2:] or ["1"]
    rows = ROW.findall(PAGE.read_text())
    missing = verdicts(build, "", "serial-number", "1").keys() - {rule for rule, _, _ in rows}
    if missing:
        sys.exit(f"error: the table has no mutant for {sorted(missing)}")

    differences = 0
    with futures.ThreadPoolExecutor(4 * os.cpu_count()) as pool:  # they wait most of the time
        runs = [(rule, also, seed, pool.submit(verdicts, build, rule, control, seed))
                for seed in seeds for rule, control, also in rows]
        for rule, also, seed, run in runs:
            found = {name for name, verdict in run.result().items() if verdict == "fail"}
            isFixed = not also or re.match("[A-Z]+-", also)  # otherwise nobody can know
            expected = {rule, *re.findall(r"[A-Z]+-\d+", also)}
            if rule not in found or (isFixed and found != expected):
                print(f"{rule}, seed {seed}: breaks {sorted(found)}, the table says {sorted(expected)}")
                differences += 1
    print(f"{len(runs)} mutants run, {differences} differ from the table")
    sys.exit(differences > 0)


if __name__ == "__main__":
    main()
