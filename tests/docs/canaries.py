"""Feeds each check of the papers something wrong, which it must find, and something right, which it must not.

Usage: canaries.py FOLDER   where FOLDER is that of the manual, with its Doxyfile
"""

import pathlib
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
/// A thing.
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

private:
    struct Inner
    {
        int number = 0;
    };
    int m_number = 0;
};
"""

# What is wrong with a header, and what must be said of it.
_HEADERS = {
    "nothing": (_RIGHT, None),
    "a class without a description": (_RIGHT + "class Other {};", "Other"),
    "a class whose members alone have one": (_RIGHT.replace("/// A thing.\n", ""), "Thing"),
    "a function without a description": (_RIGHT.replace("    /// What it is like.\n    Kind kind", "    Kind kind"), "kind("),
    "an enumeration without a description": (_RIGHT.replace("    /// What it is like.\n    enum", "    enum"), "Kind"),
    "an enumerator without a description": (_RIGHT.replace(" ///< does not", ""), "Large"),
    "a constant without a description": (_RIGHT + "inline constexpr int limit = 3;", "limit"),
    "a parameter that there is not": (_RIGHT.replace("/// What it is like.\n    Kind kind",
                                                     "/// What it is like. @param size is not there\n    Kind kind"), "size"),
    "a reference to nothing": (_RIGHT.replace("/// A thing.", "/// A thing. @ref Nowhere"), "Nowhere"),
    "a command that there is not": (_RIGHT.replace("/// A thing.", "/// A thing. @thing"), "thing"),
}


def _output_of(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return done.returncode, done.stdout


def _header_findings(manual, scratch, header):
    """What the build of the manual says of a header; nothing when it is content."""
    (scratch / "thing.h").write_text(_HEADER.format(header))
    doxyfile = scratch / "Doxyfile"
    doxyfile.write_text((manual / "Doxyfile").read_text() + f'\nINPUT = "{scratch}"\nOUTPUT_DIRECTORY = "{scratch}/manual"\n'
                        "USE_MDFILE_AS_MAINPAGE =\n")
    steps = (["doxygen", doxyfile], [sys.executable, "-B", _HERE / "undescribed.py", scratch / "manual" / "xml"])
    return "".join(output for status, output in (_output_of(*step) for step in steps) if status != 0)


def _link_findings(scratch, body):
    html = scratch / "html"
    html.mkdir(exist_ok=True)
    (html / "index.html").write_text(f"<html><body>{body}</body></html>")
    (html / "other.html").write_text('<html><body><p id="there">There</p></body></html>')
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
    "nothing": (("$ echo a; echo b", "a", "b", "$ echo c 1.2 d", "c ... d", "$ cat <<END", "> x", "> END", "x", "$ false",
                 "$ echo $?", "1", "$ seq 9", "1", "...", "9"), None),
    "another word": (("$ echo a", "b"), "printed something else"),
    "a line too many": (("$ echo a", "a", "b"), "printed something else"),
    "a line too few": (("$ echo a; echo b", "a"), "printed something else"),
    "nothing where something is printed": (("$ echo a",), "printed something else"),
    "a full stop for any character": (("$ echo axb", "a.b"), "printed something else"),
    "a command that fails": (("$ false",), "ended with 1"),
    "another status": (("$ false", "$ echo $?", "0"), "printed something else"),
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

    for wrong, (lines, said) in _TRANSCRIPTS.items():
        yield f"transcript with {wrong}", list(check.transcript_findings(_page(scratch, _console(*lines)))), said

    sources = {"cpp": ["int main()\n{\n    return 0;\n}\n"], "cmake": []}
    for wrong, text, said in (("nothing", "```cpp\n    return 0;\n```\n", None),
                              ("code of no file", "```cpp\n    return 1;\n```\n", "stands in no file"),
                              ("code of no language", "```\nreturn 0;\n```\n", "block of code"),
                              ("a shell's commands", "```sh\n./check\n```\n", "block of code")):
        yield f"quote with {wrong}", list(check.quote_findings(_page(scratch, text), sources)), said

    for wrong, text, said in (("nothing", "[x](page.md)", None), ("a dead link", "[x](nowhere.md)", "leads nowhere"),
                              ("a link to elsewhere", "[x](http://localhost/)", "leads out")):
        yield f"page with {wrong}", list(check.link_findings(_page(scratch, text))), said

    program = console.Program(check.environment())
    for wrong, text, said in (("nothing", "`service-console --json files ls`, `./check asan tsan`, `./bench`", None),
                              ("an unknown command", "`service-console files list`", "no command 'files list'"),
                              ("an unknown check", "`./check everything`", "no such check"),
                              ("an unknown script", "`./tryout`", "no such file")):
        yield f"page with {wrong}", list(check.command_findings(_page(scratch, text), program)), said

    synopsis = "".join(f"service-console {' '.join(command)} X\n" for command in program.commands())
    for wrong, text, said in (("nothing", synopsis, None),
                              ("a command missing", synopsis.replace("service-console files ls X\n", ""), "'files ls' is not in"),
                              ("an unknown command", synopsis + "service-console files list\n", "no command 'files list'")):
        yield f"synopsis with {wrong}", list(program.findings(_page(scratch, f"```text\n{text}```\n"))), said

    options = pages.README.read_text()
    for wrong, text, said in (("nothing", options, None),
                              ("a missing option", options.replace("`DEVICESSERVICE_DOCS`", ""), "DEVICESSERVICE_DOCS")):
        yield f"README with {wrong}", list(check.option_findings(_page(scratch, text))), said


def main(manual):
    failed = 0
    count = 0
    with tempfile.TemporaryDirectory() as scratch:
        for name, found, said in _canaries(manual, pathlib.Path(scratch)):
            text = found if isinstance(found, str) else "\n".join(found)
            count += 1
            if (text != "") if said is None else (said not in text):
                failed += 1
                print(f"error: {name}: {'found' if said is None else 'expected ' + repr(said) + ' in'} '{text}'", file=sys.stderr)
    print(f"{count} canaries, {failed} not noticed")
    return 1 if failed else 0


sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
