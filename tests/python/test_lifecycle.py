"""Controls that are absent, go and come."""

import pytest

import devicesservice
from conftest import Heard
from devicesservice import ControlAbsent, Instrument, OperationFailed


def test_a_control_that_the_instrument_lacks_is_absent() -> None:
    with devicesservice.open(missing="usb-id") as instrument:
        with pytest.raises(ControlAbsent, match="usb-id"):
            instrument.usb_id
        assert isinstance(instrument.serial_number.serial_number(), int)


def test_a_control_that_is_gone_gives_its_defaults(instrument: Instrument) -> None:
    instrument.lo_leakage.enabled = True
    instrument.temperature
    controls = {name: getattr(instrument, name) for name in instrument.present_controls}
    assert len(controls) == 20
    instrument.release_controls()
    assert instrument.present_controls == []
    assert not controls["lo_leakage"].is_present
    assert controls["lo_leakage"].enabled is False
    controls["lo_leakage"].enabled = True
    assert controls["yq_synthesis"].selected_if == -1
    assert len(controls["ulk_synthesis"].supported_refs) == 0
    assert controls["temperature"].temperature == 23.0
    assert controls["usb_id"].usb_id.tag == 1
    with pytest.raises(OperationFailed, match="File memory control is unavailable"):
        controls["file_memory"].file_list()
    with pytest.raises(OperationFailed, match="the control is absent"):
        controls["serial_number"].serial_number()
    with pytest.raises(OperationFailed, match="the control is absent"):
        controls["usb_id"].write_usb_id(devicesservice.UsbIdControl.UsbId())

    instrument.offer_controls()
    assert len(instrument.present_controls) == 20
    assert controls["lo_leakage"].enabled is True
    assert controls["serial_number"].serial_number() == 100001


def test_a_strict_instrument_raises_instead() -> None:
    with devicesservice.open(strict=True) as instrument:
        lo_leakage, temperature, serial = instrument.lo_leakage, instrument.temperature, instrument.serial_number
        instrument.release_controls()
        for call in (lambda: lo_leakage.enabled, lambda: setattr(lo_leakage, "enabled", True),
                     lambda: temperature.temperature, serial.serial_number):
            with pytest.raises(ControlAbsent):
                call()
        instrument.strict = False
        assert lo_leakage.enabled is False


def test_observers_stay_over_a_release(instrument: Instrument, heard: Heard) -> None:
    instrument.serial_number.on_serial_number_event(heard)
    announced = Heard()
    instrument.calibration_controller_2.on_controls_about_to_be_released(lambda: announced("going"))
    instrument.calibration_controller_2.on_controls_available(lambda: announced("there"))
    instrument.release_controls()
    instrument.offer_controls()
    assert announced[0] == ("going",) and announced[-1] == ("there",)
    instrument.serial_number.write_serial_number(5)
    instrument.wait_until_quiet()
    assert heard == [(devicesservice.SerialNumberEvent(5, 100001),)]


def test_a_loss_without_a_word_is_heard_of_by_itself(heard: Heard) -> None:
    """The instrument takes its controls away inside a call; adapters find new ones when these are offered."""
    with devicesservice.open(fault="serial-number.readSerialNumber=release") as instrument:
        instrument.temperature.on_temperatures_changed(heard)
        serial = instrument.serial_number
        assert serial.serial_number() == 100001
        assert not serial.is_present
        instrument.offer_controls()
        assert serial.is_present
        assert heard == [()], "the adapter was told that the controls are there"


@pytest.mark.parametrize("answer", [Instrument.Answer.WITH_ERROR, Instrument.Answer.THROWING])
def test_what_the_instrument_fails_with_is_raised(instrument: Instrument, answer: Instrument.Answer) -> None:
    instrument.set_answer("serial_number", "readSerialNumber", answer)
    with pytest.raises(OperationFailed):
        instrument.serial_number.serial_number()
    instrument.set_answer("serial_number", "readSerialNumber", Instrument.Answer.AS_USUAL)
    assert instrument.serial_number.serial_number() == 100001


def test_what_a_getter_throws_is_raised_with_its_text(instrument: Instrument) -> None:
    instrument.set_answer("potentiometers", "potentiometers", Instrument.Answer.THROWING)
    with pytest.raises(OperationFailed) as raised:
        instrument.potentiometers.potentiometers
    assert str(raised.value)


def test_hooks_refuse_what_there_is_not(instrument: Instrument) -> None:
    assert Instrument.Ability.RELEASE_AND_OFFER in instrument.abilities()
    with pytest.raises(ValueError, match="no control 'nothing'"):
        instrument.notify("nothing")
    with pytest.raises(OperationFailed, match="notifies nobody"):
        instrument.notify("lo_leakage")
    with pytest.raises(OperationFailed, match="no operation 'nothing'"):
        instrument.set_answer("usb_id", "nothing", Instrument.Answer.LATE)
