"""Writes a copy of the library's sources in which every mutant is there and is switched on by its number.

An expression becomes `mutant::is(17) ? what the mutant has : what stands there`, a statement that a mutant lacks
`if (mutant::none(17)) statement;`. So everything is compiled once.

What is not switched: types, template arguments and what else the compiler must know, `if constexpr`, what a macro
expands to, and std::move and std::forward, without which a program only gets slower.
"""

import bisect
import dataclasses
import pathlib
import re

from clang import cindex
from clang.cindex import CursorKind as Kind

OPPOSITE = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "+": "-", "-": "+", "*": "/", "/": "*",
            "&": "|", "|": "&", "+=": "-=", "-=": "+=", "<<=": ">>=", "++": "--", "--": "++"}
COMPILE_TIME = {Kind.STATIC_ASSERT, Kind.TYPE_ALIAS_DECL, Kind.TYPE_ALIAS_TEMPLATE_DECL, Kind.TYPEDEF_DECL,
                Kind.ENUM_DECL, Kind.PARM_DECL, Kind.TEMPLATE_TYPE_PARAMETER, Kind.TEMPLATE_NON_TYPE_PARAMETER,
                Kind.TEMPLATE_TEMPLATE_PARAMETER, Kind.TYPE_REF, Kind.TEMPLATE_REF, Kind.NAMESPACE_REF,
                Kind.CXX_UNARY_EXPR, Kind.FRIEND_DECL, Kind.ALIGNED_ATTR, Kind.CONCEPT_DECL}
FUNCTIONS = {Kind.CXX_METHOD, Kind.FUNCTION_DECL, Kind.FUNCTION_TEMPLATE, Kind.CONVERSION_FUNCTION, Kind.CONSTRUCTOR,
             Kind.DESTRUCTOR}
LOOPS = {Kind.FOR_STMT, Kind.WHILE_STMT, Kind.DO_STMT}


@dataclasses.dataclass(frozen=True)
class Mutant:
    number: int
    file: str
    line: int
    operator: str
    text: str  # what stands there
    change: str


@dataclasses.dataclass
class Switch:
    """The places from `begin` to `end` of a file, and how the copy spells them. In `before`, `after` and the
    alternatives stands what was there, in `middle` what becomes of that by the switches within."""

    begin: int
    end: int
    before: str = ""
    after: str = ""


class Source:
    """One file of the library with the switches in it."""

    def __init__(self, root, path, number):
        self.path = path
        self.name = str(path.relative_to(root))
        self.data = path.read_bytes()
        self.number = number  # gives the next number of a mutant
        self.switches = []
        self.mutants = []
        self.macros = []  # begin and end of what macros expand to, in order

    def text(self, begin, end):
        return self.data[begin:end].decode()

    def is_expanded(self, begin, end):
        """Whether an end of this is inside of what a macro expands to."""
        at = bisect.bisect_right(self.macros, (begin, len(self.data))) - 1
        return any(first <= begin < last or first < end <= last for first, last in self.macros[max(at, 0):at + 8])

    def mutant(self, operator, begin, end, change):
        line = self.data.count(b"\n", 0, begin) + 1
        text = " ".join(self.text(begin, end).split())
        self.mutants.append(Mutant(next(self.number), self.name, line, operator, text, " ".join(change.split())))
        return self.mutants[-1].number

    def replace(self, begin, end, operator, *alternatives):
        """Makes the expression one that a mutant has another for."""
        if not self.is_expanded(begin, end):
            choices = "".join(f"mutant::is({self.mutant(operator, begin, end, each)}) ? {each} : "
                              for each in alternatives)
            self.switches.append(Switch(begin, end, f"({choices}(", "))"))

    def surround(self, begin, end, before, after):
        self.switches.append(Switch(begin, end, before, after))

    def rendered(self):
        ordered = sorted(self.switches, key=lambda each: (each.begin, -each.end))  # outer ones first, stably
        position = 0

        def render(begin, end):
            nonlocal position
            pieces, at = [], begin
            while position < len(ordered) and ordered[position].begin < end:
                switch = ordered[position]
                assert switch.end <= end, (self.name, self.text(switch.begin, switch.end))
                position += 1
                pieces += [self.text(at, switch.begin), switch.before, render(switch.begin, switch.end), switch.after]
                at = switch.end
            return "".join([*pieces, self.text(at, end)])

        return render(0, len(self.data))


