"""Callables hear of notifications, on the instrument's threads and in whatever state the program is."""

import datetime
import gc
import sys
import threading
import weakref
from typing import Any, Callable, List

import pytest

import devicesservice
from conftest import Heard
from devicesservice import CalibrationState, Instrument, MemoryOperationEvent, SerialNumberEvent

IfswCalibrationData = devicesservice.YqIfswCalibrationControl.IfswCalibrationData


def test_every_notification_reaches_its_callables(instrument: Instrument) -> None:
    """Each control that notifies does so; every one of its subscriptions exists and takes a callable."""
    heard = {}
    for name in instrument.present_controls:
        control = getattr(instrument, name)
        for operation in dir(control):
            if operation.startswith("on_"):
                heard[f"{name}.{operation}"] = Heard()
                getattr(control, operation)(heard[f"{name}.{operation}"])
    now = datetime.datetime(2026, 1, 1, tzinfo=datetime.timezone.utc)
    instrument.system_terms.write_system_terms(now, 1.0, devicesservice.ErrorTerms([1e9]), [(1, 2.0, 3)])
    instrument.factory_power_calibration.save_calibration_data(now, 1.0, [(1, 2, 3, 4, 5, 6, 7, 8, 9)])
    instrument.ifsw_calibration.save_calibration_data(IfswCalibrationData([1.0]))
    instrument.ifsw_calibration.save_calibration_data(IfswCalibrationData())
    instrument.factory_power_calibration.save_calibration_data(now, 1.0, [])
    for name in instrument.present_controls:
        try:
            instrument.notify(name)
        except devicesservice.OperationFailed as error:
            assert "notifies nobody" in str(error)
    memory = instrument.memory_operations
    memory.write(memory.read())
    memory.erase()
    instrument.ulk_power.reset()
    instrument.pass_time(2)
    instrument.release_controls()
    instrument.offer_controls()
    assert {name for name, each in heard.items() if not each} == set(), "these heard nothing"
    assert len(heard) > 35
    assert heard["serial_number.on_serial_number_event"] == [(SerialNumberEvent(100001, 100001),)]
    assert heard["system_terms.on_terms_value"][0] == (1,)
    assert heard["memory_operations.on_notification1"][0] == (MemoryOperationEvent(65536, 16384),)
    assert (CalibrationState.STATE2,) in heard["ifsw_calibration.on_state_changed"]
    correction, is_on = heard["factory_corrections.on_enabled_changed"][0]
    assert isinstance(correction, devicesservice.FactoryCorrection) and isinstance(is_on, bool)
    assert (100,) in heard["calibration_controller_1.on_save_progress_changed"]


def test_a_callable_is_called_on_the_instruments_thread(instrument: Instrument, heard: Heard) -> None:
    instrument.serial_number.on_serial_number_event(heard)
    instrument.serial_number.write_serial_number(1)
    heard.wait_for(lambda: len(heard) == 1)
    assert heard.threads[0] != threading.get_ident()


def test_a_signal_comes_in_the_thread_that_causes_it(instrument: Instrument, heard: Heard) -> None:
    instrument.ulk_power.on_lo_power_changed(heard)
    instrument.ulk_power.lo_power = 1
    assert heard == [()] and heard.threads == [threading.get_ident()]


def test_nobody_is_told_after_closing(instrument: Instrument, heard: Heard) -> None:
    with instrument.serial_number.on_serial_number_event(heard) as subscription:
        assert not subscription.closed
    subscription.close()
    other = Heard()
    instrument.serial_number.on_serial_number_event(other)
    instrument.serial_number.write_serial_number(1)
    instrument.wait_until_quiet()
    assert subscription.closed and heard == [] and len(other) == 1


def test_letting_go_of_a_subscription_changes_nothing(instrument: Instrument, heard: Heard) -> None:
    instrument.serial_number.on_serial_number_event(heard)
    gc.collect()
    instrument.serial_number.write_serial_number(1)
    instrument.wait_until_quiet()
    assert len(heard) == 1


def test_a_callable_ends_itself_and_others_while_it_is_told(instrument: Instrument, heard: Heard) -> None:
    subscribe = instrument.memory_operations.on_notification1
    subscriptions: List[devicesservice.Subscription] = []

    def end_all(event: MemoryOperationEvent) -> None:
        heard(event)
        for each in subscriptions:
            each.close()
        subscribe(lambda event: None)

    subscriptions += [subscribe(end_all), subscribe(heard)]
    instrument.memory_operations.integrity_check()
    instrument.wait_until_quiet()
    assert len(heard) == 1, "of four notifications the first ended both"


def test_what_a_callable_raises_is_reported_and_others_are_told(
        instrument: Instrument, heard: Heard, monkeypatch: pytest.MonkeyPatch) -> None:
    reported: List[Any] = []
    monkeypatch.setattr(sys, "unraisablehook",
                        lambda args: reported.append((args.exc_type, str(args.exc_value), args.object)))

    def failing(event: SerialNumberEvent) -> None:
        raise LookupError("not in the list")

    instrument.serial_number.on_serial_number_event(failing)
    instrument.serial_number.on_serial_number_event(heard)
    instrument.serial_number.write_serial_number(1)
    instrument.wait_until_quiet()
    assert reported == [(LookupError, "not in the list", failing)]
    assert len(heard) == 1


def test_what_waits_for_the_instrument_is_refused_in_a_callback(instrument: Instrument, heard: Heard) -> None:
    temperature = instrument.temperature

    def use(event: SerialNumberEvent) -> None:
        heard(temperature.temperature)
        calls: List[Callable[[], object]] = [instrument.serial_number.serial_number, instrument.close,
                                             instrument.release_controls, lambda: instrument.lo_leakage]
        for call in calls:
            try:
                call()
                heard("was done")
            except RuntimeError as error:
                heard("waits" in str(error))

    instrument.serial_number.on_serial_number_event(use)
    instrument.serial_number.write_serial_number(1)
    instrument.wait_until_quiet()
    assert heard == [(23.0,), (True,), (True,), (True,), (True,)]


def test_what_is_no_callable_is_refused(instrument: Instrument) -> None:
    with pytest.raises(TypeError):
        instrument.temperature.on_temperatures_changed("print")  # type: ignore[arg-type]


def test_closing_ends_subscriptions_and_lets_go_of_callables(heard: Heard) -> None:
    instrument = devicesservice.open()

    class Caller:
        def __call__(self) -> None:
            instrument.present_controls

    caller = Caller()
    gone = weakref.ref(caller)
    subscription = instrument.temperature.on_temperatures_changed(caller)
    instrument.calibration_controller_1.on_unit_status_changed(caller)
    del caller
    instrument.close()
    assert subscription.closed and gone() is None
