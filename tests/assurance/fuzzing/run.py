"""Feeds the adapters and the readers of files with what libFuzzer makes up, and proves that it would find bugs."""

import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
PROGRAMS = HERE.parents[2] / "build" / "asan" / "bin"
MOST_TO_FIND_A_BUG = 30000


class Target:
    """A fuzzer: how often it runs, how long its inputs are, and the bugs that can be seeded in what it compares with."""

    def __init__(self, name, short, long, length, bugs=("damages-what-it-writes",)):
        self.name = name
        self.short = short
        self.long = long
        self.length = length
        self.bugs = bugs

    @property
    def corpus(self):
        return HERE / "corpus" / f"{self.name}.inputs"

    def unpack(self, folder):
        """Makes a file in `folder` of each line of the corpus, which escapes what is no text."""
        folder.mkdir()
        for number, line in enumerate(self.corpus.read_text("ascii").splitlines()):
            contents = line.encode("ascii").decode("unicode_escape").encode("latin-1")
            (folder / f"{number:05}").write_bytes(contents)

    def pack(self, folder):
        """The reverse."""
        inputs = sorted(each.read_bytes() for each in folder.iterdir())
        lines = [each.decode("latin-1").encode("unicode_escape").decode("ascii") for each in inputs]
        self.corpus.write_text("".join(line + "\n" for line in lines), "ascii")

    def run(self, folder, *options, bug=""):
        command = [PROGRAMS / f"fuzz-{self.name}", folder, f"-max_len={self.length}", "-seed=1", "-len_control=0",
                   "-timeout=60", "-verbosity=1", f"-artifact_prefix={folder.parent}/", *options]
        return subprocess.run(command, env={**os.environ, "SEEDED_BUG": bug}, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, errors="replace", check=False)


TARGETS = [
    Target("operations", 50000, 1000000, 130,
           ("tells-doubles-once", "keeps-released-controls", "tells-removed-observers")),
    Target("statefile", 50000, 500000, 4096),
    Target("calibrationfiles", 180000, 1000000, 1024),
    Target("commandline", 15000, 100000, 128),
    Target("termsfile", 1200000, 2400000, 2048),
    Target("shellwords", 2800000, 5000000, 256),
]


def shown(output):
    """What a finding's report says for people, without the fuzzer's own lines."""
    noise = re.compile(r"^(#\d|INFO:|\"|    #\d+ 0x|\s*$|NOTE:|      Combine|###)")
    return "\n".join(line for line in output.splitlines() if not noise.match(line))


def try_target(target, is_long, renews):
    """Replays the corpus of the target, goes on from it, and seeds its bugs; gives its figures and what went wrong."""
    wrong = []
    with tempfile.TemporaryDirectory() as scratch:
        scratch = pathlib.Path(scratch)
        for bug in target.bugs:
            folder = scratch / bug
            target.unpack(folder)
            run = target.run(folder, f"-runs={MOST_TO_FIND_A_BUG}", bug=bug)
            if run.returncode == 0:
                wrong.append(f"{target.name}: the seeded bug '{bug}' was not found")

        folder = scratch / "corpus"
        target.unpack(folder)
        kept = len(list(folder.iterdir()))
        begin = time.monotonic()
        run = target.run(folder, f"-runs={target.long if is_long else target.short}")
        seconds = time.monotonic() - begin
        if run.returncode != 0:
            crashes = [each for pattern in ("crash-*", "leak-*", "timeout-*", "oom-*") for each in scratch.glob(pattern)]
            inputs = "".join(f"\n  input: {each.read_bytes()!r}" for each in crashes)
            wrong.append(f"{target.name}:\n{shown(run.stdout)}{inputs}")
        if renews and run.returncode == 0:
            (scratch / "merged").mkdir()
            merged = target.run(scratch / "merged", folder, "-merge=1", "-set_cover_merge=1", "-use_counters=0")
            if merged.returncode != 0:
                wrong.append(f"{target.name}: {merged.stdout}")
            else:
                target.pack(scratch / "merged")
    done = re.findall(r"^#(\d+)\s+DONE\s+cov: (\d+) ft: (\d+)", run.stdout, re.MULTILINE)
    executions, edges, features = (int(number) for number in done[-1]) if done else (0, 0, 0)
    if run.returncode == 0 and executions < (target.long if is_long else target.short):
        wrong.append(f"{target.name}: only {executions} executions:\n{shown(run.stdout)}")
    return {"executions": executions, "edges": edges, "features": features, "kept": kept, "seconds": seconds}, wrong


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("--long", action="store_true", help="ten million executions instead of a minute each")
    arguments.add_argument("--json", type=pathlib.Path, help="where to write the figures")
    arguments.add_argument("--renew", action="store_true", help="put what was found on the way into the corpora")
    arguments.add_argument("targets", nargs="*", help="instead of all", choices=[[], *(each.name for each in TARGETS)])
    wanted = arguments.parse_args()
    targets = [each for each in TARGETS if not wanted.targets or each.name in wanted.targets]

    figures = {}
    failures = []
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = pool.map(lambda target: try_target(target, wanted.long, wanted.renew), targets)
        for target, (found, wrong) in zip(targets, results):
            failures += wrong
            rate = found["executions"] / max(found["seconds"], 0.001)
            print(f"{target.name}: {found['executions']} executions from {found['kept']} kept inputs, {rate:.0f} per "
                  f"second, {found['edges']} edges, {len(target.bugs)} seeded bugs, "
                  f"{'findings below' if wrong else 'nothing found'}", flush=True)
            figures[f"{target.name} executions"] = found["executions"]
            figures[f"{target.name} seeded bugs"] = len(target.bugs)
            figures[f"{target.name} findings"] = len(wrong)
            figures[f"{target.name} seconds"] = round(found["seconds"], 1)
            if wanted.long:  # what depends on how threads and time went
                figures[f"{target.name} executions per second"] = round(rate)
                figures[f"{target.name} edges covered"] = found["edges"]
                figures[f"{target.name} features covered"] = found["features"]
    for failure in failures:
        print(failure, file=sys.stderr)
    if wanted.json:
        figures["executions"] = sum(figures[f"{target.name} executions"] for target in targets)
        wanted.json.write_text(json.dumps(figures, indent=2) + "\n")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