class Reader:
    """Goes through the syntax of one file and switches what can be."""

    def __init__(self, source, tokens):
        self.source = source
        self.tokens = tokens  # begin, end and spelling of each, in order
        self.begins = [begin for begin, _, _ in tokens]
        self.function = None  # that is being read, unless it is a lambda expression

    # Places.

    def extent(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def text(self, cursor):
        return self.source.text(*self.extent(cursor))

    def tokens_from(self, offset):
        return self.tokens[bisect.bisect_left(self.begins, offset):]

    def token_between(self, first, second):
        """The operator between two operands."""
        end, begin = first.extent.end.offset, second.extent.start.offset
        return next((token for token in self.tokens_from(end) if token[0] < begin and token[2] in OPPOSITE), None)

    def behind_semicolon(self, offset):
        token = self.tokens_from(offset)[0]
        return token[1] if token[2] == ";" else None

    def parenthesized(self, offset):
        """What stands in the next parentheses, without them, and the semicolons directly in it."""
        depth, begin, semicolons = 0, None, []
        for first, last, spelling in self.tokens_from(offset):
            if spelling in "([{":
                depth += 1
                begin = last if begin is None else begin
            elif spelling in ")]}":
                depth -= 1
                if depth == 0:
                    return begin, first, semicolons
            elif spelling == ";" and depth == 1:
                semicolons.append(first)
        raise ValueError("no parenthesis closes")

    # Statements.

    def statement(self, cursor):
        """The extent of an expression that is a statement, with its semicolon."""
        if not cursor.kind.is_expression():
            return None
        begin, end = self.extent(cursor)
        end = self.behind_semicolon(end)
        return None if end is None or self.source.is_expanded(begin, end) else (begin, end)

    def block(self, cursor):
        previous = None
        for child in cursor.get_children():
            place = self.statement(child)
            if place:
                self.sequence(place, previous)
            previous = place
            self.visit(child)

    def sequence(self, place, previous):
        """A mutant lacks this statement; another has it before the previous one."""
        begin, end = place
        without = [self.source.mutant("delete statement", begin, end, "")]
        after = ""
        if previous:
            former = self.source.text(*previous)
            change = f"{self.source.text(begin, end)} {former}"
            swapped = self.source.mutant("swap statements", previous[0], end, change)
            for switch in self.source.switches:
                if (switch.begin, switch.end) == previous and switch.before.startswith(" if (mutant::none("):
                    switch.before = switch.before.replace("none(", f"none({swapped}, ", 1)
            after = f" if (mutant::is({swapped})) {{ {former} }}"
        self.source.surround(begin, end, f" if (mutant::none({', '.join(map(str, without))})) {{ ", f" }}{after}")

    def body(self, cursor):
        """What an if or a loop does, which need not be a block."""
        place = self.statement(cursor)
        if place:
            number = self.source.mutant("delete statement", *place, "")
            self.source.surround(*place, f"{{ if (mutant::none({number})) {{ ", " } }")
        self.visit(cursor)

    def answer(self, cursor):
        begin, end = self.extent(cursor)
        end = self.behind_semicolon(end)
        value = next(cursor.get_children(), None)
        if not value or not end or not self.function:
            return
        declared = self.source.text(self.function.extent.start.offset, self.function.location.offset)
        if re.search(r"\bauto\b|&\s*$|std::unexpected<", declared):  # which have no default
            return
        if re.fullmatch(r"\w*\{\}|nullptr|false|", self.text(value)) or self.source.is_expanded(begin, end):
            return
        number = self.source.mutant("answer the default", begin, end, "return {};")
        self.source.surround(begin, end, f"{{ if (mutant::is({number})) return {{}}; ", " }")

    # Conditions.

    def condition(self, begin, end):
        text = self.source.text(begin, end)
        declared = re.match(r"\s*[\w:<>]+[^=!<>()]*[\s*&](\w+)\s*=[^=]", text)
        value = declared[1] if declared else f"({text})"
        if self.source.is_expanded(begin, end):
            return
        numbers = [self.source.mutant("condition", begin, end, change) for change in ("true", "false", f"!({text})")]
        choice = "(mutant::is({}) ? true : mutant::is({}) ? false : mutant::is({}) ? !{} : static_cast<bool>(".format(
            *numbers, value)
        if declared:
            self.source.surround(begin, end, "", f"; {choice}{value}))")
        else:
            self.source.surround(begin, end, choice, "))")

    def operand(self, cursor):
        begin, end = self.extent(cursor)
        if not self.source.is_expanded(begin, end):
            numbers = [self.source.mutant("condition", begin, end, change) for change in ("true", "false")]
            self.source.surround(begin, end, "(mutant::is({}) ? true : mutant::is({}) ? false : static_cast<bool>("
                                 .format(*numbers), "))")

    # Expressions.

    def binary(self, cursor, first, second):
        token = self.token_between(first, second)
        if token:
            begin, end = self.extent(cursor)
            change = f"({self.source.text(begin, token[0])}{OPPOSITE[token[2]]}{self.source.text(token[1], end)})"
            self.source.replace(begin, end, "operator", change)

    def unary(self, cursor):
        begin, end = self.extent(cursor)
        for first, last, spelling in self.tokens_from(begin):
            if first >= end:
                break
            if spelling in ("++", "--"):
                self.source.replace(begin, end, "operator",
                                    self.source.text(begin, first) + OPPOSITE[spelling] + self.source.text(last, end))
                break

    def literal(self, cursor):
        begin, end = self.extent(cursor)
        text = self.source.text(begin, end)
        if self.source.data[begin - 1:begin] == b"<" or self.source.data[end:end + 1] == b">" or not text:
            return  # of a template
        if cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR:
            changes = ["false" if text == "true" else "true"]
        elif cursor.kind == Kind.STRING_LITERAL:
            changes = [f'{text[:-1]}!"'] if text.startswith('"') else []
        elif cursor.kind == Kind.INTEGER_LITERAL and text != "0":
            changes = [f"({text} + 1)", f"({text} - 1)"]
        else:
            changes = [f"({text} + 1)"]
        if changes:
            self.source.replace(begin, end, "constant", *changes)

    def enumerator(self, cursor, constant):
        names = [each.spelling for each in constant.semantic_parent.get_children()
                 if each.kind == Kind.ENUM_CONSTANT_DECL]
        if len(names) > 1:
            other = names[(names.index(constant.spelling) + 1) % len(names)]
            change = re.sub(rf"{constant.spelling}$", other, self.text(cursor))
            self.source.replace(*self.extent(cursor), "constant", change)

    def sibling(self, method, accessible):
        """Another operation of the same class that takes and gives the same."""
        methods = [each for each in method.semantic_parent.get_children() if each.kind == Kind.CXX_METHOD]
        names = [each.spelling for each in methods]
        alike = [each.spelling for each in methods
                 if each.type == method.type and names.count(each.spelling) == 1
                 and not each.spelling.startswith("operator")
                 and (each.access_specifier.name == "PUBLIC" or accessible)
                 and each.is_static_method() == method.is_static_method()]
        if method.spelling not in alike or len(alike) < 2:
            return None
        return alike[(alike.index(method.spelling) + 1) % len(alike)]

    def reference(self, cursor, method):
        """The address of an operation."""
        other = self.sibling(method, accessible=False)
        if other:
            change = re.sub(rf"{method.spelling}$", other, self.text(cursor))
            self.source.replace(*self.extent(cursor), "sibling", change)

    def call(self, cursor):
        method = cursor.referenced
        children = list(cursor.get_children())
        if cursor.spelling == "exchange":
            begin, end = self.extent(cursor)
            first = self.text(list(cursor.get_arguments())[0])
            self.source.replace(begin, end, "exchange", f"std::decay_t<decltype({first})>({first})")
        elif cursor.spelling.startswith("operator") and len(children) == 3:
            self.binary(cursor, children[0], children[2])
        elif method and method.kind == Kind.CXX_METHOD and children:
            callee = children[0]
            other = self.sibling(method, accessible=not any(True for _ in callee.get_children()))
            if not other or callee.kind != Kind.MEMBER_REF_EXPR:
                return
            begin, end = self.extent(cursor)
            name = callee.location.offset
            change = self.source.text(begin, name) + other + self.source.text(name + len(method.spelling), end)
            self.source.replace(begin, end, "sibling", change)

    # Declarations.

    def variable(self, cursor):
        begin, end = self.extent(cursor)
        if re.search(r"lock_guard|unique_lock", self.source.text(begin, end)):
            first, last, _ = self.parenthesized(begin)
            number = self.source.mutant("no lock", begin, end, "")
            self.source.surround(first, last, f"mutant::is({number}) ? mutant::nobodys : ", "")
            return
        if cursor.semantic_parent.kind not in FUNCTIONS:
            isMember = cursor.semantic_parent.kind in (Kind.CLASS_DECL, Kind.CLASS_TEMPLATE, Kind.STRUCT_DECL)
            for first, last, spelling in self.tokens_from(begin):
                if first >= cursor.location.offset:
                    break
                if spelling == "constexpr":  # the compiler cannot know what holds mutants
                    self.source.surround(first, last, "inline const /* " if isMember else "const /* ", " */")
        self.visit_children(cursor)

    # All of it.

    def visit_children(self, cursor):
        for child in cursor.get_children():
            self.visit(child)

    def visit(self, cursor):
        kind = cursor.kind
        if kind in COMPILE_TIME:
            return
        if kind in FUNCTIONS:
            former, self.function = self.function, cursor
            self.visit_children(cursor)
            self.function = former
        elif kind == Kind.LAMBDA_EXPR:
            former, self.function = self.function, None
            for child in cursor.get_children():
                if child.kind == Kind.COMPOUND_STMT:
                    self.visit(child)
            self.function = former
        elif kind == Kind.COMPOUND_STMT:
            self.block(cursor)
        elif kind == Kind.IF_STMT:
            self.decision(cursor)
        elif kind in LOOPS:
            self.loop(cursor)
        elif kind == Kind.CXX_FOR_RANGE_STMT:
            *header, body = cursor.get_children()
            for child in header:
                self.visit(child)
            self.body(body)
        elif kind == Kind.RETURN_STMT:
            self.answer(cursor)
            self.visit_children(cursor)
        elif kind == Kind.VAR_DECL:
            self.variable(cursor)
        else:
            self.expression(cursor)

    def decision(self, cursor):
        children = list(cursor.get_children())
        spelled = self.text(cursor)
        isConstant = re.match(r"if\s+constexpr", spelled)
        begin, end, semicolons = self.parenthesized(self.extent(cursor)[0])
        if not isConstant:
            begin = semicolons[-1] + 1 if semicolons else begin
            self.condition(begin, end)
        for child in children:
            if child.extent.start.offset > end:
                self.body(child)
            elif not isConstant and child.extent.end.offset <= end:
                self.visit(child)

    def loop(self, cursor):
        begin, end, semicolons = self.parenthesized(self.extent(cursor)[0])
        if len(semicolons) == 2 and not self.source.text(semicolons[0] + 1, semicolons[1]).isspace():
            if self.source.text(semicolons[0] + 1, semicolons[1]):
                self.condition(semicolons[0] + 1, semicolons[1])
        elif not semicolons:
            self.condition(begin, end)
        for child in cursor.get_children():
            if child.extent.start.offset > end:
                self.body(child)
            else:
                self.visit(child)

    def expression(self, cursor):
        kind = cursor.kind
        children = list(cursor.get_children())
        if kind == Kind.CONDITIONAL_OPERATOR:
            self.condition(*self.extent(children[0]))
        elif kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR) and len(children) == 2:
            between = self.source.text(children[0].extent.end.offset, children[1].extent.start.offset).strip()
            if between in ("&&", "||"):
                for child in children:
                    self.operand(child)
            else:
                self.binary(cursor, *children)
        elif kind == Kind.UNARY_OPERATOR:
            named = children[0].referenced if children and children[0].kind == Kind.DECL_REF_EXPR else None
            if named and named.kind == Kind.CXX_METHOD and self.text(cursor).startswith("&"):
                self.reference(cursor, named)
            else:
                self.unary(cursor)
        elif kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR, Kind.STRING_LITERAL):
            self.literal(cursor)
        elif kind == Kind.DECL_REF_EXPR:
            if cursor.referenced and cursor.referenced.kind == Kind.ENUM_CONSTANT_DECL:
                self.enumerator(cursor, cursor.referenced)
            return  # its children are the arguments of a template
        elif kind == Kind.MEMBER_REF_EXPR:
            children = children[:1]
        elif kind == Kind.CALL_EXPR:
            self.call(cursor)
        for child in children:
            self.visit(child)


