"""Finds public enumerators, classes and namespaces without a description, as far as Doxygen does not report them.

Usage: undescribed.py XML-FOLDER
"""

import pathlib
import sys
import xml.etree.ElementTree as ElementTree

_COMPOUNDS = ("class", "struct", "namespace")


def _is_described(element):
    return any("".join(element.find(part).itertext()).strip() for part in ("briefdescription", "detaileddescription"))


def _error(place, what):
    return f"{place.get('file')}:{place.get('line')}: error: {what} is not documented"


def _undescribed(folder):
    files = sorted(pathlib.Path(folder).glob("*.xml"))
    if not files:
        sys.exit(f"error: no descriptions in {folder}")
    for file in files:
        root = ElementTree.parse(file).getroot()
        for compound in root.iterfind("compounddef"):
            if compound.get("kind") in _COMPOUNDS and compound.get("prot", "public") == "public":
                if not _is_described(compound):
                    yield _error(compound.find("location"), f"{compound.get('kind')} {compound.findtext('compoundname')}")
        for enumeration in root.iterfind(".//memberdef[@kind='enum'][@prot='public']"):
            for value in enumeration.iterfind("enumvalue"):
                if not _is_described(value):
                    yield _error(enumeration.find("location"),
                                 f"enumerator {value.findtext('name')} of {enumeration.findtext('name')}")


found = sorted(set(_undescribed(sys.argv[1])))
print("\n".join(found), end="\n" if found else "")
sys.exit(1 if found else 0)
