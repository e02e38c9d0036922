"""Writes what the public headers say of classes, operations, fields and enumerators as a C++ header, from which the
bindings take names and docstrings: none of it is written down a second time.

  headerfacts.py OUTPUT HEADER...

A public operation, field or enumerator without a comment is an error. What is understood is the house's format.
"""

import dataclasses
import json
import pathlib
import re
import sys

_SCOPE = re.compile(r"(class|struct)\s+(?:\w+_EXPORT\s+)?(\w+)(?:\s+final)?(?:\s*:[^:].*)?")
_FUNCTION = re.compile(r"(?:virtual\s+)?[\w:<>,&* ]+?[\s&*](\w+)\((.*)\)"
                       r"(?: const)?(?: noexcept)?(?: override)?(?: = 0)?;")
_FIELD = re.compile(r"[\w:<>,&* ]+\s(\w+)(?:\s*=\s*[^;]+|\{[^;]*\})?;")
_OVERLOADS = re.compile(r"TOV_OVERLOADS_IN_SLOT_ORDER\((virtual .*\)) = 0,\s*virtual .*;")
_ELSEWHERE = {"TestHooks": "Instrument"}  # what instruments do themselves
_NOT_FOR_SCRIPTS = {"addObserver", "removeObserver", "onControlsAboutToBeReleased", "onControlsAvailable"}
# Sentences that are not true of Python, where errors are raised, nothing is moved and an enumeration has its members
# alone; a space stands for a line's end too.
_SAID_OTHERWISE = [
    (r"Copies reach the same SDK control;[^.]*\.\s*", ""),
    (r"Move them in:[^.]*\.\s*", ""),
    (r"([Ww]hat (?:the SDK|the instrument|it) throws) passes through(?: every operation)?",
     r"\1 is raised as `OperationFailed`"),
    (r"Throws `std::bad_alloc` or `std::length_error`", "Raises `MemoryError` or `OperationFailed`"),
    (r"`Failed`", "`OperationFailed`"),
    (r"`onControlsAvailable\(\)`", "the next offer of the controls"),
    (r"any other(?: number)? counts as ([^.;]*), read and sent", r"any other is read as \1"),
    (r"(any other number reads as `\w+`) and is sent as[^.;]*", r"\1"),
    (r"; any other is sent as `\w+`", ""),
    (r"any other number passes unchanged too", "any other number is read unchanged too"),
]


def snake_case(name):
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name).lower()


def capitalized(name):
    return name[:1].upper() + name[1:]


def names_of(parameters):
    """Of a function's parameters, in Python; one without a name in C++ has it in a comment."""
    each = re.split(r",\s*(?![^<]*>)", parameters.replace("/*", "").replace("*/", "")) if parameters else []
    return [snake_case(re.sub(r"\s*=.*", "", parameter).split()[-1].lstrip("&*")) for parameter in each]


@dataclasses.dataclass
class Member:
    name: str
    doc: list
    parameters: list = dataclasses.field(default_factory=list)
    is_signal: bool = False
    setter: str = ""
    python: str = ""


@dataclasses.dataclass
class Scope:
    kind: str
    path: str  # in C++
    doc: list
    access: str
    members: list = dataclasses.field(default_factory=list)
    fields: list = dataclasses.field(default_factory=list)
    enumerators: list = dataclasses.field(default_factory=list)

    def python_name(self):
        """Below the module, and without what tells interfaces from adapters."""
        classes = [part for part in self.path.split("::") if part[:1].isupper()]
        first = re.sub(r"^(?:Sdk|I)(?=[A-Z])", "", classes[0])
        return ".".join([_ELSEWHERE.get(first, first), *classes[1:]])