def files_of(unit):
    """By name, what the translation unit includes, itself too."""
    return {str(unit.spelling), *(str(each.include) for each in unit.get_includes())}


def read(root, commands, scratch):
    """Yields each source file of the library with the switches in it. `commands` are the arguments of the compiler by
    source file. Foreign headers are read once, into a file in the folder `scratch`."""
    numbers = iter(range(1, 1 << 30))
    index = cindex.Index.create()
    folders = [root / "service", root / "devices"]
    seen = set()
    headers = [path.read_text() for folder in folders for path in folder.rglob("*.h")]
    foreign = sorted({line for text in headers for line in re.findall(r"^#include <\w+>$", text, re.MULTILINE)})
    recorded = cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD  # with what macros expand to
    header, read_before = scratch / "foreign.h", scratch / "foreign.pch"
    header.write_text("\n".join(foreign))
    index.parse(str(header), ["-x", "c++-header", *next(iter(commands.values()))],
                options=recorded | cindex.TranslationUnit.PARSE_INCOMPLETE).save(str(read_before))
    for path, arguments in commands.items():
        unit = index.parse(str(path), ["-include-pch", str(read_before), *arguments], options=recorded)
        errors = [each for each in unit.diagnostics if each.severity >= cindex.Diagnostic.Error
                  and each.location.file]  # what has none is libclang's own, about a foreign.pch that it wrote itself
        if errors:
            raise ValueError("\n".join(map(str, errors)))
        sources, cursors = {}, {}
        for name in files_of(unit):
            file = pathlib.Path(name).resolve()
            if file not in seen and any(file.is_relative_to(folder) for folder in folders):
                seen.add(file)
                sources[name] = Source(root, file, numbers)
                cursors[name] = []
        for cursor in unit.cursor.get_children():
            name = cursor.location.file and cursor.location.file.name
            if name not in sources:
                continue
            if cursor.kind == Kind.MACRO_INSTANTIATION:
                if cursor.spelling not in ("emit", "DEVICESSERVICE_EXPORT", "DEVICESSERVICE_NO_EXPORT", "Q_SIGNALS"):
                    sources[name].macros.append((cursor.extent.start.offset, cursor.extent.end.offset))
            elif not cursor.kind.is_preprocessing():
                cursors[name].append(cursor)
        for name in sorted(sources):
            source = sources[name]
            source.macros.sort()
            whole = unit.get_extent(name, (0, len(source.data)))
            tokens = [(token.extent.start.offset, token.extent.end.offset, token.spelling)
                      for token in unit.get_tokens(extent=whole) if token.kind != cindex.TokenKind.COMMENT]
            reader = Reader(source, tokens)
            for cursor in cursors[name]:
                reader.visit(cursor)
            yield source
