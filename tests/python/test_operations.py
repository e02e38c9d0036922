"""Every public operation of every adapter, as it is recorded for the binary contract, is reachable."""

import os
import pathlib
import re
import subprocess
import sys
from typing import Dict, Set

import devicesservice

_TESTS = pathlib.Path(__file__).resolve().parents[1]
# What stands for these in Python: subscriptions, and the instrument's own thread.
_NOT_CALLED = {"addObserver", "removeObserver", "onControlsAboutToBeReleased", "onControlsAvailable",
               "metaObject", "qt_metacall", "qt_metacast"}


def recorded(folder: pathlib.Path) -> Dict[str, Set[str]]:
    output = folder / "operations.txt"
    record = next((_TESTS / "contract" / "reference").glob("*.abi.xz"))
    script = _TESTS / "assurance" / "matrix" / "publicoperations.py"
    subprocess.run([sys.executable, "-B", script, record, output], check=True)
    found: Dict[str, Set[str]] = {}
    for adapter, operation in map(str.split, output.read_text().splitlines()):
        found.setdefault(adapter, set()).add(operation)
    return found


def snake_case(name: str) -> str:
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])", "_", name).lower()


def is_reachable(cls: type, operation: str) -> bool:
    name = snake_case(operation)
    getter = vars(cls).get(name, vars(cls).get(name[3:] if name.startswith("is_") else name))
    if getter is not None or f"on_{name}" in vars(cls):
        return True
    settable = [name[4:]] if name.startswith("set_") else [name[7:] + "_enabled"] if name.startswith("enable_") else []
    return any(isinstance(member := vars(cls).get(each), property) and member.fset for each in settable)


def test_every_recorded_operation_is_reachable(tmp_path: pathlib.Path) -> None:
    missing, count = [], 0
    for adapter, operations in recorded(tmp_path).items():
        name = {"SdkMemoryUsbId": "UsbIdControl", "SdkCalibrationControlWatcher": "CalibrationControlHandle"}.get(
            adapter, adapter.removeprefix("Sdk"))
        for operation in operations - _NOT_CALLED:
            count += 1
            if not is_reachable(getattr(devicesservice, name), operation):
                missing.append(f"{name}.{operation}")
    assert missing == []
    assert count > 180


def test_what_is_missing_is_noticed() -> None:
    assert not is_reachable(devicesservice.LoLeakageControl, "setLevel")
    assert not is_reachable(devicesservice.UlkPowerControl, "setMinPowerCode"), "which is only read"
