#!/usr/bin/python3
"""Tests an instrument at the end of production, and reports what it found.

The exit status is 0 when everything passed, 1 when something failed, and 2 when the instrument cannot be opened.
"""

import argparse
import csv
import dataclasses
import json
import sys
from typing import Callable, Iterator, List, TextIO

import devicesservice
from devicesservice import Instrument


@dataclasses.dataclass(frozen=True)
class Finding:
    """What one step measured."""
    step: str
    value: str
    passed: bool
    remark: str = ""


def check_serial_number(instrument: Instrument, limits: argparse.Namespace) -> Iterator[Finding]:
    number = instrument.serial_number.serial_number()
    expected = limits.serial_number
    passed = number != 0 if expected is None else number == expected
    yield Finding("serial number", str(number), passed, "" if passed else f"expected {expected or 'one'}")


def check_memory(instrument: Instrument, limits: argparse.Namespace) -> Iterator[Finding]:
    instrument.memory_operations.integrity_check()
    yield Finding("memory", "intact", True)


def check_temperatures(instrument: Instrument, limits: argparse.Namespace) -> Iterator[Finding]:
    low, high = limits.temperatures
    modules = instrument.temperature.modules_temperature
    if not modules:
        yield Finding("temperatures", "-", False, "none is told")
    for module in modules:
        passed = low <= module.temperature <= high
        yield Finding(f"temperature {module.name}", f"{module.temperature:.1f}", passed,
                      "" if passed else f"not within {low:g} to {high:g}")


def check_levels(instrument: Instrument, limits: argparse.Namespace) -> Iterator[Finding]:
    """Every attenuation that is set is the one in force."""
    power = instrument.wn0807_power
    before = power.attenuation_db
    try:
        for attenuation in (0.0, 10.0, 20.25):
            power.attenuation_db = attenuation
            yield Finding(f"attenuation {attenuation:g} dB", f"{power.attenuation_db:g}",
                          power.attenuation_db == attenuation)
    finally:
        power.attenuation_db = before


STEPS: List[Callable[[Instrument, argparse.Namespace], Iterator[Finding]]] = [
    check_serial_number, check_memory, check_temperatures, check_levels]


def test(instrument: Instrument, limits: argparse.Namespace) -> Iterator[Finding]:
    """A step that the instrument does not let happen has failed; the others go on."""
    for step in STEPS:
        try:
            yield from step(instrument, limits)
        except devicesservice.Error as error:
            yield Finding(step.__name__.replace("check_", "").replace("_", " "), "-", False, str(error))


def write_text(findings: List[Finding], output: TextIO) -> None:
    for finding in findings:
        line = f"{'ok' if finding.passed else 'FAILED':8}{finding.step:32}{finding.value:10}{finding.remark}"
        print(line.rstrip(), file=output)
    failed = sum(not finding.passed for finding in findings)
    print(f"FAIL: {failed} of {len(findings)}" if failed else f"PASS: {len(findings)}", file=output)


def write_csv(findings: List[Finding], output: TextIO) -> None:
    rows = csv.writer(output, lineterminator="\n")
    rows.writerow(field.name for field in dataclasses.fields(Finding))
    rows.writerows(map(dataclasses.astuple, findings))


def write_json(findings: List[Finding], output: TextIO) -> None:
    report = {"passed": all(finding.passed for finding in findings),
              "findings": list(map(dataclasses.asdict, findings))}
    print(json.dumps(report, indent=4), file=output)


WRITERS = {"text": write_text, "csv": write_csv, "json": write_json}


def main() -> int:
    parser = argparse.ArgumentParser(description="Tests an instrument at the end of production.")
    parser.add_argument("--provider", default="", help="what opens the instrument, as for service-console")
    parser.add_argument("--serial-number", type=int, help="which it must have; otherwise any but 0")
    parser.add_argument("--temperatures", type=float, nargs=2, default=(15.0, 40.0), metavar=("LOW", "HIGH"),
                        help="what the modules' temperatures must be within")
    parser.add_argument("--report", choices=WRITERS, default="text", help="how the findings are written")
    options = parser.parse_args()
    try:
        with devicesservice.open(options.provider, strict=True) as instrument:
            findings = list(test(instrument, options))
    except (devicesservice.Error, ValueError) as error:
        print(f"production_test: {error}", file=sys.stderr)
        return 2
    WRITERS[options.report](findings, sys.stdout)
    return 0 if all(finding.passed for finding in findings) else 1


if __name__ == "__main__":
    sys.exit(main())
