"""Checks the papers: README.md, CONTRIBUTING.md and the guide in docs/. Usage:

check.py                              everything but the transcripts of pages that other checks run
check.py transcripts PAGE [SHELL...]  runs the commands of one page, in SHELL instead of bash
check.py renew PAGE...                writes what the commands of these pages print into them
"""

import fnmatch
import functools
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
_CHECK = pages.PROJECT / "check"
# Pages with commands that another check runs, where there is what they need, and the file that has it do so.
_RUN_ELSEWHERE = {"index.md": pages.PROJECT / "scripts" / "package.sh", "windows.md": _CHECK}
# Pages with commands that need the Python module, and where the debug build has that.
_ABOUT_SCRIPTS = {"scripts.md"}
_PYTHON_PATH = pages.PROJECT / "build" / "dev" / "lib" / "python"
# The commands of these pages run in the source tree, those of the others in an empty folder.
_ABOUT_SOURCES = {"README.md", "CONTRIBUTING.md", "windows.md", "binary-contract.md", "adding-an-adapter.md",
                  "assurance.md"}


@functools.cache
def _run_by_ci():
    """The words with which CI runs ./check."""
    lines = [line.split("./check")[1].split() for line in _CI.read_text().splitlines() if " ./check" in line]
    return {word for line in lines for word in line or ["dev"]}


@functools.cache
def _checks():
    """The words that ./check takes."""
    listed = re.search(r"for what in .*?case \$what in\n\s+(.*?)\) ;;", _CHECK.read_text(), re.DOTALL).group(1)
    return set(re.findall(r"[\w-]+", listed))


def _is_left_to_ci(command):
    """Whether CI runs the command; recording the contract again is a part of checking it."""
    if command == "./check renew-abi":
        return "abi" in _run_by_ci()
    return command.split()[0] == "./check" and set(command.split()[1:] or ["dev"]) <= _run_by_ci()


def environment():
    """The user's, with the programs of the debug build and the scripts first in the path, and without what would change
    their answers."""
    others = ("LC_", "LANG", "DEVICESSERVICE_PROVIDER")
    environment = {name: value for name, value in os.environ.items() if not name.startswith(others)}
    environment["LC_ALL"] = "C.UTF-8"
    programs = [pages.PROJECT / "build" / "dev" / "bin", pages.PROJECT / "examples" / "production-test"]
    environment["PATH"] = ":".join([*map(str, programs), environment["PATH"]])
    environment["PYTHONPATH"] = str(_PYTHON_PATH)
    return environment


def _run(page, steps, shell=("bash",)):
    """What those of the steps print that are run here: these steps, and their results."""
    here = [step for step in steps if not _is_left_to_ci(step.command)]
    with tempfile.TemporaryDirectory() as scratch:
        folder = pages.PROJECT if page.name in _ABOUT_SOURCES else scratch
        return here, transcripts.run(here, shell, folder, environment())


def transcript_findings(page, shell=("bash",), must_show_some=False):
    steps = transcripts.steps(page)
    if must_show_some and not steps:
        yield f"{pages.name(page)}: shows no command"
    for step in steps:
        if _is_left_to_ci(step.command) and step.shown != ["..."]:
            yield f"{pages.name(page)}:{step.line}: nobody compares what '{step.command}' prints: show ..."
    here, results = _run(page, steps, shell)
    yield from transcripts.findings(page, here, results)
    if here and page.is_relative_to(pages.PROJECT):
        print(f"{pages.name(page)}: {len(results)} commands run")


def elsewhere_findings(page_name, runner):
    called = rf"^\s*papers transcripts docs/{re.escape(page_name)}\b"
    if not re.search(called, runner.read_text(), re.MULTILINE):
        yield f"docs/{page_name}: nobody runs its commands, {pages.name(runner)} does not"
    if not {"docs", "package", "windows"} <= _run_by_ci():
        yield f"docs/{page_name}: CI does not run what runs its commands"


def quote_findings(page, sources):
    """Code that stands in no file of the project, word for word: it would not be compiled."""
    for fence in pages.fences(page):
        place = f"{pages.name(page)}:{fence.line}"
        if fence.language in sources:
            if not fence.text.strip() or not any("\n" + fence.text in source for source in sources[fence.language]):
                yield f"{place}: this code stands in no file of the project"
        elif fence.language == "text":
            if re.search(r"^[$#] ", fence.text, re.MULTILINE):
                yield f"{place}: commands are shown in a block of the language console"
        elif fence.language != "console":
            yield f"{place}: a block of code is {', '.join(sources)}, console or text"


def _files():
    """What git tracks, or would: paths in the project."""
    listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=pages.PROJECT,
                            stdout=subprocess.PIPE, text=True, check=True).stdout.splitlines()
    return [file for file in listed if (pages.PROJECT / file).is_file()]


def _sources(files):
    def texts(*endings):
        return ["\n" + (pages.PROJECT / file).read_text() for file in files if file.endswith(endings)]
    return {"cpp": texts(".cpp", ".h"), "cmake": texts("CMakeLists.txt", ".cmake"), "python": texts(".py"),
            "qml": texts(".qml")}


