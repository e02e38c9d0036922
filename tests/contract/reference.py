#!/usr/bin/env python3
"""The exported types and symbols of the library, recorded for a version, and what a change of them asks of the next.

  reference.py check VERSION LIBRARY              compares LIBRARY with what is recorded; fails unless VERSION says enough
  reference.py canaries VERSION LIBRARY WITHOUT   fails unless it is noticed that WITHOUT lacks an export of LIBRARY
  reference.py renew VERSION LIBRARY              records LIBRARY as VERSION, under the same condition as the check

What was removed or changed asks for the next major version, what was added for the next minor one. The library must have
been built with debug information.
"""

import lzma
import pathlib
import subprocess
import sys
import tempfile

_FOLDER = pathlib.Path(__file__).resolve().parent / "reference"
_RECORD = _FOLDER / "DevicesService.abi.xz"
_VERSION = _FOLDER / "version"

_SAME, _MINOR, _MAJOR = "nothing", "a minor version", "a major version"


def numbers(version):
    """A version as a tuple."""
    return tuple(int(number) for number in version.split("."))


def difference(old, new):
    """Which part of the version a change asks for, and abidiff's report."""
    every = _abidiff(old, new)
    if every.returncode == 0:
        return _SAME, ""
    return (_MINOR if _abidiff(old, new, "--no-added-syms").returncode == 0 else _MAJOR), every.stdout


def _abidiff(old, new, *options):
    run = subprocess.run(["abidiff", "--no-show-locs", *options, str(old), str(new)],
                         capture_output=True, text=True, check=False)
    if run.returncode & 3:  # the tool itself failed, or was used wrongly
        sys.exit(f"error: abidiff failed: {run.stderr or run.stdout}")
    return run


def is_announced(part, recorded, version):
    """Whether `version` says as much as a change of this kind asks for."""
    old, new = numbers(recorded), numbers(version)
    return {_SAME: new >= old, _MINOR: new[:2] > old[:2], _MAJOR: new[:1] > old[:1]}[part]


def compare(version, library):
    """Prints how `library` differs from what is recorded; whether `version` says so."""
    recorded = _VERSION.read_text().strip()
    with tempfile.NamedTemporaryFile(suffix=".abi") as record:
        record.write(lzma.decompress(_RECORD.read_bytes()))
        record.flush()
        part, report = difference(record.name, library)
    announced = is_announced(part, recorded, version)
    print(report, end="")
    print(f"{version} against the recorded {recorded}: a change that asks for: {part};"
          f" {'the version says so' if announced else 'THE VERSION DOES NOT SAY SO'}")
    return announced


def check_canaries(version, library, without):
    """Whether a missing export and one too many are noticed, and a version that says so is believed."""
    lost, _ = difference(library, without)
    gained, _ = difference(without, library)
    major, minor, patch = numbers(version)
    verdicts = {
        "an export is missing": lost == _MAJOR and not is_announced(lost, version, f"{major}.{minor + 1}.0"),
        "an export is added": gained == _MINOR and not is_announced(gained, version, f"{major}.{minor}.{patch + 1}"),
        "the next major version may lack one": is_announced(lost, version, f"{major + 1}.0.0"),
        "the next minor version may add one": is_announced(gained, version, f"{major}.{minor + 1}.0"),
    }
    for what, right in verdicts.items():
        print(f"library: {what}: {'noticed' if right else 'NOT NOTICED'}")
    return all(verdicts.values())


def renew(version, library):
    """Records `library`, unless it changes what is recorded and the version does not say so."""
    if _RECORD.exists() and not compare(version, library):
        return False
    text = subprocess.run(
        ["abidw", "--exported-interfaces-only", "--no-comp-dir-path", "--no-corpus-path", "--no-show-locs",
         "--no-parameter-names", "--type-id-style", "hash", library], capture_output=True, check=True).stdout
    _FOLDER.mkdir(exist_ok=True)
    _RECORD.write_bytes(lzma.compress(text, preset=9))
    _VERSION.write_text(version + "\n")
    return True


def main():
    """The exit status."""
    verb, *arguments = sys.argv[1:]
    verbs = {"check": compare, "canaries": check_canaries, "renew": renew}
    return 0 if verbs[verb](*arguments) else 1


if __name__ == "__main__":
    sys.exit(main())
