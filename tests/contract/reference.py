#!/usr/bin/env python3
"""What was recorded for a version, and what a change asks of the next: the library's exports with the types that they
reach, and a digest of each class of the tables, of which abidiff does not compare what only the SDK's headers know.

  reference.py check VERSION LIBRARY      compares with what is recorded; fails unless VERSION says enough
  reference.py canaries VERSION LIBRARY   fails unless breaches are noticed
  reference.py renew VERSION LIBRARY      records the library for VERSION, under the same condition as the check

What was removed or changed asks for the next major version, what was added for the next minor one.
"""

import hashlib
import lzma
import pathlib
import re
import subprocess
import sys
import tempfile
from concurrent import futures

import tables

_RECORD = pathlib.Path(__file__).resolve().parent / "reference" / "DevicesService.abi.xz"
_VERSION = _RECORD.with_name("version")  # and the digests

# What a change asks for, in the order of weight.
_NOTHING, _MINOR, _MAJOR = range(3)
_NAMES = ("nothing", "a minor version", "a major version")

# What is replaced in a record by what.
_BREACHES = {
    "an export is missing":
        (r"<elf-symbol name='\w*toSdkFrequencyPlan.*| elf-symbol-id='\w*toSdkFrequencyPlan\w*'", ""),
    "a slot has moved": (r"vtable-offset='3'(?=>\s*<function-decl name='isEnabled' mangled-name='_ZN3sdk)",
                         "vtable-offset='5'"),
    "fields of one type are swapped": (r"'sourcePort'((?s:.)*?)'receiverPort'", r"'receiverPort'\1'sourcePort'"),
    "a member has moved": (r"layout-offset-in-bits='\d+'(?=>\s*<var-decl name='m_temperature')",
                           "layout-offset-in-bits='0'"),
}


def is_announced(part, recorded, version):
    """Whether `version` says as much as a change of this kind asks for."""
    old, new = ([int(number) for number in text.split(".")] for text in (recorded, version))
    return (new >= old, new[:2] > old[:2], new[:1] > old[:1])[part]


def change(old, new):
    """What the change from one record to another asks for, and abidiff's report."""
    with tempfile.TemporaryDirectory() as folder:
        files = [pathlib.Path(folder, name) for name in ("old.abi", "new.abi")]
        for file, text in zip(files, (old, new)):
            file.write_text(text)
        for part, options in ((_MAJOR, ["--no-added-syms"]), (_MINOR, [])):
            run = subprocess.run(["abidiff", "--no-show-locs", *options, *files], capture_output=True, text=True,
                                 check=False)
            if run.returncode & 3:  # the tool itself failed, or was used wrongly
                sys.exit(f"error: abidiff failed: {run.stderr or run.stdout}")
            if run.returncode:
                return part, run.stdout
    return _NOTHING, ""


def digests():
    """Of what the tables say of each class."""
    return {f"{table} {name}": hashlib.sha256("\n".join(rows).encode()).hexdigest()[:16]
            for table in tables.NAMES for name, rows in tables.read(table).items()}


def table_change(old, new):
    """What the change from one set of digests to another asks for."""
    if any(new.get(name) != digest for name, digest in old.items()):
        return _MAJOR
    return _MINOR if new.keys() - old.keys() else _NOTHING


def record_of(library):
    """The types and symbols of a library as text."""
    command = ["abidw", "--exported-interfaces-only", "--no-comp-dir-path", "--no-corpus-path", "--no-show-locs",
               "--no-parameter-names", "--type-id-style", "hash", library]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def is_described(record):
    """Whether the library had debug information, without which changes of types are not noticed."""
    return "<class-decl" in record


def are_canaries_noticed(version, library, record):
    """Whether breaches are noticed, and a version that says so is believed."""
    major, minor, patch = map(int, version.split("."))
    nexts = (f"{major}.{minor}.{patch + 1}", f"{major}.{minor + 1}.0", f"{major + 1}.0.0")
    broken = {what: re.sub(*breach, record) for what, breach in _BREACHES.items()}
    changes = [(what, record, text, _MAJOR) for what, text in broken.items()]
    changes.append(("an export is added", broken["an export is missing"], record, _MINOR))
    with futures.ThreadPoolExecutor() as threads:
        parts = threads.map(lambda args: change(*args[1:3])[0], changes)
    verdicts = {what: part == expected and [is_announced(part, version, other) for other in nexts].index(True) == part
                for (what, _, _, expected), part in zip(changes, parts)}
    with tempfile.NamedTemporaryFile() as stripped:
        subprocess.run(["strip", "--strip-debug", "-o", stripped.name, library], check=True)
        verdicts["the library has no debug information"] = not is_described(record_of(stripped.name))
    described = digests()
    name, *_ = described
    for what, changed, expected in (("a class of the tables has changed", {**described, name: ""}, _MAJOR),
                                    ("a class of the tables is missing", dict([*described.items()][1:]), _MAJOR),
                                    ("the tables have one more class", {**described, "one more": ""}, _MINOR)):
        verdicts[what] = table_change(described, changed) == expected
    for what, right in verdicts.items():
        print(f"record: {what}: {'noticed' if right else 'NOT NOTICED'}")
    return all(verdicts.values())


def main(verb, version, library):
    """The exit status."""
    record = record_of(library)
    if verb == "canaries":
        return 0 if are_canaries_noticed(version, library, record) else 1
    if not is_described(record):
        sys.exit("error: the library has no debug information")
    if _RECORD.exists():
        recorded, *lines = _VERSION.read_text().splitlines()
        part, report = change(lzma.decompress(_RECORD.read_bytes()).decode(), record)
        part = max(part, table_change({line[17:]: line[:16] for line in lines}, digests()))
        announced = is_announced(part, recorded, version)
        print(f"{report}{version} against the recorded {recorded}: the changes ask for {_NAMES[part]};"
              f" {'the version says so' if announced else 'THE VERSION DOES NOT SAY SO'}")
        if not announced:
            return 1
    if verb == "renew":
        _RECORD.write_bytes(lzma.compress(record.encode(), preset=9))
        _VERSION.write_text("\n".join([version, *(f"{digest} {name}" for name, digest in digests().items())]) + "\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
