"""The public headers and the compilers' flags for them."""

import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]

INCLUDE_ROOTS = [ROOT, ROOT / "platform", ROOT / "platform/application"]
_PUBLIC = [
    (ROOT / "platform", "sdk/**/*.h"),
    (ROOT / "platform/application", "**/*.h"),
    (ROOT, "devices/*.h"),
    (ROOT, "service/**/*.h"),
]
# Not installed; and the list of the controls, which each program compiles for itself.
_INTERNAL = re.compile(r"service/support/|service/calibration/(calibrationobserveradapter|readfrequencyplan)\.h"
                       r"|devices/controls\.h")


def public_headers():
    """Their names, as they are included."""
    for root, pattern in _PUBLIC:
        for header in sorted(root.glob(pattern)):
            name = header.relative_to(root).as_posix()
            if not _INTERNAL.match(name):
                yield name


def include_all():
    """Source text that includes them all."""
    return "".join(f'#include "{name}"\n' for name in public_headers())


def source_of(name):
    """The text of a header."""
    for root in INCLUDE_ROOTS:
        if (root / name).is_file():
            return (root / name).read_text()
    raise FileNotFoundError(name)
