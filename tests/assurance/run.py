#!/usr/bin/python3
"""Runs what tries the library exhaustively, at random and for long. Usage:

run.py [ROOM...]          the short form: what CI can afford, the same each time
run.py --long [ROOM...]   the long form, hours; keeps its results in results.json, to be committed
run.py --last [ROOM...]   shows the results of the last long run

A room is a folder beside this file, with its own run.py or a program of its name in build/asan/bin. It takes --long and
--json FILE (its figures, as one flat object), and says by its status whether all is well.
"""

import datetime
import json
import pathlib
import subprocess
import sys
import tempfile
import time
from concurrent import futures

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
RESULTS = HERE / "results.json"
ROOMS = sorted({path.parent.name for pattern in ("*/run.py", "*/CMakeLists.txt") for path in HERE.glob(pattern)})
SPOKEN_OF = ("devices", "service")
CHANGES_THAT_MAY_BE_NEWER = 5


def git(*arguments):
    return subprocess.run(["git", *arguments], cwd=PROJECT, capture_output=True, text=True, check=True).stdout.strip()


def command(room):
    script = HERE / room / "run.py"
    return ["/usr/bin/python3", "-B", script] if script.exists() else [PROJECT / "build" / "asan" / "bin" / room]


def visit(room, long):
    """Runs one room: whether all is well, and its figures."""
    with tempfile.NamedTemporaryFile(suffix=".json") as figures:
        begin = time.monotonic()
        run = subprocess.run([*command(room), "--json", figures.name, *["--long"] * long], cwd=PROJECT, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        seconds = round(time.monotonic() - begin)
        verdict = "passed" if run.returncode == 0 else f"FAILED ({run.returncode})"
        print(f"-- {room}: {verdict} in {seconds} s\n{run.stdout}", flush=True)
        found = json.loads(pathlib.Path(figures.name).read_text() or "{}")
    return run.returncode == 0, {**found, "seconds": seconds}


def visit_all(rooms, long):
    """Two at a time: most rooms use one processor."""
    with futures.ThreadPoolExecutor(max_workers=2) as workers:
        visits = {room: workers.submit(visit, room, long) for room in rooms}
        results = {room: visit.result() for room, visit in visits.items()}
    failed = [room for room, (passed, _) in results.items() if not passed]
    if failed:
        sys.exit(f"error: not all is well in: {', '.join(failed)}")
    return {room: figures for room, (_, figures) in results.items()}


def keep(figures):
    if git("status", "--porcelain", "--", *SPOKEN_OF):
        sys.exit(f"error: what was tried is not committed: {', '.join(SPOKEN_OF)}")
    today = datetime.datetime.now(datetime.timezone.utc).date().isoformat()
    results = json.loads(RESULTS.read_text()) if RESULTS.exists() else {}
    for room, found in figures.items():
        results[room] = {"date": today, "commit": git("rev-parse", "HEAD"), **found}
    RESULTS.write_text(json.dumps(results, indent=2, sort_keys=True) + "\n")


def require_recent():
    """The library of today is what the last long run has tried, but for a few changes."""
    results = json.loads(RESULTS.read_text())
    if missing := set(ROOMS) - set(results):
        sys.exit(f"error: no long run of {', '.join(sorted(missing))} is in {RESULTS.name}")
    for room, found in results.items():
        newer = int(git("rev-list", "--count", f"{found['commit']}..HEAD", "--", *SPOKEN_OF))
        if newer > CHANGES_THAT_MAY_BE_NEWER:
            sys.exit(f"error: {newer} changes of {' and '.join(SPOKEN_OF)} are newer than the last long run of {room}:"
                     f" run ./check assurance --long")


def show(rooms):
    results = json.loads(RESULTS.read_text())
    for room in rooms:
        found = results[room]
        print(f"{room} ({found.pop('date')}, commit {found.pop('commit')[:10]})")
        for figure, value in found.items():
            print(f"  {figure:40} {value:,}" if isinstance(value, int) else f"  {figure:40} {value}")


def main(arguments):
    options = {argument for argument in arguments if argument.startswith("--")}
    rooms = [argument for argument in arguments if argument not in options] or ROOMS
    if unknown := (options - {"--long", "--last"}) | (set(rooms) - set(ROOMS)):
        sys.exit(f"error: what is {', '.join(sorted(unknown))}? {__doc__}")
    if "--last" in options:
        show(rooms)
        return
    figures = visit_all(rooms, "--long" in options)
    if "--long" in options:
        keep(figures)
    else:
        require_recent()


if __name__ == "__main__":
    main(sys.argv[1:])
