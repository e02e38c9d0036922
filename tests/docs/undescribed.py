"""Finds what Doxygen does not report: visible symbols of some kinds without a description, and names in descriptions
that nothing has. Usage: undescribed.py XML-FOLDER
"""

import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree

_COMPOUNDS = ("class", "struct", "union", "concept", "namespace")
_VISIBLE = ("public", "protected")
_NAMING = ("name", "compoundname", "declname", "defname", "type", "definition", "argsstring", "initializer")
_WORD = re.compile(r"[A-Za-z_]\w*")
# Names in descriptions that are others' to have.
_OTHERS = re.compile(r"std::\w+(::\w+)*|\bQ[A-Z]\w+(::\w+)*|"
                     r"\b(true|false|null|nullptr|const|void|sdk_zvl_devices|Devices|DevicesService)\b")


def _roots(folder):
    files = [file for file in sorted(pathlib.Path(folder).glob("*.xml")) if file.name != "index.xml"]
    if not files:
        sys.exit(f"error: no descriptions in {folder}")
    return [ElementTree.parse(file).getroot() for file in files]


def _compounds(roots):
    """Those of the headers that a user may reach, with their full names."""
    all_of_them = [compound for root in roots for compound in root.iterfind("compounddef")
                   if compound.get("kind") in (*_COMPOUNDS, "file")]
    private = {compound.findtext("compoundname") + "::" for compound in all_of_them
               if compound.get("prot") == "private"}
    for compound in all_of_them:
        name = compound.findtext("compoundname")
        if compound.get("prot", "public") in _VISIBLE and not any(name.startswith(outer) for outer in private):
            yield name, compound


def _is_described(element):
    return any("".join(element.find(part).itertext()).strip() for part in ("briefdescription", "detaileddescription"))


def _error(element, text):
    place = element.find("location")
    return f"{place.get('file')}:{place.get('line')}: error: {text}"


def _undescribed(name, compound):
    kind = compound.get("kind")
    if kind != "file" and not _is_described(compound):
        yield _error(compound, f"{kind} {name} is not documented")
    for member in compound.iterfind("sectiondef/memberdef"):
        if kind == "file" and not _is_described(member):
            yield _error(member, f"{member.get('kind')} {member.findtext('name')} is not documented")
        if member.get("kind") == "enum" and member.get("prot") in _VISIBLE:
            for value in member.iterfind("enumvalue"):
                if not _is_described(value):
                    yield _error(member, f"enumerator {value.findtext('name')} of {member.findtext('name')} "
                                         "is not documented")


def _names(roots):
    return {word for root in roots for tag in _NAMING for element in root.iter(tag)
            for word in _WORD.findall("".join(element.itertext()))}


def _unknown(compound, names):
    """Names that a description quotes and that stand nowhere in the headers."""
    for located in (compound, *compound.iterfind("sectiondef/memberdef")):
        for described in (located, *located.iterfind("enumvalue")):
            for part in ("briefdescription", "detaileddescription"):
                for quoted in described.find(part).iter("computeroutput"):
                    text = "".join(quoted.itertext())
                    for word in _WORD.findall(_OTHERS.sub(" ", text)):
                        if word not in names:
                            yield _error(located, f"`{text}` names {word}, which there is not")


def main(folder):
    roots = _roots(folder)
    names = _names(roots)
    found = {error for name, compound in _compounds(roots)
             for error in (*_undescribed(name, compound), *_unknown(compound, names))}
    for error in sorted(found):
        print(error)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
