#!/usr/bin/env python3
"""The binary contract with the library's two neighbours, written down in tables and compared with what compilers make
of the headers.

  contract.py check LAYOUT [-- FLAG...]     lays the headers out as LAYOUT does and compares the result with the tables
  contract.py canaries LAYOUT [-- FLAG...]  breaks copies of the headers, one way at a time: a check must notice each
  contract.py renew [-- FLAG...]            writes the tables; read the difference before it is committed
  contract.py test FILE                     writes a test of the layout that its own compiler makes
  contract.py overlay CANARY FOLDER         writes the header that CANARY breaks into FOLDER

LAYOUT is itanium, for the headers as they are, or msvc, for the headers over stand-ins for the standard library and Qt.
FLAGs say where the compiler finds Qt and the headers that the build writes.
"""

import argparse
import os
import pathlib
import sys
import tempfile
from concurrent import futures

import canaries
import layouttest
import tables
from compiler import Compiler, Failure


def check(layout, flags):
    """True when the headers are as the tables say."""
    lines = tables.differences(tables.lay_out(Compiler(layout, flags)))
    print("\n".join(lines) if lines else f"{layout}: as the tables say: "
          + ", ".join(f"{len(tables.read(name))} {name}" for name in tables.NAMES))
    return not lines


def check_canaries(layout, flags):
    """True when each breach shows, in its classes and in no other."""
    names = [name for name, canary in canaries.CANARIES.items() if layout in canary.layouts]
    with futures.ThreadPoolExecutor(os.cpu_count()) as threads:
        notices = list(threads.map(lambda name: is_noticed(name, layout, flags), names))
    for name, noticed in zip(names, notices):
        print(f"{layout}: {name}: {'noticed' if noticed else 'NOT NOTICED'}")
    return all(notices)


def is_noticed(name, layout, flags):
    """Whether a canary makes the check fail as it should."""
    with tempfile.TemporaryDirectory() as overlay:
        canary = canaries.write_overlay(name, overlay)
        return tables.changed_classes(tables.lay_out(Compiler(layout, flags, overlay))) == set(canary.breaks)


def renew(flags):
    """Writes the tables."""
    for name, sections in tables.lay_out(Compiler("itanium", flags)).items():
        tables.write(name, sections)
    return True


def main():
    """Does what the command line says; the exit status tells how it went."""
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    verbs = parser.add_subparsers(dest="verb", required=True)
    for verb in ("check", "canaries"):
        verbs.add_parser(verb).add_argument("layout", choices=("itanium", "msvc"))
    verbs.add_parser("renew")
    verbs.add_parser("test").add_argument("file", type=pathlib.Path)
    overlay = verbs.add_parser("overlay")
    overlay.add_argument("canary", choices=canaries.CANARIES)
    overlay.add_argument("folder", type=pathlib.Path)

    for verb in verbs.choices.values():
        verb.add_argument("flags", nargs="*", metavar="-- FLAG")
    options = parser.parse_args()
    flags = options.flags
    try:
        if options.verb == "check":
            return 0 if check(options.layout, flags) else 1
        if options.verb == "canaries":
            return 0 if check_canaries(options.layout, flags) else 1
        if options.verb == "renew":
            renew(flags)
        elif options.verb == "test":
            options.file.write_text(layouttest.text())
        else:
            canaries.write_overlay(options.canary, options.folder)
        return 0
    except Failure as failure:
        print(f"error: {failure}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
