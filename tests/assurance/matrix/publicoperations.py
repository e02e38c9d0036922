"""Writes the public operations of the adapters, as they are recorded for the binary contract: a line for each with the
adapter's name and the operation's, those of Qt's meta-objects too.

  publicoperations.py RECORD OUTPUT
"""

import lzma
import pathlib
import sys
from xml.etree import ElementTree


def operations(record):
    """Adapter and operation, once for each overload."""
    found = set()
    for scope in record.iter("namespace-decl"):
        if scope.get("name") == "service":
            for adapter in scope.findall("class-decl"):
                for member in adapter.findall("member-function"):
                    function = member.find("function-decl")
                    if (adapter.get("name").startswith("Sdk") and member.get("access") == "public"
                            and not member.get("constructor") and not member.get("destructor")):
                        found.add((adapter.get("name"), function.get("name"), function.get("mangled-name")))
    return sorted(found)


with lzma.open(sys.argv[1]) as file:
    LINES = [f"{adapter} {name}\n" for adapter, name, _ in operations(ElementTree.parse(file).getroot())]
pathlib.Path(sys.argv[2]).write_text("".join(LINES), encoding="utf-8")
