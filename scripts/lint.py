#!/usr/bin/python3
"""Runs clang-tidy over everything that ships, as build/lint would compile it.

What has passed before, with all that it includes, is not looked at again. That is remembered in
~/.cache/DevicesService/lint; without it everything is looked at.
"""

import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
from concurrent import futures

PROJECT = pathlib.Path(__file__).resolve().parent.parent
BUILD = PROJECT / "build" / "lint"
PLUGIN = BUILD / "ownsources.so"
PASSED = pathlib.Path.home() / ".cache" / "DevicesService" / "lint"
SHIPPED = ("service/", "platform/", "provider/", "simulator/", "host/", "tools/", "console/", "conformance/",
           "workbench/", "python/")
TIDY = ["clang-tidy-19", "--quiet", f"--load={PLUGIN}", "--checks=house-own-sources", "--warnings-as-errors=*"]


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


def shipped():
    """How each source that ships would be compiled: its entry among the compiler's commands."""
    return [entry for entry in json.loads((BUILD / "compile_commands.json").read_text())
            if os.path.relpath(entry["file"], PROJECT).startswith(SHIPPED)]


def included(entries):
    """By the name of a source, all files that it is compiled from."""
    commands = BUILD / "shipped.json"
    commands.write_text(json.dumps(entries))
    rules = output_of("clang-scan-deps-19", "--compilation-database", commands).replace("\\\n", "")
    lists = [rule.split(": ")[1].split() for rule in rules.splitlines()]
    return {files[0]: files for files in lists}  # a rule names its source first


def key(command, files, tools):
    """Of the contents of everything that decides about a finding; system headers by their packages' versions."""
    digest = hashlib.sha256((tools + command).replace(str(PROJECT), "").encode())
    for file in sorted(pathlib.Path(os.path.normpath(BUILD / name)) for name in files):
        if file.is_relative_to(PROJECT):
            digest.update(str(file.relative_to(PROJECT)).encode() + file.read_bytes())
    return digest.hexdigest()


def passes(source, *options):
    """Runs clang-tidy and shows what it finds."""
    run = subprocess.run([*TIDY, source, *options], capture_output=True, text=True, check=False)
    if run.returncode:
        print(run.stdout, re.sub(r".*warnings? generated\.\n", "", run.stderr), sep="", flush=True)
    return run.returncode == 0


def compiles(entry):
    """Whether the compiler accepts the Python module's source: clang-tidy keeps silent about what that includes."""
    if not os.path.relpath(entry["file"], PROJECT).startswith("python/"):
        return True
    command = [*shlex.split(entry["command"]), "-fsyntax-only"]
    return subprocess.run(command, cwd=entry["directory"], check=False).returncode == 0


def looked_at(entry, mark):
    """Whether the source passes, which is then remembered."""
    passed = passes(entry["file"], "-p", BUILD) and compiles(entry)
    if passed:
        mark.touch()
    return passed


def notices_breaches(scratch):
    """Whether something to be found in a source and in a header of it is found, by clang-tidy and by the compiler."""
    (scratch / "host").mkdir(parents=True, exist_ok=True)
    for name, text in (("canary.h", "inline int* inHeader = 0;\n#define _RESERVED\n"),
                       ("canary.cpp", "int* inSource = 0;\nint _reserved = 0;\n")):
        (scratch / "host" / name).write_text('#include "canary.h"\n' * name.endswith("cpp") + text)
    source = scratch / "host" / "canary.cpp"
    found = subprocess.run([*TIDY, f"--config-file={PROJECT / '.clang-tidy'}", source, "--", "-std=c++23"],
                           capture_output=True, text=True, check=False).stdout
    return all(re.search(f"{name}:.*{finding}", found) for name, finding in (
        ("canary.h", "modernize-use-nullptr"), ("canary.h", "reserved-macro-identifier"),
        ("canary.cpp", "modernize-use-nullptr"), ("canary.cpp", "reserved-identifier")))


def main():
    llvm = output_of("llvm-config-19", "--includedir").strip()
    subprocess.run(["g++", "-std=c++17", "-O1", "-fno-rtti", "-fPIC", "-shared", f"-I{llvm}",
                    PROJECT / "scripts" / "ownsources.cpp", "-o", PLUGIN], check=True)
    if not notices_breaches(BUILD / "canary"):
        sys.exit("error: clang-tidy does not find what is there to be found")

    tools = output_of("dpkg-query", "--show", "clang-tidy-19", "qt6-base-dev", "qt6-charts-dev", "libstdc++-12-dev",
                      "libcli11-dev", "libedit-dev", "pybind11-dev", "python3-dev")
    for name in (".clang-tidy", "workbench/.clang-tidy", "scripts/ownsources.cpp", "scripts/lint.py"):
        tools += (PROJECT / name).read_text()
    entries = shipped()
    files = included(entries)
    marks = [PASSED / key(entry["command"], files[entry["file"]], tools) for entry in entries]
    unknown = [(entry, mark) for entry, mark in zip(entries, marks) if not mark.exists()]

    PASSED.mkdir(parents=True, exist_ok=True)
    with futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        passed = list(pool.map(lambda each: looked_at(*each), unknown))
    print(f"{len(passed)} sources looked at, {passed.count(False)} with findings", flush=True)
    sys.exit(not all(passed))


if __name__ == "__main__":
    main()
