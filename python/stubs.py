"""Writes the type stubs of the extension module, from the signatures and docstrings that it has.

  stubs.py OUTPUT
"""

import enum
import inspect
import pathlib
import re
import sys

import devicesservice._devicesservice as module

_HEADER = '''"""Written by python/stubs.py."""

import datetime
import enum
from typing import Callable, ClassVar, List, Optional, Sequence, Tuple, Union

import numpy as np
import numpy.typing as npt

_Bytes = Union[bytes, bytearray, memoryview, npt.NDArray[np.uint8]]
'''
_SIGNATURE = re.compile(r"\w*\((.*)\) -> (.+)")


def split(parameters):
    """At the commas outside of brackets."""
    parts, depth = [""], 0
    for letter in parameters:
        depth += (letter in "[({") - (letter in "])}")
        if letter == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += letter
    return [part.strip() for part in parts if part.strip()]


def typed(text, is_parameter):
    """A type as pybind11 names it, for a checker."""
    text = re.sub(r"\[\d+\]", "", text.replace("devicesservice.", ""))
    if is_parameter:
        text = text.replace("List[", "Sequence[")
        text = re.sub(r"numpy\.ndarray\[[\w.]+\]", "npt.ArrayLike", text)
        text = re.sub(r"\bbytes\b", "_Bytes", text)
    if "::" in text:
        sys.exit(f"error: this has no name in Python: {text}")
    return re.sub(r"numpy\.ndarray\[numpy\.(\w+)\]", r"npt.NDArray[np.\1]", text)


def signature_of(function):
    """Parameters, each as a text, and the result."""
    match = _SIGNATURE.fullmatch(function.__doc__.splitlines()[0])
    parameters = []
    for part in split(match[1]):
        name, _, rest = part.partition(": ")
        kind, has_default, _ = rest.partition(" = ")
        parameters.append((name, typed(kind, True), bool(has_default)))
    return parameters, typed(match[2], False)


def documented(doc, indent):
    body = doc.strip().replace("\\", "\\\\").replace("\n", "\n" + indent).replace("\n" + indent + "\n", "\n\n")
    return f'{indent}"""{body}"""'


def function_stub(name, function, indent, owner=None):
    if name == "__enter__":
        return [f"{indent}def __enter__(self) -> {owner}: ..."]
    if name == "__exit__":
        return [f"{indent}def __exit__(self, *args: object) -> None: ..."]
    if name == "__eq__":
        return [f"{indent}def __eq__(self, other: object) -> bool: ..."]
    parameters, result = signature_of(function)
    texts = ["self" if owner and index == 0 else f"{each}: {kind}{' = ...' if has_default else ''}"
             for index, (each, kind, has_default) in enumerate(parameters)]
    head = f"{indent}def {name}({', '.join(texts)}) -> {result}:"
    doc = function.__doc__.partition("\n")[2]
    return [head, documented(doc, indent + "    ")] if doc.strip() and name != "__init__" else [head + " ..."]


def property_stub(name, member, indent):
    result = signature_of(member.fget)[1]
    lines = [f"{indent}@property", f"{indent}def {name}(self) -> {result}:",
             documented(member.__doc__, indent + "    ")]
    if member.fset:
        value = signature_of(member.fset)[0][1][1]
        lines += [f"{indent}@{name}.setter", f"{indent}def {name}(self, value: {value}) -> None: ..."]
    return lines


def class_stub(cls, indent=""):
    inner = indent + "    "
    if issubclass(cls, enum.Enum):
        return [f"{indent}class {cls.__name__}(enum.IntEnum):", documented(cls.__doc__, inner),
                *(f"{inner}{member.name} = {member.value}" for member in cls)]
    base = "" if cls.__base__.__name__ == "pybind11_object" else f"({cls.__base__.__name__})"
    lines = [f"{indent}class {cls.__name__}{base}:", documented(cls.__doc__, inner)]
    for name, member in vars(cls).items():
        if inspect.isclass(member):
            lines += class_stub(member, inner)
    for name, member in vars(cls).items():
        if isinstance(member, property):
            lines += property_stub(name, member, inner)
        elif name == "__hash__":
            lines.append(f"{inner}__hash__: ClassVar[None]  # type: ignore[assignment]")
        elif name == "__init__" and "(" not in member.__doc__.partition(" ")[0]:
            pass  # scripts do not make one
        elif inspect.isroutine(member) and name not in ("__repr__", "__init_subclass__", "__new__"):
            lines += function_stub(name, member, inner, cls.__qualname__)
    return lines


def main(output):
    lines = [_HEADER]
    members = [(name, member) for name, member in vars(module).items() if not name.startswith("_")]
    members.sort(key=lambda each: not (inspect.isclass(each[1]) and issubclass(each[1], Exception)))
    for name, member in members:
        lines += class_stub(member) if inspect.isclass(member) else function_stub(name, member, "")
        lines.append("")
    pathlib.Path(output).write_text("\n".join(lines), encoding="utf-8")


main(sys.argv[1])
