"""Runs the commands that a page shows and compares what they print with what the page shows.

In a block of the language `console` a line that begins with `$ ` or, for root, `# ` is a command, `> ` continues it,
and what follows is what it prints: exactly, but for `...`, which stands for anything in a line, and in a line of its
own for any lines. A command must succeed unless the next one is `echo $?`. The commands of a page share one shell.
"""

import dataclasses
import re
import shlex
import subprocess
import sys

import pages

_PROMPTS = ("$ ", "# ")
_SEPARATOR = "\x1e"


@dataclasses.dataclass
class Step:
    command: str
    shown: list
    line: int


def steps(page):
    found = []
    for fence in pages.fences(page):
        if fence.language != "console":
            continue
        step = None
        for number, line in enumerate(fence.text.splitlines(), fence.line):
            if line.startswith(_PROMPTS) and line[2:].strip():
                step = Step(line[2:], [], number)
                found.append(step)
            elif step is None or line.rstrip() in ("$", "#"):
                sys.exit(f"error: {pages.name(page)}:{number}: a command is missing")
            elif line.startswith("> ") and not step.shown:
                step.command += "\n" + line[2:]
            else:
                step.shown.append(line)
    return found


def _script(found):
    """Each by `eval`, so that a syntax error stays with its own step."""
    return "".join(f"eval -- {shlex.quote(step.command)} </dev/null 2>&1; status=$?; "
                   f"printf '{_SEPARATOR}%d{_SEPARATOR}' $status; (exit $status)\n" for step in found)


def run(found, shell, folder, environment):
    """What each step prints, as lines, and its status; fewer when the shell ended before the last."""
    done = subprocess.run(["timeout", "3600", *shell, "-s"], input=_script(found), cwd=folder, env=environment,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="backslashreplace",
                          check=False)
    parts = done.stdout.split(_SEPARATOR)
    return [([line.rstrip() for line in text.splitlines()], int(status))
            for text, status in zip(parts[0:-1:2], parts[1::2])]


def _pattern(shown):
    return "".join(r"(?:.*\n)*?" if line.strip() == "..." else re.escape(line).replace(r"\.\.\.", ".*") + "\n"
                   for line in shown)


def matches(shown, printed):
    return re.fullmatch(_pattern(shown), "".join(line + "\n" for line in printed)) is not None


def findings(page, found, results):
    for index, step in enumerate(found):
        place = f"{pages.name(page)}:{step.line}: '{step.command.splitlines()[0]}'"
        if index >= len(results):
            yield f"{place} was not run: the shell ended before it"
            continue
        printed, status = results[index]
        if status != 0 and not (index + 1 < len(found) and found[index + 1].command == "echo $?"):
            yield f"{place} ended with {status}:\n" + "\n".join(printed)
        elif not matches(step.shown, printed):
            yield f"{place} printed something else than the page shows:\n" + "\n".join(printed)


def renew(page, found, results):
    """Writes what the commands printed into the page, where it shows something else."""
    lines = page.read_text().splitlines()
    for step, (printed, _) in reversed(list(zip(found, results))):
        if not matches(step.shown, printed):
            first = step.line + step.command.count("\n")
            lines[first:first + len(step.shown)] = printed
    page.write_text("\n".join(lines) + "\n")
