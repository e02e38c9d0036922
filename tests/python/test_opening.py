"""Instruments are opened by provider and options, as service-console opens them."""

import pathlib
from typing import Any

import pytest

import devicesservice


def test_opens_the_simulated_instrument_when_none_is_named() -> None:
    with devicesservice.open() as instrument:
        assert instrument.provider.name == "simulated"
        assert instrument.description.id == "simulated"
        assert instrument.serial_number.serial_number() == 100001


def test_takes_options_by_name_and_behind_the_provider() -> None:
    missing = ["lo-leakage", "ulk-power"]
    with devicesservice.open("simulated:missing=usb-id", missing=missing, memory_size=512) as instrument:
        assert {"usb_id", "lo_leakage", "ulk_power"}.isdisjoint(instrument.present_controls)
        assert len(instrument.present_controls) == 17
        assert len(instrument.memory_operations.read()) == 512


def test_asks_the_environment_when_none_is_named(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("DEVICESSERVICE_PROVIDER", "simulated:missing=temperature")
    with devicesservice.open() as instrument:
        assert "temperature" not in instrument.present_controls


@pytest.mark.parametrize("provider, options, text", [
    ("nobody", {}, "nobody"),
    ("simulated:colour=red", {}, "colour"),
    ("", {"colour": "red"}, "colour"),
    ("", {"memory": "old"}, "old"),
    ("", {"memory_size": "many"}, "many"),
])
def test_refuses_what_there_is_not(provider: str, options: "dict[str, Any]", text: str) -> None:
    with pytest.raises(ValueError, match=text):
        devicesservice.open(provider, **options)


def test_says_why_an_instrument_cannot_be_opened(tmp_path: pathlib.Path) -> None:
    damaged = tmp_path / "damaged.state"
    damaged.write_text("no state")
    with pytest.raises(devicesservice.OperationFailed, match="damaged.state"):
        devicesservice.open(state=damaged)
    with pytest.raises(devicesservice.OperationFailed, match="elsewhere"):
        devicesservice.open(instrument="elsewhere")


def test_keeps_an_instrument_in_a_file(tmp_path: pathlib.Path) -> None:
    state = tmp_path / "bench.state"
    with devicesservice.open(state=state) as instrument:
        instrument.serial_number.write_serial_number(4711)
        instrument.keep()
        instrument.serial_number.write_serial_number(4712)
    with devicesservice.open(state=state) as instrument:
        assert instrument.serial_number.serial_number() == 4711


def test_lists_providers_with_their_options_and_instruments() -> None:
    providers = devicesservice.find_providers()
    simulated = next(each for each in providers.found if each.name == "simulated")
    delay = next(each for each in simulated.options if each.name == "fault-delay")
    assert delay.type is devicesservice.ProviderOption.Type.NUMBER
    assert delay.value_if_not_given == 1000000
    assert providers.folders and not providers.refused
    assert [each.id for each in devicesservice.find_instruments("simulated")] == ["simulated"]
    assert repr(devicesservice.find_instruments()) == repr(devicesservice.find_instruments("simulated"))
    with pytest.raises(ValueError, match="nobody"):
        devicesservice.find_instruments("nobody")


def test_is_closed_once() -> None:
    instrument = devicesservice.open()
    temperature = instrument.temperature
    instrument.close()
    instrument.close()
    assert instrument.closed
    with pytest.raises(ValueError, match="closed"):
        instrument.temperature
    with pytest.raises(ValueError, match="closed"):
        temperature.on_temperatures_changed(print)
    with pytest.raises(ValueError, match="closed"):
        instrument.release_controls()
    assert temperature.temperature == 23.0, "the last reading is kept"


def test_a_control_keeps_its_instrument_open() -> None:
    serial_number = devicesservice.open().serial_number
    assert serial_number.serial_number() == 100001
