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
_MANUAL = pathlib.Path(sys.argv[1]).resolve()
_FOLDER = tempfile.TemporaryDirectory()
_SCRATCH = pathlib.Path(_FOLDER.name)
_PAGE = _SCRATCH / "page.md"
_PROGRAM = console.Program(check.environment())

_HEADER = """/// Things.
namespace things {
/// A thing. Its `kind()` needs a `number`.
class Thing
{
public:
    /// What it is like.
    enum class Kind {
        Small, ///< fits anywhere
        Large, ///< does not
    };

    /// Tells.
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
} // namespace things
"""
_END = "} // namespace things\n"
_LINK, _TARGET = '<a href="other.html#there">x</a>', '<p id="there">There</p>'
_RENEWED = "```console\n$ echo a\na\n$ seq 3\n1\n...\n$ true\n```\n"
_SYNOPSIS = "".join(f"service-console {' '.join(command)} X\n" for command in _PROGRAM.commands())


def _outputs_of_failed(*commands):
    for command in commands:
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if done.returncode != 0:
            yield done.stdout


def _header(page):
    """What the build of the manual says of a header."""
    output = _SCRATCH / "manual"
    shutil.rmtree(output, ignore_errors=True)
    header = page.rename(_SCRATCH / "thing.h")
    doxyfile = _SCRATCH / "Doxyfile"
    doxyfile.write_text(f'{(_MANUAL / "Doxyfile").read_text()}\nINPUT = "{header}"\nOUTPUT_DIRECTORY = "{output}"\n'
                        'USE_MDFILE_AS_MAINPAGE =\n')
    return _outputs_of_failed(["doxygen", doxyfile], [sys.executable, "-B", _HERE / "undescribed.py", output / "xml"])


def _links(page):
    """What is said of a manual with the first line for its first page and the second for another."""
    html = _SCRATCH / "html"
    html.mkdir(exist_ok=True)
    for name, body in zip(("index", "other"), page.read_text().splitlines()):
        (html / f"{name}.html").write_text(f"<html><body>{body}</body></html>")
    return _outputs_of_failed([_HERE / "manual_test.sh", _SCRATCH])


def _transcript(page):
    page.write_text(f"```console\n{page.read_text()}```\n")
    return check.transcript_findings(page)


def _renewed(page):
    check.main(["renew", str(page)])
    return [*check.transcript_findings(page), *([] if page.read_text() == _RENEWED else [page.read_text()])]


def _text(*path):
    return pages.PROJECT.joinpath(*path).read_text()


