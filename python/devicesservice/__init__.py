"""Service controls of vector network analysers, for scripts.

    with devicesservice.open() as instrument:
        print(instrument.serial_number.serial_number())
"""

import os as _os
from typing import Sequence as _Sequence, Union as _Union

from ._devicesservice import *
from ._devicesservice import Instrument as _Instrument, open_chosen as _open_chosen

Option = _Union[bool, int, str, "_os.PathLike[str]", _Sequence[str]]


def _texts(value: Option) -> _Sequence[str]:
    """As a person would write it; several for an option that may be given more than once."""
    if isinstance(value, bool):
        return ["true" if value else "false"]
    if isinstance(value, (str, int)):
        return [str(value)]
    if isinstance(value, _os.PathLike):
        return [_os.fspath(value)]
    return list(value)


def open(provider: str = "", *, strict: bool = False, **options: Option) -> _Instrument:
    """Opens an instrument.

    `provider` is NAME-OR-FILE[:OPTION=VALUE,...]; without it the environment variable DEVICESSERVICE_PROVIDER counts,
    and the simulated instrument without that. Further options of the provider follow by name, with _ for -; one that
    may be given more than once takes a sequence. `instrument` is the id of one of several.

    Raises `ValueError` when there is no such provider or option, and `OperationFailed` when the instrument cannot be
    opened. A `strict` instrument raises `ControlAbsent` in each operation of a control that is absent by now.
    """
    given = [(name.replace("_", "-"), text) for name, value in options.items() for text in _texts(value)]
    return _open_chosen(provider, given, strict)
