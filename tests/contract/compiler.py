"""clang, asked how it lays out what the public headers declare."""

import pathlib
import re
import subprocess
import tempfile

import headers

_CLANG = "clang++-19"
_STANDINS = pathlib.Path(__file__).resolve().parent / "msvcstandins.h"
_EXPORT_HEADERS = {"service/devicesservice_export.h": "DEVICESSERVICE", "devices/devices_export.h": "DEVICES"}


class Failure(Exception):
    """What keeps a comparison from being made."""


_DUMP_RECORDS = ("-Xclang", "-fdump-record-layouts-complete")
_DUMP_TABLES = ("-Xclang", "-fdump-vtable-layouts")


class Compiler:
    """The headers of this project for one layout, those of `overlay` before them."""

    def __init__(self, layout, flags=(), overlay=None):
        roots = ([overlay] if overlay else []) + headers.INCLUDE_ROOTS
        self._layout = layout
        # Some classes are named with private ones.
        self._command = [_CLANG, "-std=c++23", "-fno-access-control", *(f"-I{root}" for root in roots)]
        if layout == "msvc":
            self._command += ["--target=x86_64-pc-windows-msvc", "-nostdlibinc"]
        else:
            self._command += ["-fPIC", *flags]

    def records(self, source):
        """Name to Layout of every class that `source` completes."""
        return _records(self._run(source, *_DUMP_RECORDS, "-fsyntax-only"))

    def records_and_tables(self, source):
        """The same, and name to operations of the tables of virtual functions that `source` makes."""
        text = self._run(source, *_DUMP_RECORDS, *_DUMP_TABLES, "-emit-llvm", "-c", "-o", "/dev/null")
        return _records(text), _virtual_tables(text)

    def _run(self, source, *options):
        with tempfile.TemporaryDirectory() as folder:
            file = pathlib.Path(folder, "source.cpp")
            file.write_text(source)
            more = self._stand_in(pathlib.Path(folder, "standins")) if self._layout == "msvc" else []
            command = [*self._command, *more, *options, str(file)]
            run = subprocess.run(command, capture_output=True, text=True, check=False)
        if run.returncode != 0:
            raise Failure(f"{' '.join(command)}\n{run.stderr}")
        return run.stdout

    @staticmethod
    def _stand_in(folder):
        """Has every header of the standard library, of Qt and of the build include the stand-ins."""
        wanted = re.findall(r"#include <([\w]+)>", "".join(
            path.read_text() for folder in ("platform", "devices", "service")
            for path in (headers.ROOT / folder).glob("**/*.h")))
        for name in {*wanted, "type_traits"}:
            path = folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(f'#include "{_STANDINS}"\n')
        for name, prefix in _EXPORT_HEADERS.items():
            path = folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(f"#pragma once\n#define {prefix}_EXPORT __declspec(dllimport)\n#define {prefix}_NO_EXPORT\n")
        return [f"-I{folder}"]


def _records(text):
    blocks = re.findall(r"^\*\*\* Dumping AST Record Layout\n((?: .*\n)+)", text, re.M)
    layouts = (Layout(block) for block in blocks)
    return {layout.name: layout for layout in layouts}


def _virtual_tables(text):
    tables = {}
    for name, entries in re.findall(r"^(?:Vtable|VFTable) for '(.+)' \(\d+ entr\w+\)\.\n((?: .*\n)+)", text, re.M):
        operations = re.findall(r"^ +\d+ \| ((?!offset_to_top).*[\])]|.*\) const)$", entries, re.M)
        tables[name.split("' in '")[-1]] = operations
    return tables


def _plain(text):
    """A declaration without what the dump adds to it."""
    return re.sub(r"\b(class|struct|enum) ", "", re.sub(r" \(empty\)$", "", text))


class Layout:
    """One class of the dump: name, size, alignment, polymorphic, bases and fields (offset, type, name)."""

    def __init__(self, block):
        lines = block.splitlines()
        self.name = _plain(lines[0].split("|", 1)[1].strip())
        self.size, self.alignment = map(int, re.search(r"\[sizeof=(\d+),.*?\balign=(\d+)", block, re.S).groups())
        self.polymorphic = bool(re.search(r"vf?table pointer\)", block))
        self.bases = []
        self.fields = []
        for line in lines[1:]:
            member = re.match(r" *(\d+) \|   (\S.*)$", line)
            if not member or member[2].endswith("table pointer)"):
                continue
            base = re.match(r"(.*?) \((?:primary )?base\)", member[2])
            if base:
                self.bases.append(_plain(base[1]))
            else:
                self.fields.append((int(member[1]), *_plain(member[2]).rsplit(" ", 1)))
