"""Checks the papers: README.md, CONTRIBUTING.md and the guide in docs/. Usage:

check.py                              everything but the transcripts of pages that other checks run
check.py transcripts PAGE [SHELL...]  runs the commands of one page, by another shell than bash's
check.py renew PAGE...                writes what the commands of these pages print into them
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

import console
import pages
import transcripts

_CI = pages.PROJECT / ".ci" / "run"
# Pages with commands that are run by other checks, where there is what they need.
_RUN_ELSEWHERE = {"index.md": "scripts/package.sh", "windows.md": "check"}
# Pages about the sources show commands that are run in them; those of the others leave nothing behind.
_ABOUT_SOURCES = {"README.md", "CONTRIBUTING.md", "windows.md", "binary-contract.md", "adding-an-adapter.md"}


def _checks_of(line):
    """The commands that a line of the shell stands for: each check that ./check is to run for itself."""
    words = line.split()
    if words[0] != "./check":
        return [line.strip()]
    return [f"./check {word}" for word in words[1:] or ["dev"]]


def _run_by_ci():
    lines = [line for line in _CI.read_text().splitlines() if line.startswith("./")]
    return {command for line in lines for command in _checks_of(line)}


def _every_check():
    every = re.search(r'\[ "\$\*" = all \] && set -- (.*)', (pages.PROJECT / "check").read_text()).group(1)
    return {f"./check {word}" for word in every.split()}


def _is_left_to_ci(command, run_by_ci):
    """Whether another check runs the command; recording the contract again is a part of checking it."""
    if not command.startswith("./check"):
        return False
    if command == "./check renew-abi":
        return "./check abi" in run_by_ci
    wanted = _every_check() if command == "./check all" else set(_checks_of(command))
    return wanted <= run_by_ci


def environment():
    """That of the user, with the console of the debug build, but without what would change its answers."""
    environment = {name: value for name, value in os.environ.items() if not name.startswith(("LC_", "LANG"))}
    environment["LC_ALL"] = "C.UTF-8"
    environment["PATH"] = f"{pages.PROJECT / 'build' / 'dev' / 'bin'}:{environment['PATH']}"
    return environment


def _run(page, shell=("bash",)):
    """The steps of a page that are run here, and what they print."""
    run_by_ci = _run_by_ci()
    found = [step for step in transcripts.steps(page) if not _is_left_to_ci(step.command, run_by_ci)]
    with tempfile.TemporaryDirectory() as scratch:
        folder = pages.PROJECT if page.name in _ABOUT_SOURCES else scratch
        return found, transcripts.run(found, shell, folder, environment())


def transcript_findings(page, shell=("bash",)):
    found, results = _run(page, shell)
    print(f"{pages.name(page)}: {len(results)} commands run")
    return transcripts.findings(page, found, results)


def quote_findings(page, sources):
    """Code that stands in no file of the project: it would not be compiled. Indentation may differ as a whole."""
    for fence in pages.fences(page):
        if fence.language in ("cpp", "cmake") and not any(fence.text in source for source in sources[fence.language]):
            yield f"{pages.name(page)}:{fence.line}: this code stands in no file of the project"
        elif fence.language not in ("cpp", "cmake", "console", "text"):
            yield f"{pages.name(page)}:{fence.line}: a block of code is cpp, cmake, console or text"


def _sources():
    tracked = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=pages.PROJECT,
                             stdout=subprocess.PIPE, text=True, check=True).stdout.splitlines()
    def texts(*endings):
        return [(pages.PROJECT / file).read_text() for file in tracked
                if file.endswith(endings) and (pages.PROJECT / file).is_file()]
    return {"cpp": texts(".cpp", ".h"), "cmake": texts("CMakeLists.txt", ".cmake")}


def link_findings(page):
    for link in pages.links(page):
        if re.match(r"[a-z]+:", link):
            yield f"{pages.name(page)}: {link} leads out of the project"
        elif not (page.parent / link.split("#")[0]).exists():
            yield f"{pages.name(page)}: {link} leads nowhere"


def command_findings(page, program):
    """Commands in the text, which must exist: those of service-console, and what ./check can run."""
    run_by_ci = _run_by_ci()
    words = {command.split()[1] for command in run_by_ci if command.startswith("./check")}
    words |= {"all", "renew-abi", "renew-docs"}
    for span in pages.code_spans(page):
        if span.startswith("service-console "):
            yield from (f"{pages.name(page)}: `{span}`: {problem}" for problem in program.problems(span))
        elif span.startswith("./check ") and not set(span.split()[1:]) <= words:
            yield f"{pages.name(page)}: `{span}`: there is no such check"
        elif span.startswith(("./", "scripts/")) and not (pages.PROJECT / span.split()[0]).is_file():
            yield f"{pages.name(page)}: `{span}`: there is no such file"


def _build_options():
    """By the cache of the debug build."""
    cache = (pages.PROJECT / "build" / "dev" / "CMakeCache.txt").read_text()
    return set(re.findall(r"^(DEVICESSERVICE_\w+):(?:BOOL|STRING)=", cache, re.MULTILINE))


def option_findings(page):
    """Build options that the page does not name."""
    for name in sorted(_build_options() - set(pages.code_spans(page))):
        yield f"{pages.name(page)}: the build option {name} is not named"


def everything():
    program = console.Program(environment())
    sources = _sources()
    for page in pages.ALL:
        yield from quote_findings(page, sources)
        yield from link_findings(page)
        yield from command_findings(page, program)
        if page.name not in _RUN_ELSEWHERE:
            yield from transcript_findings(page)
    yield from program.findings(pages.PROJECT / "docs" / "console.md")
    yield from option_findings(pages.README)


def main(arguments):
    if arguments[:1] == ["renew"]:
        for page in map(pathlib.Path, arguments[1:]):
            transcripts.renew(page.resolve(), *_run(page.resolve()))
        return 0
    if arguments[:1] == ["transcripts"]:
        found = transcript_findings(pathlib.Path(arguments[1]).resolve(), arguments[2:] or ("bash",))
    elif not arguments:
        found = everything()
    else:
        sys.exit(__doc__)
    count = 0
    for finding in found:
        print(finding, file=sys.stderr)
        count += 1
    return 1 if count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