class Header:
    """Reads one header, line by line."""

    def __init__(self, path):
        self._path = path
        self._open = []
        self._doc = []
        self._statement = ""
        self._pending = None
        self.scopes = []
        lines = iter(enumerate(path.read_text(encoding="utf-8").splitlines(), 1))
        for self._line, line in lines:
            self._read(line.strip(), lines)

    def _fail(self, what):
        sys.exit(f"{self._path}:{self._line}: {what}")

    def _read(self, line, lines):
        top = self._open[-1] if self._open else None
        if line.startswith("///<"):
            top_list = top.enumerators if top.kind == "enum" else top.fields
            top_list[-1].doc.append(line[4:].strip())
        elif line.startswith("///"):
            self._doc.append(line[3:].strip())
            self._attach_function_doc(top)
        elif match := re.fullmatch(r"(public|protected|private|Q_SIGNALS):", line):
            top.access = match[1]
        elif not line or line.startswith(("#", "//", "Q_", "using ", "friend ")):
            if not self._statement:
                self._doc = []
        elif match := re.fullmatch(r"namespace ([\w:]+) \{", line):
            self._push("namespace", match[1])
        elif line.startswith(("} // namespace", "};")):
            self._open.pop()
        elif match := re.fullmatch(r"enum class (\w+)[^;]*\{", line):
            self._push("enum", match[1])
        elif line == "{" and self._pending:
            self._push(*self._pending)
            self._pending = None
        elif line == "{":
            self._read_statement(top, "{}")
            self._skip_body(lines)
        elif top is not None and top.kind == "enum":
            self._read_enumerator(top, line)
        elif not self._statement and (match := _SCOPE.fullmatch(line)):
            self._pending = match.groups()
        elif self._pending:
            pass  # more of what it derives from
        else:
            self._read_statement(top, line)

    def _push(self, kind, name):
        parent = self._open[-1] if self._open else None
        hidden = parent is not None and parent.access in ("private", "protected", "hidden")
        access = "hidden" if hidden else "private" if kind == "class" else "public"
        scope = Scope(kind, f"{parent.path}::{name}" if parent else name, self._take_doc(), access)
        if kind != "namespace" and not hidden:
            if not scope.doc:
                self._fail(f"{name} has no comment")
            self.scopes.append(scope)
        self._open.append(scope)

    def _take_doc(self):
        doc, self._doc = self._doc, []
        return doc

    def _skip_body(self, lines):
        depth = 1
        for self._line, line in lines:
            depth += line.count("{") - line.count("}")
            if depth == 0:
                return

    def _read_enumerator(self, scope, line):
        match = re.fullmatch(r"(\w+)(?:\s*=[^,/]+(?:\([^/]*\))?)?,?\s*(?:///<\s*(.*))?", line)
        if not match:
            self._fail(f"this enumerator is not understood: {line}")
        scope.enumerators.append(Member(match[1], [match[2]] if match[2] else []))

    def _read_statement(self, scope, line):
        code, _, trailing = line.partition("///<")
        self._statement = f"{self._statement} {code.strip()}".strip()
        self._statement = re.sub(r"\s*(?<![=(] )\{.*\}$", ";", self._statement)  # a body
        if not self._statement.endswith(";"):
            return
        statement, self._statement = self._statement, ""
        doc = self._take_doc()
        if scope is None or scope.kind == "namespace" or scope.access not in ("public", "Q_SIGNALS"):
            return
        statement = _OVERLOADS.sub(r"\1 = 0;", statement)
        owner = scope.path.rsplit("::", 1)[-1]
        if re.search(rf"~?\b{owner}\(|\boperator\b|^template ", statement) or " = default;" in statement:
            return
        if (match := _FUNCTION.fullmatch(statement)) and "(" in statement:
            if match[1] in _NOT_FOR_SCRIPTS and not doc:
                return
            if not doc:
                self._fail(f"{match[1]} has no comment")
            if match[1] not in _NOT_FOR_SCRIPTS:
                scope.members.append(Member(match[1], doc, names_of(match[2]), scope.access == "Q_SIGNALS"))
        elif match := _FIELD.fullmatch(statement):
            if not trailing and not doc:
                self._fail(f"{match[1]} has no comment")
            scope.fields.append(Member(match[1], [trailing.strip()] if trailing else doc))
        elif not re.search(r"\bclass \w+;|\bstruct \w+;", statement):
            self._fail(f"this is not understood: {statement}")

    def _attach_function_doc(self, scope):
        """A comment that names the function which it is about, behind that: it goes on with that function's."""
        if match := re.fullmatch(r"\\fn .*?(\w+)\(.*", self._doc[0]):
            if len(self._doc) == 1:
                next(each for each in scope.members if each.name == match[1]).doc += ["", ""]
            else:
                next(each for each in scope.members if each.name == match[1]).doc[-1] += " " + self._doc.pop()


