"""Compares what a page says of service-console with the program."""

import re
import subprocess

import pages

_PLACEHOLDER = re.compile(r"[A-Z<\[\-\"'{0-9]")


class Program:
    """service-console's tree of commands, as its help tells it."""

    def __init__(self, environment):
        self._environment = environment
        self._helps = {}

    def _help(self, path):
        if path not in self._helps:
            done = subprocess.run(["service-console", *path, "--help"], env=self._environment, stdout=subprocess.PIPE,
                                  stdin=subprocess.DEVNULL, text=True, check=True)
            self._helps[path] = done.stdout
        return self._helps[path]

    def subcommands(self, path):
        listed = re.search(r"^Subcommands:\n((?:  .*\n)+)", self._help(path), re.MULTILINE)
        return re.findall(r"^  (\S+)", listed.group(1), re.MULTILINE) if listed else []

    def commands(self, path=()):
        """The commands that do something, each as a tuple of words."""
        below = self.subcommands(path)
        if not below:
            yield path
        for word in below:
            yield from self.commands((*path, word))

    def path_of(self, line):
        """The commands that a line of a synopsis stands for: `files ls|df` are two; and what is wrong with it."""
        paths = [()]
        for word in self._without_options(line.split()[1:]):
            if _PLACEHOLDER.match(word) or not self.subcommands(paths[0]):
                break
            alternatives = word.split("|")
            unknown = [name for name in alternatives if name not in self.subcommands(paths[0])]
            if unknown:
                return [], [f"there is no command '{' '.join([*paths[0], unknown[0]])}'"]
            paths = [(*path, name) for path in paths for name in alternatives]
        return paths, []

    @staticmethod
    def _without_options(words):
        """Without the options in front of the command."""
        while words and words[0].startswith("--"):
            words = words[2 if words[0] in ("--provider", "--state", "--wait", "--missing") else 1:]
        return words

    def problems(self, line):
        """What is wrong with a line of a synopsis: unknown commands and options."""
        paths, problems = self.path_of(line)
        yield from problems
        for path in paths:
            if path and self.subcommands(path):
                yield f"'{' '.join(path)}' is no command but has some"
            for option in re.findall(r"--[a-z][a-z-]*", line):
                if not re.search(rf"{option}\b", self._help(()) + self._help(path)):
                    yield f"'{' '.join(path)}' has no option {option}"

    def findings(self, page):
        """Commands that the synopses of `page` lack, and those that there are none of."""
        shown = set()
        for fence in pages.fences(page):
            if fence.language != "text":
                continue
            for line in fence.text.splitlines():
                if line.startswith("service-console "):
                    shown |= set(self.path_of(line)[0])
                    yield from (f"{pages.name(page)}: '{line}': {problem}" for problem in self.problems(line))
        for command in self.commands():
            if command not in shown:
                yield f"{pages.name(page)}: the command '{' '.join(command)}' is not in the synopsis"
