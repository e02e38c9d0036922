#!/usr/bin/env python3
"""What was recorded for a version, and what a change of it asks of the next: the exported types and symbols of the
library, and the tables.

  reference.py check VERSION LIBRARY              compares both with what is recorded; fails unless VERSION says enough
  reference.py canaries VERSION LIBRARY WITHOUT   fails unless breaches are noticed; WITHOUT lacks an export of LIBRARY
  reference.py renew VERSION LIBRARY              records both for VERSION, under the same condition as the check

What was removed or changed asks for the next major version, what was added for the next minor one. LIBRARY must have
been built with debug information.
"""

import lzma
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import tables

_FOLDER = pathlib.Path(__file__).resolve().parent / "reference"
_RECORD = _FOLDER / "DevicesService.abi.xz"
_VERSION = _FOLDER / "version"

# What a change asks for, in the order of weight.
_NOTHING, _MINOR, _MAJOR = range(3)
_NAMES = ("nothing", "a minor version", "a major version")


def numbers(version):
    """A version as a tuple."""
    return tuple(int(number) for number in version.split("."))


def is_announced(part, recorded, version):
    """Whether `version` says as much as a change of this kind asks for."""
    old, new = numbers(recorded), numbers(version)
    return (new >= old, new[:2] > old[:2], new[:1] > old[:1])[part]


def library_change(old, new):
    """What the change from one library or record to another asks for, and abidiff's report."""
    every = _abidiff(old, new)
    if every.returncode == 0:
        return _NOTHING, ""
    return (_MINOR if _abidiff(old, new, "--no-added-syms").returncode == 0 else _MAJOR), every.stdout


def table_change(old, new):
    """What the change of a table's sections asks for."""
    if old == new:
        return _NOTHING
    return _MINOR if all(new.get(name) == rows for name, rows in old.items()) else _MAJOR


def recorded_tables():
    """Table to sections, as recorded."""
    return {name: tables.read(name, _FOLDER) for name in tables.NAMES}


def require_debug_information(library):
    """Ends with an error for a library of which only the symbols could be compared."""
    if ".debug_info" not in _output_of("readelf", "--section-headers", "--wide", library):
        sys.exit(f"error: {library} has no debug information, so its types cannot be compared")


def record_of(library):
    """The types and symbols of a library as text."""
    return _output_of("abidw", "--exported-interfaces-only", "--no-comp-dir-path", "--no-corpus-path", "--no-show-locs",
                      "--no-parameter-names", "--type-id-style", "hash", library)


def compare(version, library):
    """Prints what differs from what is recorded; whether `version` says so."""
    require_debug_information(library)
    recorded = _VERSION.read_text().strip()
    part, report = _with_file(lzma.decompress(_RECORD.read_bytes()), lambda record: library_change(record, library))
    print(report, end="")
    for name, sections in recorded_tables().items():
        changed = table_change(sections, tables.read(name))
        if changed != _NOTHING:
            print(f"{name}.table is not as it is recorded")
        part = max(part, changed)
    announced = is_announced(part, recorded, version)
    print(f"{version} against the recorded {recorded}: the changes ask for {_NAMES[part]};"
          f" {'the version says so' if announced else 'THE VERSION DOES NOT SAY SO'}")
    return announced


def check_canaries(version, library, without):
    """Whether breaches are noticed, and a version that says so is believed."""
    lost, _ = library_change(library, without)
    gained, _ = library_change(without, library)
    text = record_of(library)
    moved = re.sub(r"layout-offset-in-bits='(\d+)'(?=[^>]*>\s*<var-decl name='m_temperature')", "layout-offset-in-bits='0'",
                   text, count=1)
    shifted, _ = _with_file(moved.encode(), lambda record: library_change(record, library))
    with tempfile.TemporaryDirectory() as folder:
        stripped = shutil.copy(library, folder)
        subprocess.run(["strip", "--strip-debug", stripped], check=True)
        refused = subprocess.run([sys.executable, "-B", __file__, "check", version, stripped],
                                 capture_output=True, check=False).returncode != 0
    table = tables.read("interfaces")
    name, rows = next(iter(table.items()))
    major, minor, patch = numbers(version)
    verdicts = {
        "an export is missing": lost == _MAJOR and not is_announced(lost, version, f"{major}.{minor + 1}.0"),
        "an export is added": gained == _MINOR and not is_announced(gained, version, f"{major}.{minor}.{patch + 1}"),
        "a member has moved": moved != text and shifted == _MAJOR,
        "the library has no debug information": refused,
        "slots of a table are swapped": table_change(table, table | {name: rows[:1] + rows[:0:-1]}) == _MAJOR,
        "an interface is added to a table": table_change({of: table[of] for of in table if of != name}, table) == _MINOR,
        "the next major version may lack an export": is_announced(lost, version, f"{major + 1}.0.0"),
        "the next minor version may add one": is_announced(gained, version, f"{major}.{minor + 1}.0"),
    }
    for what, right in verdicts.items():
        print(f"record: {what}: {'noticed' if right else 'NOT NOTICED'}")
    return all(verdicts.values())


def renew(version, library):
    """Records library and tables, unless what they change is more than the version says."""
    if _RECORD.exists() and not compare(version, library):
        return False
    require_debug_information(library)
    _FOLDER.mkdir(exist_ok=True)
    _RECORD.write_bytes(lzma.compress(record_of(library).encode(), preset=9))
    for name in tables.NAMES:
        shutil.copy(tables.file_of(name), _FOLDER)
    _VERSION.write_text(version + "\n")
    return True


def _output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def _abidiff(old, new, *options):
    run = subprocess.run(["abidiff", "--no-show-locs", *options, str(old), str(new)],
                         capture_output=True, text=True, check=False)
    if run.returncode & 3:  # the tool itself failed, or was used wrongly
        sys.exit(f"error: abidiff failed: {run.stderr or run.stdout}")
    return run


def _with_file(contents, use):
    with tempfile.NamedTemporaryFile(suffix=".abi") as file:
        file.write(contents)
        file.flush()
        return use(file.name)


def main():
    """The exit status."""
    verb, *arguments = sys.argv[1:]
    verbs = {"check": compare, "canaries": check_canaries, "renew": renew}
    return 0 if verbs[verb](*arguments) else 1


if __name__ == "__main__":
    sys.exit(main())
