#!/usr/bin/env python3
"""Compares what the library exports on Linux and on Windows.

  exports.py LIBRARY DLL              prints what only one of them exports; exit status 1 when there is something
  exports.py --canary LIBRARY DLL     the same with one export missing and one too many: exit status 0 when both show
"""

import re
import subprocess
import sys

# Qt's macro hides it on Linux; on Windows it goes with the class.
_QTS_OWN = re.compile(r"::qt_static_metacall\(")


def output_of(*command, **options):
    """What a command prints."""
    return subprocess.run(command, capture_output=True, text=True, check=True, **options).stdout


def demangled(symbols):
    """The names as a set. 64-bit numbers are `long` on one platform and `long long` on the other."""
    names = output_of("c++filt", input="\n".join(symbols)).splitlines()
    return {re.sub(r"\b(\d+)ll?\b", r"\1", name.replace("long long", "long")) for name in names}


def exports_of_library(path):
    """What an ELF library exports."""
    return demangled(line.split()[-1] for line in output_of("nm", "--dynamic", "--defined-only", path).splitlines())


def exports_of_dll(path):
    """What a DLL exports, but for what is Qt's."""
    text = output_of("x86_64-w64-mingw32-objdump", "--private-headers", path)
    table = text.split("[Ordinal/Name Pointer] Table", 1)[1].split("\n\n", 1)[0]
    names = demangled(line.split()[-1] for line in table.splitlines() if line.startswith("\t["))
    return {name for name in names if not _QTS_OWN.search(name)}


def differences(library, dll):
    """A line for each name that only one of them exports."""
    return sorted([f"only on Linux:   {name}" for name in library - dll]
                  + [f"only on Windows: {name}" for name in dll - library])


def main():
    """The exit status."""
    canary = sys.argv[1] == "--canary"
    library, dll = exports_of_library(sys.argv[-2]), exports_of_dll(sys.argv[-1])
    if canary:
        missing = min(dll)
        shown = differences(library, (dll - {missing}) | {"tov::extra()"})
        noticed = {f"only on Linux:   {missing}", "only on Windows: tov::extra()"} <= set(shown)
        print(f"exports: one missing and one too many: {'noticed' if noticed else 'NOT NOTICED'}")
        return 0 if noticed else 1
    lines = differences(library, dll)
    print("\n".join(lines) or f"{len(dll)} exports, the same on Linux and on Windows")
    return 1 if lines else 0


if __name__ == "__main__":
    sys.exit(main())
