"""Writes a test that compares the tables with the layout of the compiler that compiles it."""

import re

import headers
import tables

_START = """\
// Written by tests/contract/contract.py from the tables beside it.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <type_traits>

"""

_SLOT = """
namespace {

// Reads the slot out of a member pointer, as the Itanium layout has it on x86-64: the first word holds the byte offset
// into the table of virtual functions plus one, and the destructor has two entries.
template <typename Method>
std::size_t slot(Method method)
{
    std::size_t firstWord = 0;
    std::memcpy(&firstWord, &method, sizeof firstWord);
    return (firstWord - 1) / sizeof(void*) - 1;
}

} // namespace
"""


def text():
    """The test's source."""
    interfaces = tables.read("interfaces")
    classes = {*interfaces, *tables.read("records"), *tables.read("classes")}
    parts = [_START, headers.include_all(), _SLOT]
    parts += [_slots(i, name, rows, classes) for i, (name, rows) in enumerate(interfaces.items())]
    parts += [_record(name, rows) for name, rows in tables.read("records").items()]
    parts += [_class(name, rows[0]) for name, rows in tables.read("classes").items()]
    return "\n".join(parts)


def _slots(number, name, rows, classes):
    """Looks types up where the interface does: in its own scope, in the class around it and in their namespace."""
    around, own = name.rsplit("::", 1)
    outer = f" : {around}" if around in classes else ""
    namespace = around.rsplit("::", 1)[0] if outer else around
    expectations = "".join(f"            EXPECT_EQ(slot({_pointer(signature, name)}), {index}U);\n"
                           for index, signature in (row.split(maxsplit=1) for row in rows) if "~" not in signature)
    return f"""
namespace {namespace} {{
struct Scope{number}{outer}
{{
    struct Slots : {name}
    {{
        static void expect()
        {{
{expectations}        }}
    }};
}};
}} // namespace {namespace}

TEST(Layout, HasTheSlotsOf_{re.sub(r"::", "_", name)})
{{
    {namespace}::Scope{number}::Slots::expect();
}}
"""


def _pointer(signature, name):
    """The operation's member pointer, told from its overloads."""
    depth = 0
    for position, character in enumerate(signature):
        depth += (character == "<") - (character == ">")
        if character == "(" and depth == 0:
            break
    returned, operation = re.fullmatch(r"(.*[ &*])(\w+)", signature[:position]).groups()
    return f"static_cast<{returned}({name}::*){signature[position:]}>(&{name}::{operation})"


def _record(name, rows):
    size, alignment = re.findall(r"\d+", rows[0])
    lines = [f"static_assert(sizeof({name}) == {size} && alignof({name}) == {alignment});"]
    for row in rows[1:]:
        offset, width, declaration = row.split(maxsplit=2)
        field = declaration.rsplit(" ", 1)[-1]
        lines.append(f"static_assert(offsetof({name}, {field}) == {offset} && sizeof({name}::{field}) == {width});")
    return "\n".join([*lines, ""])


def _class(name, traits):
    if "ObserverTable<" in name:  # is named with a private class
        return ""
    held = traits.strip().split(", ")
    return "".join(f"static_assert({'' if trait in held else '!'}{tables.trait(trait, name)});\n"
                   for trait in tables.TRAITS)
