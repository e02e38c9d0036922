"""The controls: values in both directions, what is refused, and what fails."""

import datetime
import enum
import re
from typing import Any, Iterator, List, Tuple

import numpy as np
import pytest

import devicesservice
from devicesservice import ErrorTerms, FactoryCorrection, Instrument, OperationFailed, UlkPowerControl
from devicesservice import Wn0807SynthesisControl

with devicesservice.open() as _opened:
    SETTABLE = [(control, name) for control in _opened.present_controls
                for name, member in vars(type(getattr(_opened, control))).items()
                if isinstance(member, property) and member.fset]


def candidates(value: object) -> List[object]:
    if value is None:
        return list(Wn0807SynthesisControl.RfFilter)
    if isinstance(value, enum.IntEnum):
        return list(type(value))
    if isinstance(value, bool):
        return [False, True]
    if isinstance(value, int):
        return [value + 1, value + 6, value + 40]
    assert isinstance(value, float)
    return [value + 0.25, value + 1e-6, value + 1e6, 5e6, 10e6]


def test_there_are_settings_in_every_module() -> None:
    assert {control for control, _ in SETTABLE} == {
        "ulk_synthesis", "ulk_power", "wn0807_synthesis", "wn0807_power", "lo_leakage", "kz515_power", "yq_synthesis"}
    assert len(SETTABLE) > 45


@pytest.mark.parametrize("control_name, name", SETTABLE)
def test_a_setting_reads_as_it_was_set(instrument: Instrument, control_name: str, name: str) -> None:
    control = getattr(instrument, control_name)
    before = getattr(control, name)
    taken = []
    for value in candidates(before):
        setattr(control, name, value)
        if getattr(control, name) == value != before:
            taken.append(value)
    assert taken, f"nothing but {before!r} is taken"
    assert before is None or type(getattr(control, name)) is type(before)


def test_every_operation_says_what_it_does() -> None:
    classes = [each for each in vars(devicesservice).values()
               if isinstance(each, type) and each.__name__.endswith("Control")]
    assert len(classes) == 18
    for each in classes:
        assert len(each.__doc__ or "") > 20
        for name, member in vars(each).items():
            doc = member.__doc__ or ""
            if isinstance(member, property):
                assert doc, f"{each.__name__}.{name}"
            elif not name.startswith("_") and not isinstance(member, type):
                assert "\n\n" in doc, f"{each.__name__}.{name}"
    assert "Attenuation in dB" in (devicesservice.Wn0807PowerControl.attenuation_db.__doc__ or "")
    assert "on_lo_power_changed()" in (UlkPowerControl.lo_power.__doc__ or "")


def test_nothing_is_described_as_in_cpp() -> None:
    def docstrings(scope: type) -> Iterator[Tuple[str, str]]:
        for name, member in vars(scope).items():
            yield f"{scope.__qualname__}.{name}", member.__doc__ or ""
            if isinstance(member, type) and member.__qualname__.startswith(scope.__qualname__):
                yield from docstrings(member)

    foreign = re.compile(r"passes\s+through|[Mm]ove them|[Mm]oved|sent\s+as|and\s+sent|std::|\bThrows\b|`Failed`|&")
    for each in vars(devicesservice).values():
        if isinstance(each, type):
            for name, doc in [(each.__name__, each.__doc__ or ""), *docstrings(each)]:
                assert not foreign.search(doc), f"{name}: {doc}"


def test_files_are_bytes_under_any_name(instrument: Instrument) -> None:
    files = instrument.file_memory
    files.write_file("Prüfung", b"\0\xff7")
    files.write_file("empty", bytearray())
    files.write_file("array", np.array([1, 2, 250], dtype=np.uint8))
    listed = files.file_list()
    assert [file.name for file in listed] == ["Prüfung", "empty", "array"]
    assert [files.read_file(file) for file in listed] == [b"\0\xff7", b"", b"\x01\x02\xfa"]
    files.delete_file(listed[0])
    assert len(files.file_list()) == 2
    assert files.space_info() == devicesservice.FileMemoryControl.SpaceInfo(262144, 3, 262141)
    with pytest.raises(OperationFailed, match="not found"):
        files.read_file(devicesservice.FileMemoryControl.FileInfo("nowhere"))


