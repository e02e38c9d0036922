"""Feeds each check of the papers something wrong, which it must find, and something right, which it must not.

Usage: canaries.py FOLDER   where FOLDER is that of the manual, with its Doxyfile
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

import check
import console
import pages

_HERE = pathlib.Path(__file__).resolve().parent
_HEADER = """/// Things.
namespace things {{
{}
}} // namespace things
"""
_RIGHT = """
/// A thing. Its `kind()` needs a `number`.
class Thing
{
public:
    /// What it is like.
    enum class Kind {
        Small, ///< fits anywhere
        Large, ///< does not
    };

    /// What it is like.
    Kind kind(int number) const;

protected:
    /// What those that derive from it are like.
    enum class Breed {
        Tame, ///< as it should be
    };

private:
    struct Inner
    {
        enum class Colour { Red };
        struct Core
        {
            int number = 0;
        };
    };
    int m_number = 0;
};
"""
_FIRST = "/// A thing. Its"
_KIND = "    /// What it is like.\n    Kind kind"

# What is wrong with a header, and what must be said of it.
_HEADERS = {
    "nothing": (_RIGHT, None),
    "an empty class without a description": (_RIGHT + "class Other {};", "class things::Other is not documented"),
    "a union without a description": (_RIGHT + "union Other {};", "union things::Other is not documented"),
    "a class whose members alone have one": (_RIGHT.replace("/// A thing. Its `kind()` needs a `number`.\n", ""),
                                             "class things::Thing is not documented"),
    "a function without a description": (_RIGHT.replace(_KIND, "    Kind kind"), "Member kind(int number) const"),
    "an enumeration without a description": (_RIGHT.replace("    /// What it is like.\n    enum", "    enum"),
                                             "Member Kind (enumeration)"),
    "an enumerator without a description": (_RIGHT.replace(" ///< does not", ""), "enumerator Large of Kind"),
    "a protected enumerator without one": (_RIGHT.replace(" ///< as it should be", ""), "enumerator Tame of Breed"),
    "a constant without a description": (_RIGHT + "inline constexpr int limit = 3;", "Member limit (variable)"),
    "a namespace without a description": (_RIGHT + "namespace inner { class Other; }\nnamespace inner {\n/// Another.\n"
                                          "class Other {};\n}", "namespace things::inner is not documented"),
    "a macro without a description": (_RIGHT + "\n#define LIMIT 3\n", "define LIMIT is not documented"),
    "a global function without a description": (_RIGHT + "} namespace {}\nint limit();\nnamespace more {",
                                                "function limit is not documented"),
    "a parameter that there is not": (_RIGHT.replace(_KIND, _KIND.replace(".\n", ". @param size is not there\n", 1)),
                                      "argument 'size'"),
    "an enumerator that quotes what there is not": (_RIGHT.replace("does not", "`size`"), "`size` names size"),
    "a quoted name that there is not": (_RIGHT.replace("`number`.\n", "`size`.\n"), "`size` names size"),
    "a reference to nothing": (_RIGHT.replace(_FIRST, "/// A thing, see @ref Nowhere. Its"), "'Nowhere'"),
    "a command that there is not": (_RIGHT.replace(_FIRST, "/// A @thing. Its"), "unknown command '@thing'"),
}


def _output_of(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return done.returncode, done.stdout


def _header_findings(manual, scratch, header):
    """What the build of the manual says of a header; nothing when it is content."""
    shutil.rmtree(scratch / "manual", ignore_errors=True)
    (scratch / "thing.h").write_text(_HEADER.format(header))
    doxyfile = scratch / "Doxyfile"
    doxyfile.write_text((manual / "Doxyfile").read_text() + f'\nINPUT = "{scratch}/thing.h"\n'
                        f'OUTPUT_DIRECTORY = "{scratch}/manual"\nUSE_MDFILE_AS_MAINPAGE =\n')
    steps = (["doxygen", doxyfile], [sys.executable, "-B", _HERE / "undescribed.py", scratch / "manual" / "xml"])
    return "".join(output for status, output in (_output_of(*step) for step in steps) if status != 0)


def _link_findings(scratch, body, elsewhere=""):
    html = scratch / "html"
    html.mkdir(exist_ok=True)
    (html / "index.html").write_text(f"<html><body>{body}</body></html>")
    (html / "other.html").write_text(f'<html><body><p id="there">There</p>{elsewhere}</body></html>')
    status, output = _output_of(_HERE / "manual_test.sh", scratch)
    return output if status != 0 else ""


def _page(scratch, text):
    page = scratch / "page.md"
    page.write_text(text)
    return page


def _console(*lines):
    return "\n".join(["```console", *lines, "```", ""])


# What is wrong with a transcript, and what must be said of it.
_TRANSCRIPTS = {
    "nothing": (("$ echo a; echo b", "a", "b", "$ echo c 1.2 d", "c ... d", "$ cat <<END", "> x", "> END", "x",
                 "$ false", "$ echo $?", "1", "$ seq 9", "1", "...", "9"), None),
    "an answer of a command that is left to CI": (("$ ./check abi", "this is never printed"), "nobody compares"),
    "another word": (("$ echo a", "b"), "printed something else"),
    "a line too many": (("$ echo a", "a", "b"), "printed something else"),
    "a line too few": (("$ echo a; echo b", "a"), "printed something else"),
    "nothing where something is printed": (("$ echo a",), "printed something else"),
    "a full stop for any character": (("$ echo axb", "a.b"), "printed something else"),
    "a command that fails": (("$ false",), "ended with 1"),
    "another status": (("$ false", "$ echo $?", "0"), "printed something else"),
    "broken syntax": (("$ if true; then", "$ echo a", "a"), "'if true; then' ended with"),
    "a shell that ends": (("$ exit 0", "$ echo a", "a"), "was not run"),
}


def _canaries(manual, scratch):
    for wrong, (header, said) in _HEADERS.items():
        yield f"header with {wrong}", _header_findings(manual, scratch, header), said
    (scratch / "thing.h").unlink()

    for wrong, body, said in (("nothing", '<a href="other.html#there">x</a>', None),
                              ("a dead link", '<a href="nowhere.html">x</a>', "nowhere.html"),
                              ("a dead anchor", '<a href="other.html#nowhere">x</a>', "nowhere")):
        yield f"manual with {wrong}", _link_findings(scratch, body), said
    yield "manual with a dead link that the first page does not lead to", _link_findings(
        scratch, "", '<a href="nowhere.html">x</a>'), "nowhere.html"

    for wrong, (lines, said) in _TRANSCRIPTS.items():
        yield f"transcript with {wrong}", list(check.transcript_findings(_page(scratch, _console(*lines)))), said

    page = _page(scratch, _console("$ echo a", "b", "$ seq 3", "1", "...", "$ true"))
    check.main(["renew", str(page)])
    yield "renewed transcript", list(check.transcript_findings(page)), None
    right = _console("$ echo a", "a", "$ seq 3", "1", "...", "$ true")
    yield "renewed page", "" if page.read_text() == right else page.read_text(), None
    yield "page without a command", list(
        check.transcript_findings(_page(scratch, "x\n"), must_show_some=True)), "no command"
    yield "page that is run elsewhere", list(check.elsewhere_findings("index.md", pages.README)), "nobody runs"

    sources = {"cpp": ["\nint main()\n{\n    return 0;\n}\n"], "cmake": []}
    for wrong, text, said in (("nothing", "```cpp\n    return 0;\n```\n", None),
                              ("code of no file", "```cpp\n    return 1;\n```\n", "stands in no file"),
                              ("half a line", "```cpp\nreturn 0;\n```\n", "stands in no file"),
                              ("nothing in it", "```cpp\n```\n", "stands in no file"),
                              ("code of no language", "```\nreturn 0;\n```\n", "block of code"),
                              ("a shell's commands", "```sh\n./check\n```\n", "block of code"),
                              ("commands as text", "```text\n$ ./check\n```\n", "language console")):
        yield f"quote with {wrong}", list(check.quote_findings(_page(scratch, text), sources)), said

    for wrong, text, said in (("nothing", "[x](page.md)", None), ("a dead link", "[x](nowhere.md)", "leads nowhere"),
                              ("a dead image", "![x](nowhere.svg)", "leads nowhere"),
                              ("an anchor", "[x](page.md#nowhere)", "leads nowhere"),
                              ("a link over two lines", "[x\ny](page.md)", "the end of a line"),
                              ("a link to elsewhere", "[x](http://localhost/)", "leads out"),
                              ("a link out of the project", "[x](/etc/passwd)", "leads out")):
        yield f"page with {wrong}", list(check.link_findings(_page(scratch, text))), said

    files = ["service/support/observerlist.h"]
    for wrong, text, said in (("nothing", "`service/support/`, `service/support/*.h`, `else/where.h`", None),
                              ("a path to nothing", "`service/nowhere.h`", "there is no service/nowhere.h")):
        yield f"page with {wrong}", list(check.path_findings(_page(scratch, text), files)), said

    yield "page that the manual lacks", list(check.guide_findings(_page(scratch, ""))), "not in docs/Doxyfile.in"

    program = console.Program(check.environment())
    for wrong, text, said in (("nothing", "`service-console --json files ls`, `./check asan tsan`, `./bench`", None),
                              ("an unknown command", "`service-console files list`", "no command 'files list'"),
                              ("an unknown option", "`service-console files ls --bogus`", "no option --bogus"),
                              ("a group for a command", "`service-console files`", "is no command"),
                              ("an unknown check", "`./check everything`", "no such check"),
                              ("an unknown script", "`./b`", "CI does not run this")):
        yield f"page with {wrong}", list(check.command_findings(_page(scratch, text), program)), said

    synopsis = "".join(f"service-console {' '.join(command)} X\n" for command in program.commands())
    for wrong, text, said in (
            ("nothing", synopsis, None),
            ("a command missing", synopsis.replace("service-console files ls X\n", ""), "'files ls' is not in"),
            ("an unknown command", synopsis + "service-console files list\n", "no command 'files list'")):
        yield f"synopsis with {wrong}", list(program.findings(_page(scratch, f"```text\n{text}```\n"))), said

    manual_page = (pages.PROJECT / "console" / "service-console.1").read_text()
    for wrong, text, said in (("nothing", manual_page, None),
                              ("a command missing", manual_page.replace(".BR files", ".BR"), "does not name files"),
                              ("an option missing", manual_page.replace(".BI \\-\\-missing", ".BI"), "--missing")):
        yield f"manual page with {wrong}", list(program.page_findings(_page(scratch, text))), said

    for wrong, text, said in (("nothing", pages.README.read_text(), None),
                              ("a missing option", pages.README.read_text().replace("`DEVICESSERVICE_DOCS`", ""),
                               "DEVICESSERVICE_DOCS is not named"),
                              ("an unknown option", pages.README.read_text() + "\n`DEVICESSERVICE_OTHER`\n",
                               "DEVICESSERVICE_OTHER is unknown")):
        yield f"README with {wrong}", list(check.option_findings(_page(scratch, text))), said

    guide = (pages.PROJECT / "docs" / "sdk-implementation.md").read_text()
    for wrong, text, said in (("nothing", guide, None),
                              ("a control missing", guide.replace("`controls::usbId`", ""), "usbId"),
                              ("another interface", guide.replace("IYqSynthesis", "IXySynthesis"), "yqSynthesis"),
                              ("another header", guide.replace("/iyqsynth", "/iulksynth"), "does not declare")):
        yield f"controls with {wrong}", list(check.control_findings(_page(scratch, text), 1)), said


def main(manual):
    failed = 0
    count = 0
    with tempfile.TemporaryDirectory() as scratch:
        for name, found, said in _canaries(manual, pathlib.Path(scratch)):
            text = found if isinstance(found, str) else "\n".join(found)
            count += 1
            if (text != "") if said is None else (said not in text):
                failed += 1
                expected = "nothing" if said is None else repr(said)
                print(f"error: {name}: expected {expected} in '{text}'", file=sys.stderr)
    print(f"{count} canaries, {failed} not noticed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
