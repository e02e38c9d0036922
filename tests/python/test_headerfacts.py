"""What is taken from headers is all of it, and a comment that is missing fails the build."""

import pathlib
import subprocess
import sys
from typing import Tuple

import pytest

_SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "python" / "headerfacts.py"
_HEADER = """#pragma once

namespace things {

/// A thing. What the SDK throws passes through every operation.
///
/// Thread: *any thread*.
class SdkThing
{
public:
    /// How it is.
    enum class Kind : int {
        Small1, ///< fits
        Large   ///< does not
    };

    /// A part.
    struct Part
    {
        int theNumber = 0; ///< of the part
    };

    SdkThing();

    /// Whether it is on; `Small1` if not.
    bool isEnabled() const;
    /// Switches it; see thePart().
    void setEnabled(bool enabled);

    /// Gives a part
    /// by its number.
    Part thePart(int theNumber, const Kind& kind) const;

Q_SIGNALS:
    /// It was switched.
    void enabledChanged(bool enabled);

private:
    int hidden() const;
    int m_number = 0;
};

} // namespace things
"""


def written(folder: pathlib.Path, text: str) -> Tuple[int, str, str]:
    header, output = folder / "service" / "thing.h", folder / "facts.h"
    header.parent.mkdir(exist_ok=True)
    header.write_text(text)
    done = subprocess.run([sys.executable, "-B", _SCRIPT, output, header], capture_output=True, text=True, check=False)
    return done.returncode, done.stderr, output.read_text() if output.exists() else ""


def test_names_and_comments_are_those_of_the_header(tmp_path: pathlib.Path) -> None:
    status, errors, facts = written(tmp_path, _HEADER)
    assert (status, errors) == (0, "")
    for line in ('pythonName[] = "Thing";',
                 'doc = "A thing. What the SDK throws is raised as `OperationFailed`.";',
                 '{"SMALL1", things::SdkThing::Kind::Small1, "fits"},',
                 'Field{"the_number", &things::SdkThing::Part::theNumber, "of the part"},',
                 '{"isEnabled", "enabled", "Whether it is on; `SMALL1` if not.\\n\\nSwitches it; see the_part().", '
                 '"setEnabled", {}},',
                 '{"thePart", "the_part", "Gives a part\\nby its number.", "", {"the_number", "kind"}},',
                 '{"enabledChanged", "on_enabled_changed", "It was switched.", "", {"enabled"}},'):
        assert line in facts
    assert "hidden" not in facts and "SdkThing()" not in facts


@pytest.mark.parametrize("comment, name", [
    ("    /// Whether it is on; `Small1` if not.\n", "isEnabled"),
    ("    /// Gives a part\n    /// by its number.\n", "thePart"),
    ("    /// How it is.\n", "Kind"),
    (" ///< of the part", "theNumber"),
    (" ///< fits", "Small1"),
    ("/// A thing. What the SDK throws passes through every operation.\n///\n/// Thread: *any thread*.\n", "SdkThing"),
])
def test_a_missing_comment_is_an_error(tmp_path: pathlib.Path, comment: str, name: str) -> None:
    assert comment in _HEADER
    status, errors, facts = written(tmp_path, _HEADER.replace(comment, ""))
    assert status == 1 and f"{name} has no comment" in errors and not facts


@pytest.mark.parametrize("comment, docstring", [
    ("What it throws passes\n/// through.", "What it throws is raised as `OperationFailed`."),
    ("Fails; what the instrument throws passes through every\n/// operation, and is told.",
     "Fails; what the instrument throws is raised as `OperationFailed`, and is told."),
    ("Keeps them. Move them in: of large ones no more\n/// than one is held. Waits.", "Keeps them. Waits."),
    ("Modes; any other\n/// counts as `Mode3`, read and sent.", "Modes; any other is read as `MODE3`."),
    ("Modes; any other number reads as `Mode3` and is sent\n/// as the SDK's 3.",
     "Modes; any other number reads as `MODE3`."),
    ("Parts; any other is sent as `Part2`.", "Parts."),
])
def test_a_docstring_is_true_of_python(tmp_path: pathlib.Path, comment: str, docstring: str) -> None:
    status, errors, facts = written(tmp_path, _HEADER.replace("A thing. ", f"{comment} "))
    assert (status, errors) == (0, "")
    assert f'doc = "{docstring} What the SDK' in facts