def test_memory_potentiometers_and_identifier_are_written_and_read(instrument: Instrument) -> None:
    memory = instrument.memory_operations
    memory.write(b"abc")
    assert memory.read()[:4] == b"abc\xff"
    memory.integrity_check()
    memory.erase()
    assert set(memory.read()) == {0xFF}

    potentiometers = instrument.potentiometers
    assert len(potentiometers.potentiometers) == 8
    potentiometers.write_to_eeprom(2, 77)
    potentiometers.write_to_ram(2, 5)
    assert potentiometers.read_from_eeprom(2) == 77
    with pytest.raises(OperationFailed, match="answered with an error"):
        potentiometers.read_from_eeprom(8)

    usb = instrument.usb_id
    usb.write_usb_id(devicesservice.UsbIdControl.UsbId(1, 2, 3))
    assert (usb.usb_id.id1, usb.usb_id.id2, usb.usb_id.id3) == (1, 2, 3)
    assert usb.usb_id.model_name and len(usb.usb_ids) == 5


def test_texts_of_an_instrument_need_not_be_utf_8() -> None:
    strange: Any = b"Pr\xfcfer"
    potentiometer = devicesservice.PotentiometerInfo(strange, 1, 2)
    assert potentiometer.name == "Pr\ufffdfer" and "Pr\ufffdfer" in repr(potentiometer)
    assert devicesservice.UsbIdControl.UsbId(1, 2, 3, strange).model_name == "Pr\ufffdfer"


def test_terms_are_arrays_and_times_know_their_zone(instrument: Instrument) -> None:
    terms = ErrorTerms([1e9, 2e9], [ErrorTerms.Port(1, [1 + 2j, 3], np.ones(2), [0, 0])],
                       [ErrorTerms.PortPair(1, 2, load_match=[0.5j, 0])])
    assert terms.frequencies.dtype == np.float64 and terms.ports[0].directivity.tolist() == [1 + 2j, 3]
    assert terms == ErrorTerms(terms.frequencies, terms.ports, terms.port_pairs) != ErrorTerms()
    control = instrument.system_terms
    now = datetime.datetime(2026, 11, 22, 12, 0, 30, tzinfo=datetime.timezone(datetime.timedelta(hours=2)))
    assert not control.system_terms_flag
    control.write_system_terms(now, 0.5, terms, [(7, 0.25, -5), (-8, 2.5, 6)])
    records = control.terms_records
    assert records.dtype.names == ("key", "value", "number")
    assert records.tolist() == [(7, 0.25, -5), (-8, 2.5, 6)]
    control.write_system_terms(now, 0.5, terms, records[:1])
    assert control.system_terms_flag and len(control.terms_records) == 1
    with pytest.raises(ValueError, match="time zone"):
        control.write_system_terms(datetime.datetime(2026, 11, 22), 0.5, terms)
    with pytest.raises(TypeError):
        control.write_system_terms("today", 0.5, terms)


def test_plans_and_tables_are_arrays_of_their_own(instrument: Instrument) -> None:
    plan = instrument.ifsw_calibration.frequency_plan
    assert plan.dtype.names == ("start", "stop", "points") and len(plan) == 3
    assert plan["start"][0] == 10e6 and plan["stop"][-1] == 20e9
    plan["start"] = 0
    assert instrument.ifsw_calibration.frequency_plan["start"][0] == 10e6
    assert instrument.factory_power_calibration.frequency_plan["points"].dtype == np.int32
    table = instrument.wn0807_synthesis.rf_power_range_table
    instrument.wn0807_synthesis.set_rf_power_range_power(0, int(table["power"][0]) + 1)
    assert instrument.wn0807_synthesis.rf_power_range_table["power"][0] == table["power"][0] + 1
    ifs = instrument.yq_synthesis.supported_ifs
    assert ifs.dtype == np.float64 and len(ifs) == 5
    instrument.close()
    assert len(plan) == 3 and len(ifs) == 5, "arrays outlive the instrument"


