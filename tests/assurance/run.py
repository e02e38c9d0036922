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
LONG_ONLY = {"valgrind"}  # takes long whatever it is asked for
LONGEST = 15 * 60  # seconds that a room of the short form may take
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
        try:
            run = subprocess.run([*command(room), "--json", figures.name, *["--long"] * long], cwd=PROJECT, text=True,
                                 stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                                 timeout=None if long else LONGEST)
            status, output = run.returncode, run.stdout
        except subprocess.TimeoutExpired as late:
            status, output = "no end", (late.stdout or b"").decode(errors="replace")
        seconds = round(time.monotonic() - begin)
        verdict = "passed" if status == 0 else f"FAILED ({status})"
        print(f"-- {room}: {verdict} in {seconds} s\n{output}", flush=True)
        found = json.loads(pathlib.Path(figures.name).read_text() or "{}")
    return status == 0, {**found, "seconds": seconds}


def visit_all(rooms, long):
    """Two at a time, since most rooms use one processor: the figures of those where all is well, and the others."""
    with futures.ThreadPoolExecutor(max_workers=2) as workers:
        visits = {room: workers.submit(visit, room, long) for room in rooms}
        results = {room: visit.result() for room, visit in visits.items()}
    return ({room: figures for room, (passed, figures) in results.items() if passed},
            [room for room, (passed, _) in results.items() if not passed])


def committed():
    """The commit that is tried."""
    if git("status", "--porcelain", "--", *SPOKEN_OF):
        sys.exit(f"error: what is to be tried is not committed: {', '.join(SPOKEN_OF)}")
    return git("rev-parse", "HEAD")


def last_results():
    return json.loads(RESULTS.read_text())


def keep(figures, commit):
    results = last_results()
    today = datetime.datetime.now(datetime.timezone.utc).date().isoformat()
    for room, found in figures.items():
        results[room] = {"date": today, "commit": commit, **found}
    RESULTS.write_text(json.dumps(results, indent=2, sort_keys=True) + "\n")


def require_recent():
    """What the last long run of a room has tried is the library of today, but for a few changes."""
    if git("rev-parse", "--is-shallow-repository") == "true":
        print("how old the last long runs are cannot be told: this clone is shallow")
        return
    for room, found in last_results().items():
        try:
            newer = int(git("rev-list", "--count", f"{found['commit']}..HEAD", "--", *SPOKEN_OF))
        except subprocess.CalledProcessError:
            sys.exit(f"error: the commit of the last long run of {room} is not in this history: {found['commit']}")
        if newer > CHANGES_THAT_MAY_BE_NEWER:
            sys.exit(f"error: {newer} changes of {' and '.join(SPOKEN_OF)} are newer than the last long run of {room}:"
                     f" run ./check assurance --long")


def show(rooms):
    results = last_results()
    for room in rooms:
        if room not in results:
            print(f"{room}: no long run yet")
            continue
        found = results[room]
        print(f"{room} ({found.pop('date')}, commit {found.pop('commit')[:10]})")
        for figure, value in found.items():
            print(f"{value:>14,}  {figure}" if isinstance(value, int) else f"{value:>14,.4g}  {figure}")


def main(arguments):
    options = {argument for argument in arguments if argument.startswith("--")}
    long = "--long" in options
    rooms = [argument for argument in arguments if argument not in options]
    rooms = rooms or [room for room in ROOMS if room not in LONG_ONLY or options]
    if unknown := (options - {"--long", "--last"}) | (set(rooms) - set(ROOMS)):
        sys.exit(f"error: what is {', '.join(sorted(unknown))}? {__doc__}")
    if "--last" in options:
        show(rooms)
        return
    if not long:
        require_recent()
    commit = committed() if long else None
    figures, failed = visit_all(rooms, long)
    if long:
        keep(figures, commit)
    if failed:
        sys.exit(f"error: not all is well in: {', '.join(failed)}")


if __name__ == "__main__":
    main(sys.argv[1:])
