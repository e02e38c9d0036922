"""The tables: how they are written, and what they would say of the headers as they are."""

import difflib
import pathlib
import re

import headers
from compiler import Failure

NAMES = ("interfaces", "records", "classes")
_FOLDER = pathlib.Path(__file__).resolve().parent

# What is more than an interface or a record. A template is pinned by one instance.
_CLASS = re.compile(
    r"tov::devices::service::Sdk\w+"
    r"|tov::devices::ControlRegistry(::ControlEntry(Base|<sdk::IVna>))?"
    r"|tov::devices::ReacquiringControl<sdk::service::ILoLeakageControl>"
    r"|tov::devices::service::ObserverTable<sdk::service::IYqIfswCalibrationControl, .*>"
    r"|sdk::ControlHandle<sdk::service::ILoLeakageControl>(::Locked)?")
_RECORD_INSTANCE = "tov::utils::Range<double>"
_INSTANCES = f"""
constexpr auto instances = sizeof({_RECORD_INSTANCE})
    + sizeof(tov::devices::ControlRegistry::ControlEntry<sdk::IVna>)
    + sizeof(sdk::ControlHandle<sdk::service::ILoLeakageControl>::Locked);
"""
TRAITS = ("polymorphic", "copy-constructible", "copy-assignable", "move-constructible", "move-assignable")


def trait(name, class_name):
    """The expression that tells whether a class has a trait."""
    return f"std::is_{name.replace('-', '_')}_v<{class_name}>"


def file_of(table):
    """Where a table is written."""
    return _FOLDER / f"{table}.table"


def read(table):
    """The sections of a table: class to rows."""
    sections = {}
    for line in file_of(table).read_text().splitlines():
        if line.startswith("["):
            rows = sections.setdefault(line[1:-1], [])
        elif line and not line.startswith("#"):
            rows.append(line)
    return sections


def write(table, sections):
    """Replaces the sections of a table and keeps its introduction."""
    introduction = [line for line in file_of(table).read_text().splitlines() if line.startswith("#")]
    file_of(table).write_text("\n".join([*introduction, "", _shown(sections)]))


def differences(laid_out):
    """What `laid_out` says differently from the tables, as lines of a diff."""
    lines = []
    for name in NAMES:
        lines += difflib.unified_diff(_shown(read(name)).splitlines(), _shown(laid_out[name]).splitlines(),
                                      f"{name}.table", "the headers", n=2, lineterm="")
    return lines


def changed_classes(laid_out):
    """Which classes `laid_out` says something else of than the tables."""
    changed = set()
    for name in NAMES:
        table = read(name)
        changed |= {of for of in {*table, *laid_out[name]} if table.get(of) != laid_out[name].get(of)}
    return changed


def lay_out(compiler):
    """The tables as they would be for `compiler`: table to class to rows."""
    layouts = {name: layout for name, layout in compiler.records(headers.include_all() + _INSTANCES).items()
               if _is_ours(name)}
    classes = {name: layout for name, layout in layouts.items() if _CLASS.fullmatch(name)}
    others = {name: layout for name, layout in layouts.items() if name not in classes}
    interfaces = {name: layout for name, layout in others.items() if layout.polymorphic}
    records = {name: layout for name, layout in others.items() if not layout.polymorphic}
    for name, layout in interfaces.items():
        if layout.fields or layout.bases:
            raise Failure(f"{name} is polymorphic, but more than an interface")

    # A table of virtual functions is made where a constructor needs it; constant expressions show as sizes of arrays.
    expressions = [f"sizeof({name}::{field})" for name, layout in records.items() for _, _, field in layout.fields]
    expressions += [trait(name, of) for of in classes for name in TRAITS]
    source = "".join([headers.include_all(), "#include <type_traits>\n"]
                     + [f"struct User{i} : {name} {{ User{i}(); }};\nUser{i}::User{i}() {{}}\n"
                        for i, name in enumerate(interfaces)]
                     + [f"struct Measured{i} {{ char bytes[1 + ({expression})]; }};\n"
                        for i, expression in enumerate(expressions)])
    shown, virtual_tables = compiler.records_and_tables(source)
    values = {expression: shown[f"Measured{i}"].size - 1 for i, expression in enumerate(expressions)}
    return {
        "interfaces": {name: _slots(virtual_tables[f"User{i}"], name) for i, name in enumerate(interfaces)},
        "records": {name: _record(name, layout, values) for name, layout in records.items()},
        "classes": {name: _class(name, layout, values) for name, layout in classes.items()},
    }


def _shown(sections):
    return "\n".join("\n".join([f"[{name}]", *rows, ""]) for name, rows in sorted(sections.items()))


def _is_ours(name):
    if not name.startswith(("sdk::", "tov::")) or name.endswith("::QPrivateSignal"):
        return False
    return "<" not in name or name == _RECORD_INSTANCE or bool(_CLASS.fullmatch(name))


def _slots(operations, name):
    rows = []
    for operation in operations:
        if operation.endswith("[deleting]"):  # the second of two destructors in the Itanium layout
            continue
        signature = re.sub(r" \[.*\]$", "", operation).replace(f"{name}::", "", 1)
        if "~" in signature:
            signature = f"~{name.rsplit('::', 1)[-1]}()"
        rows.append(f"  {len(rows):>3}  {signature}")
    return rows


def _record(name, layout, values):
    return [f"  size {layout.size}, alignment {layout.alignment}"] + [
        f"  {offset:>3}  {values[f'sizeof({name}::{field})']:>3}  {kind} {field}"
        for offset, kind, field in layout.fields]


def _class(name, layout, values):
    held = [a_trait for a_trait in TRAITS if values[trait(a_trait, name)]]
    return ([f"  {', '.join(held) or 'none'}"]
            + [f"  base    {base}" for base in layout.bases]
            + [f"  member  {kind} {field}" for _, kind, field in layout.fields])
