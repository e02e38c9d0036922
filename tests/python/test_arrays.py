"""Arrays: numbers that would change on their way to the instrument are refused, and nothing is done."""

import array
import datetime
from typing import Any, List, Tuple

import numpy as np
import pytest

import devicesservice
from devicesservice import ErrorTerms, Instrument

Group = devicesservice.YqIfswCalibrationControl.IfswCalibrationGroup
_NOW = datetime.datetime(2026, 1, 1, tzinfo=datetime.timezone.utc)
_TERMS = [("key", np.int64), ("value", np.float64), ("number", np.int64)]


def read_back(instrument: Instrument, records: Any) -> List[Tuple[int, float, int]]:
    instrument.system_terms.write_system_terms(_NOW, 0.5, ErrorTerms(), records)
    return instrument.system_terms.terms_records.tolist()  # type: ignore[no-any-return]


@pytest.mark.parametrize("position, value, error", [
    (3, 300, ValueError), (4, -1, ValueError), (6, 256, ValueError), (3, 1.5, ValueError),
    (3, float("nan"), ValueError), (3, float("inf"), ValueError), (3, 1e300, ValueError),
    (3, np.int64(256), ValueError), (3, np.float32(0.5), ValueError), (1, 1e300, ValueError),
    (3, "1", TypeError), (3, None, TypeError), (0, "1", TypeError),
    (0, None, TypeError), (0, 1 + 2j, TypeError), (1, np.complex64(1 + 2j), TypeError),
])
def test_a_number_that_does_not_fit_its_field_is_refused(
        instrument: Instrument, position: int, value: Any, error: "type[Exception]") -> None:
    point: List[Any] = [1.0, 2, 3, 4, 5, 6, 7, 8, 9]
    save = instrument.factory_power_calibration.save_calibration_data
    save(_NOW, 1.0, [tuple(point)])
    instrument.wait_until_quiet()
    told: List[object] = []
    instrument.factory_power_calibration.on_state_changed(told.append)
    point[position] = value
    with pytest.raises(error):
        save(_NOW, 1.0, [tuple(point)])
    instrument.wait_until_quiet()
    assert told == []


def test_every_number_that_fits_arrives_as_it_is(instrument: Instrument) -> None:
    extremes = [(2**63 - 1, 1e300, -2**31), (-2**63, -0.0, 2**31 - 1)]
    assert read_back(instrument, extremes) == extremes
    assert read_back(instrument, np.array(extremes, _TERMS)) == extremes
    narrow = np.array([(1, 2, 3)], [("key", "u1"), ("value", "f4"), ("number", ">i2")])
    assert read_back(instrument, narrow) == [(1, 2, 3)]
    assert read_back(instrument, [(7.0, 2, np.float64(-3)), (np.uint8(7), np.float32(0.5), True)]) == [
        (7, 2.0, -3), (7, 0.5, 1)]
    assert read_back(instrument, np.array(extremes, _TERMS)[::-1]) == extremes[::-1]
    assert len(Group(()).first) == len(Group(np.zeros((0,))).first) == 0


def test_fields_go_by_their_names(instrument: Instrument) -> None:
    swapped = np.array([(1, 2.5, 3), (4, 5.5, 6)], [("number", "i8"), ("value", "f8"), ("key", "i8")])
    in_order = [(3, 2.5, 1), (6, 5.5, 4)]
    assert read_back(instrument, swapped) == in_order
    assert read_back(instrument, list(swapped)) == in_order
    assert read_back(instrument, swapped.view(np.recarray)) == in_order


@pytest.mark.parametrize("records, error", [
    (np.zeros(1, [("key", "i8"), ("value", "f8"), ("count", "i8")]), ValueError),
    (np.zeros(1, _TERMS + [("more", "f8")]), ValueError),
    (np.zeros(1, _TERMS[:2]), ValueError),
    (np.array([(1, 2, 2**63)], [("key", "i8"), ("value", "f8"), ("number", "u8")]), ValueError),
    (np.array([(1, 2, 0.5)], [("key", "i8"), ("value", "f8"), ("number", "f8")]), ValueError),
    (np.array([(1, 2j, 3)], [("key", "i8"), ("value", "c16"), ("number", "i8")]), TypeError),
    (np.zeros((1, 1), _TERMS), ValueError),
    (np.zeros(3), TypeError),
    ([1, 2, 3], TypeError),
    ([(1, 2)], ValueError),
    ([(1, 2, 3, 4)], ValueError),
    ("123", TypeError),
    (b"123", (TypeError, ValueError)),
])
def test_what_are_no_such_records_is_refused(instrument: Instrument, records: Any, error: Any) -> None:
    assert read_back(instrument, [(1, 2, 3)]) == [(1, 2, 3)]
    with pytest.raises(error):
        read_back(instrument, records)
    assert instrument.system_terms.terms_records.tolist() == [(1, 2, 3)]


def test_numbers_are_those_that_were_given() -> None:
    rights: List[Any] = [[1, 2.5], (1, 2.5), np.array([1, 2.5], np.float32), np.array([1, 0, 2.5])[::2],
                         array.array("d", [1, 2.5]), np.array([1, 2.5], ">f8")]
    for right in rights:
        assert ErrorTerms(right).frequencies.tolist() == [1, 2.5]
        assert ErrorTerms.Port(1, right).directivity.tolist() == [1, 2.5]
    assert ErrorTerms(np.array([1, 2**40])).frequencies.tolist() == [1, 2**40]
    assert ErrorTerms([]).frequencies.tolist() == []


@pytest.mark.parametrize("numbers", [
    np.array([1, 1j]), [1, 1j], ["1"], [None], [1.0, None], b"1", np.array(["1"]), np.array(["2026-01-01"], "M8[s]"),
    [[1, 2]], np.zeros((2, 2)), np.zeros(2, _TERMS)])
def test_what_are_no_real_numbers_is_refused(numbers: Any) -> None:
    with pytest.raises((TypeError, ValueError)):
        ErrorTerms(numbers)


def test_records_in_records_are_checked_too() -> None:
    with pytest.raises(TypeError):
        Group([(1, 2, 3)], [(1, 2, "3")])  # type: ignore[arg-type]