# Each check with what is right, and with what makes it wrong: what is replaced in it (nothing: what stands in front of
# it), by what, and what must be said then.
_CANARIES = {
    "header": (_header, _HEADER, (
        (_END, "class Other {};\n" + _END, "class things::Other is not documented"),
        (_END, "union Other {};\n" + _END, "union things::Other is not documented"),
        ("/// A thing. Its `kind()` needs a `number`.\n", "", "class things::Thing is not documented"),
        ("    /// Tells.\n", "", "Member kind(int number) const"),
        ("    /// What it is like.\n", "", "Member Kind (enumeration)"),
        (" ///< does not", "", "enumerator Large of Kind"),
        (" ///< as it should be", "", "enumerator Tame of Breed"),
        (_END, "inline constexpr int limit = 3;\n" + _END, "Member limit (variable)"),
        (_END, "namespace inner { class Other; }\nnamespace inner {\n/// Another.\nclass Other {};\n}\n" + _END,
         "namespace things::inner is not documented"),
        (_END, "#define LIMIT 3\n" + _END, "define LIMIT is not documented"),
        (_END, _END + "int limit();\n", "function limit is not documented"),
        ("Tells.", "Tells. @param size is not there", "argument 'size'"),
        ("does not", "`size`", "`size` names size"),
        ("`number`", "`size`", "`size` names size"),
        ("A thing.", "A thing, see @ref Nowhere.", "'Nowhere'"),
        ("A thing.", "A @thing.", "unknown command '@thing'"))),
    "manual": (_links, _LINK + "\n" + _TARGET, (
        ("other.html#there", "nowhere.html", "nowhere.html"),
        ("#there", "#nowhere", "nowhere"),
        (_LINK + "\n" + _TARGET, '\n<a href="nowhere.html">x</a>', "nowhere.html"))),
    "transcript": (_transcript, "$ echo a; echo b\na\nb\n$ echo c 1.2 d\nc ... d\n$ cat <<END\n> x\n> END\nx\n"
                                "$ false\n$ echo $?\n1\n$ seq 9\n1\n...\n9\n", (
        ("", "$ ./check abi\nthis is never printed\n", "nobody compares"),
        ("\na\n", "\nx\n", "printed something else"),
        ("\nb\n", "\nb\nx\n", "printed something else"),
        ("\nb\n", "\n", "printed something else"),
        ("\na\nb\n", "\n", "printed something else"),
        ("", "$ echo axb\na.b\n", "printed something else"),
        ("", "$ false\n", "ended with 1"),
        ("?\n1\n", "?\n0\n", "printed something else"),
        ("", "$ if true; then\n", "'if true; then' ended with"),
        ("", "$ exit 0\n", "was not run"))),
    "renewed page": (_renewed, _RENEWED.replace("\na\n", "\nb\n"), ()),
    "page with commands": (lambda page: check.transcript_findings(page, must_show_some=True), _RENEWED, (
        (_RENEWED, "x\n", "no command"),)),
    "what runs a page": (lambda page: check.elsewhere_findings("index.md", page), _text("scripts", "package.sh"), (
        ("papers transcripts docs/index.md", "", "nobody runs"),)),
    "quote": (lambda page: check.quote_findings(page, {"cpp": ["\nint main()\n{\n    return 0;\n}\n"]}),
              "```cpp\n    return 0;\n```\n", (
        ("0", "1", "stands in no file"),
        ("    ", "", "stands in no file"),
        ("    return 0;\n", "", "stands in no file"),
        ("cpp", "", "block of code"),
        ("cpp\n    return 0;", "sh\n./check", "block of code"),
        ("cpp\n    return 0;", "text\n$ ./check", "language console"))),
    "link": (check.link_findings, "[x](page.md)", (
        ("page", "nowhere", "leads nowhere"),
        ("[x](page.md)", "![x](nowhere.svg)", "leads nowhere"),
        (".md", ".md#nowhere", "leads nowhere"),
        ("x", "x\ny", "the end of a line"),
        ("page.md", "http://localhost/", "leads out"),
        ("page.md", "/etc/passwd", "leads out"))),
    "path": (lambda page: check.path_findings(page, ["service/support/observerlist.h"]),
             "`service/support/`, `service/support/*.h`, `else/where.h`", (
        ("support/*", "nowhere", "there is no service/nowhere.h"),)),
    "page of the manual": (lambda page: check.guide_findings(pages.PROJECT / "docs" / page.read_text()), "console.md", (
        ("console", "nowhere", "not in docs/Doxyfile.in"),)),
    "command": (lambda page: check.command_findings(page, _PROGRAM),
                "`service-console --json files ls`, `./check asan tsan`, `./bench`", (
        ("ls", "list", "no command 'files list'"),
        ("ls", "ls --bogus", "no option --bogus"),
        (" ls", "", "is no command"),
        ("asan", "everything", "no such check"),
        ("bench", "b", "CI does not run this"))),
    "synopsis": (_PROGRAM.findings, f"```text\n{_SYNOPSIS}```\n", (
        ("service-console files ls X\n", "", "'files ls' is not in"),
        ("files ls X\n", "files ls X\nservice-console files list\n", "no command 'files list'"))),
    "README": (check.option_findings, _text("README.md"), (
        ("`DEVICESSERVICE_DOCS`", "", "DEVICESSERVICE_DOCS is not named"),
        ("", "`DEVICESSERVICE_OTHER`\n\n", "DEVICESSERVICE_OTHER is unknown"))),
    "controls": (lambda page: check.control_findings(page, 1), _text("docs", "sdk-implementation.md"), (
        ("`controls::usbId`", "", "usbId"),
        ("IYqSynthesis", "IXySynthesis", "yqSynthesis"),
        ("/iyqsynth", "/iulksynth", "does not declare"))),
}


def main():
    count = failed = 0
    for subject, (find, right, wrongs) in _CANARIES.items():
        for old, new, said in (("", "", ""), *wrongs):
            _PAGE.write_text(right.replace(old, new) if old else new + right)
            found = "\n".join(find(_PAGE))
            count += 1
            if said not in found or bool(found) != bool(said):
                failed += 1
                print(f"error: {subject} with {new!r} for {old!r}: expected '{said}' in '{found}'", file=sys.stderr)
    print(f"{count} canaries, {failed} not noticed")
    return 1 if failed else 0


if __name__ == "__main__":
    with _FOLDER:
        sys.exit(main())