def pair(scope):
    """Gives operations their names in Python: a getter and its setter are one property."""
    by_name = {member.name: member for member in scope.members}
    for member in scope.members:
        member.python = ("on_" if member.is_signal else "") + snake_case(member.name)
    for member in scope.members:
        base = capitalized(re.sub(r"^is(?=[A-Z])", "", member.name))
        setters = [f"set{base}", f"enable{base.removesuffix('Enabled')}"]
        setter = next((by_name[name] for name in setters if name in by_name), None)
        if setter and setter is not member and not member.parameters and not member.is_signal:
            member.setter = setter.name
            member.python = setter.python = snake_case(base)
            member.doc = [*member.doc, "", *setter.doc]


def spoken(doc, names):
    """A comment as a docstring: in the names that Python has, without what a program in C++ alone can do."""
    paragraphs = re.split(r"\n\s*\n", "\n".join(doc).strip())
    text = "\n\n".join(each.strip() for each in paragraphs if not each.startswith("Thread:"))
    for pattern, said in _SAID_OTHERWISE:
        text = re.sub(pattern.replace(" ", r"\s+"), said, text)
    text = re.sub(r"`([A-Z][a-z]+\d)`", lambda match: f"`{match[1].upper()}`", text.strip())
    return re.sub(r"\b[a-z]+[A-Z]\w*", lambda match: names.get(match[0], match[0]), text)


def cpp(text):
    return json.dumps(text, ensure_ascii=False)


def written(scope, names):
    names = names | {member.name: member.python for member in scope.members}
    lines = ["template <>", f"struct About<{scope.path}>", "{",
             f"    static constexpr char pythonName[] = {cpp(scope.python_name())};",
             f"    static constexpr const char* doc = {cpp(spoken(scope.doc, names))};"]
    if scope.kind == "enum":
        rows = [f"{{{cpp(snake_case(each.name).upper())}, {scope.path}::{each.name}, {cpp(spoken(each.doc, names))}}}"
                for each in scope.enumerators]
        lines.append(f"    static constexpr auto enumerators = std::to_array<Enumerator<{scope.path}>>({{")
        lines += [f"        {row}," for row in rows] + ["    });"]
    if scope.members:
        rows = [", ".join([*map(cpp, (each.name, each.python, spoken(each.doc, names), each.setter)),
                           f"{{{', '.join(map(cpp, each.parameters))}}}"]) for each in scope.members]
        lines.append("    static constexpr auto operations = std::to_array<Operation>({")
        lines += [f"        {{{row}}}," for row in rows] + ["    });"]
    if scope.fields:
        rows = [f"Field{{{cpp(snake_case(each.name))}, &{scope.path}::{each.name}, {cpp(spoken(each.doc, names))}}}"
                for each in scope.fields]
        lines.append("    static constexpr std::tuple fields{")
        lines += [f"        {row}," for row in rows] + ["    };"]
    return "\n".join([*lines, "};", ""])


def main(output, *headers):
    scopes = [scope for header in headers for scope in Header(pathlib.Path(header)).scopes]
    for scope in scopes:
        for each in scope.enumerators:
            if not each.doc:
                sys.exit(f"{scope.path}: {each.name} has no comment")
        pair(scope)
    names = {member.name: member.python for scope in scopes for member in scope.members if not member.parameters}
    with_facts = [scope for scope in scopes
                  if scope.members or scope.fields or scope.enumerators and not scope.path.endswith("::Error")]
    folders = re.compile(r"(?:.*/)?((?:service|provider|host|devices|vna)/.*)")
    includes = sorted({folders.search(header)[1] for header in headers})
    pathlib.Path(output).write_text("\n".join([
        "#pragma once", "", "// Written by python/headerfacts.py.", "", '#include "python/about.h"', "",
        *(f'#include "{include}"' for include in includes), "", "namespace tov::python {", "",
        *(written(scope, names) for scope in with_facts), "} // namespace tov::python", ""]), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