def link_findings(page):
    for link in pages.links(page) + pages.images(page):
        target = (page.parent / link).resolve()
        root = pages.PROJECT if page.is_relative_to(pages.PROJECT) else page.parent
        if re.match(r"[a-z]+:", link) or not target.is_relative_to(root):
            yield f"{pages.name(page)}: {link} leads out of the project"
        elif not target.exists():
            yield f"{pages.name(page)}: {link} leads nowhere (pages are linked as a whole)"
    for link in pages.broken_links(page):
        yield f"{pages.name(page)}: the link to {link} goes over the end of a line, which Doxygen does not understand"


def command_findings(page, program):
    """Commands in the text, which must exist: those of service-console, and what ./check can run."""
    for span in pages.code_spans(page):
        if span.startswith("service-console "):
            yield from (f"{pages.name(page)}: `{span}`: {problem}" for problem in program.problems(span))
        elif span.startswith("./check ") and not set(span.removesuffix(" --long").split()[1:]) <= _checks() | {"all"}:
            yield f"{pages.name(page)}: `{span}`: there is no such check"
        elif span.startswith("./") and span.split()[0] not in _CI.read_text().split():
            yield f"{pages.name(page)}: `{span}`: CI does not run this"


def path_findings(page, files):
    """Paths in the text that are not in the project, though their first folder is."""
    folders = {file.split("/")[0] for file in files if "/" in file}
    for span in pages.code_spans(page):
        if re.fullmatch(r"[\w.*-]+(/[\w.*-]+)+/?", span) and span.split("/")[0] in folders:
            path = span.rstrip("/")
            if not any(fnmatch.fnmatchcase(file, path) or file.startswith(path + "/") for file in files):
                yield f"{pages.name(page)}: there is no {span}"


def guide_findings(page):
    """A page of the guide that the manual does not have, or that its first page does not name."""
    if f'/{page.name}"' not in (pages.PROJECT / "docs" / "Doxyfile.in").read_text():
        yield f"{pages.name(page)}: is not in docs/Doxyfile.in"
    if page.name != "index.md" and page.name not in pages.links(pages.PROJECT / "docs" / "index.md"):
        yield f"{pages.name(page)}: docs/index.md does not name it"


def _registrations():
    """Name, SDK interface and created type of each control that the library registers."""
    text = (pages.PROJECT / "devices" / "controls.h").read_text()
    found = re.findall(r"ControlKind<([\w:]+),\s+service::(\w+)(?:,\s+[\w:]+)?>\s+(\w+)\s*\{", text)
    if len(found) != text.count("inline constexpr ControlKind<"):
        raise ValueError("devices/controls.h is not understood")
    return [(key, interface, created) for interface, created, key in found]


def control_findings(page, column):
    """Controls that no row of the page shows with the SDK's interface (column 1) or the created type (column 2)."""
    lines = page.read_text().splitlines()
    for registration in _registrations():
        key, quoted = f"`controls::{registration[0]}`", registration[column]
        wanted = f"`{quoted}`" if column == 1 else f"`std::shared_ptr<{quoted}>`"
        if not any(key in line and wanted in line for line in lines):
            yield f"{pages.name(page)}: no row has {key} and {wanted}"
    for line in lines:
        header, interface = re.search(r"`(sdk/[\w/]+\.h)` \|$", line), re.search(r"`sdk::[\w:]*?(\w+)`", line)
        if header and interface:
            file = pages.PROJECT / "platform" / header.group(1)
            if not file.is_file() or f"class {interface.group(1)}\n" not in file.read_text():
                yield f"{pages.name(page)}: {header.group(1)} does not declare {interface.group(1)}"


def _build_options():
    """By the cache of the debug build."""
    cache = (pages.PROJECT / "build" / "dev" / "CMakeCache.txt").read_text()
    return set(re.findall(r"^(DEVICESSERVICE_\w+):(?:BOOL|STRING)=", cache, re.MULTILINE))


def option_findings(page):
    """Build options that the page does not name, and those that there are not."""
    named = {span for span in pages.code_spans(page) if re.fullmatch(r"DEVICESSERVICE_\w+", span)}
    for name in sorted(_build_options() ^ named):
        yield f"{pages.name(page)}: the build option {name} is {'unknown' if name in named else 'not named'}"


def everything():
    program = console.Program(environment())
    files = _files()
    sources = _sources(files)
    for page in pages.ALL:
        yield from quote_findings(page, sources)
        yield from link_findings(page)
        yield from command_findings(page, program)
        yield from path_findings(page, files)
        if page in pages.GUIDE:
            yield from guide_findings(page)
        if page.name in _ABOUT_SCRIPTS and not _PYTHON_PATH.is_dir():
            print(f"{pages.name(page)}: not run, because there is no Python module in build/dev")
        elif page.name not in _RUN_ELSEWHERE:
            yield from transcript_findings(page)
    for name, runner in _RUN_ELSEWHERE.items():
        yield from elsewhere_findings(name, runner)
    yield from program.findings(pages.PROJECT / "docs" / "console.md")
    yield from control_findings(pages.PROJECT / "docs" / "sdk-implementation.md", 1)
    yield from control_findings(pages.PROJECT / "docs" / "writing-a-host.md", 2)
    yield from option_findings(pages.README)


def main(arguments):
    if arguments[:1] == ["renew"]:
        for page in map(pathlib.Path, arguments[1:]):
            transcripts.renew(page.resolve(), *_run(page.resolve(), transcripts.steps(page)))
        return 0
    if arguments[:1] == ["transcripts"]:
        page = pathlib.Path(arguments[1]).resolve()
        found = transcript_findings(page, arguments[2:] or ("bash",), must_show_some=True)
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
