"""The example of a production test fails what it must not let pass."""

import argparse
from types import SimpleNamespace
from typing import Any, List, Tuple

import pytest

import devicesservice
import production_test
from production_test import Finding

_LIMITS = argparse.Namespace(serial_number=None, temperatures=(15.0, 40.0))


def failures(provider: str, **limits: object) -> List[str]:
    with devicesservice.open(provider, strict=True) as instrument:
        findings = production_test.test(instrument, argparse.Namespace(**{**vars(_LIMITS), **limits}))
        return [finding.step for finding in findings if not finding.passed]


def test_an_instrument_in_order_passes() -> None:
    assert failures("simulated") == []


@pytest.mark.parametrize("provider, limits, step", [
    ("simulated", {"serial_number": 4711}, "serial number"),
    ("simulated:memory=damaged", {}, "memory"),
    ("simulated:missing=temperature", {}, "temperatures"),
    ("simulated:missing=wn0807-power", {}, "levels"),
])
def test_what_is_out_of_order_fails(provider: str, limits: "dict[str, object]", step: str) -> None:
    assert failures(provider, **limits) == [step]


@pytest.mark.parametrize("temperatures, expected", [
    ([], [("temperatures", False)]),
    ([("front", 23.0), ("back", 41.0)], [("temperature front", True), ("temperature back", False)]),
])
def test_temperatures_are_told_and_within_their_limits(
        temperatures: List[Tuple[str, float]], expected: List[Tuple[str, bool]]) -> None:
    modules = [SimpleNamespace(name=name, temperature=value) for name, value in temperatures]
    instrument: Any = SimpleNamespace(temperature=SimpleNamespace(modules_temperature=modules))
    findings: List[Finding] = list(production_test.check_temperatures(instrument, _LIMITS))
    assert [(finding.step, finding.passed) for finding in findings] == expected