def test_calibrations_are_saved(instrument: Instrument) -> None:
    Ifsw = devicesservice.YqIfswCalibrationControl
    group = Ifsw.IfswCalibrationGroup([(1, 2, 3)], np.zeros((0,)))
    instrument.ifsw_calibration.save_calibration_data(Ifsw.IfswCalibrationData([1.5, 2], [group, group, group]))
    with pytest.raises(TypeError):
        Ifsw.IfswCalibrationData([1.5], [group])
    point = (1.0, 2, 3, 4, 5, 6, 7, 8, 9)
    now = datetime.datetime.now(datetime.timezone.utc)
    instrument.factory_power_calibration.save_calibration_data(now, 0.5, [point, point])


def test_ranges_are_tuples_and_what_is_not_there_is_none(instrument: Instrument) -> None:
    control = instrument.wn0807_synthesis
    capacitor = Wn0807SynthesisControl.Capacitor.CAPACITOR2
    control.set_capacitance_range(capacitor, (2.0, 3.0))
    assert control.capacitance_range(capacitor) == (2.0, 3.0)
    instrument.release_controls()
    assert control.capacitance_range(capacitor) is None
    assert control.selected_rf_filter is None


def test_factory_corrections_are_switched(instrument: Instrument) -> None:
    corrections = instrument.factory_corrections
    assert corrections.supported == list(FactoryCorrection)
    switchable = next(each for each in corrections.supported
                      if corrections.is_valid(each) and corrections.is_modifiable(each))
    for is_on in (True, False, True):
        corrections.set_enabled(switchable, is_on)
        assert corrections.is_enabled(switchable) is is_on


def test_a_calibration_controller_is_lent(instrument: Instrument) -> None:
    with instrument.calibration_controller_1.lock() as lent:
        assert lent
    assert not lent
    instrument.release_controls()
    assert not instrument.calibration_controller_1.lock()


@pytest.mark.parametrize("value, error", [
    (256, ValueError), (-1, ValueError), ("1", TypeError), (1.5, TypeError), (None, TypeError)])
def test_wrong_arguments_are_refused_and_change_nothing(
        instrument: Instrument, value: Any, error: "type[Exception]") -> None:
    before = instrument.ulk_power.lo_power
    with pytest.raises(error):
        instrument.ulk_power.lo_power = value
    assert instrument.ulk_power.lo_power == before


@pytest.mark.parametrize("value", [None, 0, 1, 7, 2.5, float("nan"), "", "True", [True]])
def test_only_true_and_false_switch(instrument: Instrument, value: Any) -> None:
    instrument.lo_leakage.enabled = True
    with pytest.raises(TypeError):
        instrument.lo_leakage.enabled = value
    with pytest.raises(TypeError):
        instrument.factory_corrections.set_enabled(instrument.factory_corrections.supported[0], value)
    with pytest.raises(TypeError):
        instrument.strict = value
    with pytest.raises(TypeError):
        devicesservice.open(strict=value)
    assert instrument.lo_leakage.enabled is True and instrument.strict is False
    instrument.lo_leakage.enabled = np.bool_(False)  # type: ignore[assignment]
    assert instrument.lo_leakage.enabled is False


def test_only_bytes_are_bytes(instrument: Instrument) -> None:
    control = instrument.kz515_power
    rights: List[Any] = [b"\1\2", bytearray(2), [1, 255], np.array([1], dtype=np.uint8)]
    for right in rights:
        control.assign_power_calibration_table(right)
    with pytest.raises(ValueError):
        control.assign_power_calibration_table([256])
    with pytest.raises(ValueError):
        control.assign_power_calibration_table(np.array([1.5]))
    with pytest.raises(TypeError):
        control.assign_power_calibration_table(7)
    with pytest.raises(ValueError):
        instrument.file_memory.write_file("a", np.array([1.5]))


def test_an_enumeration_takes_its_members_and_their_numbers(instrument: Instrument) -> None:
    power = instrument.ulk_power
    modes = UlkPowerControl.StepAttenuatorMode
    for given, taken in ((modes.MODE3, modes.MODE3), (1, modes.MODE1)):
        setattr(power, "step_attenuator_mode", given)
        assert power.step_attenuator_mode is taken
    with pytest.raises(ValueError):
        power.step_attenuator_mode = 4  # type: ignore[assignment]
    with pytest.raises(TypeError):
        power.step_attenuator_mode = "MODE1"  # type: ignore[assignment]
