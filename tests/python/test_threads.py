"""Any thread may use an instrument, and those that wait let the others run."""

import sys
import threading
import time
from concurrent.futures import ThreadPoolExecutor
from typing import List

import pytest

import devicesservice
from conftest import PATIENCE, Heard
from devicesservice import Instrument


def test_another_thread_runs_while_the_instrument_answers_late() -> None:
    """It counts; nobody takes the interpreter's lock there from a thread that does not give it."""
    with devicesservice.open(fault="serial-number.readSerialNumber=late", fault_delay=300_000) as instrument:
        serial = instrument.serial_number
        counted = 0
        is_done = threading.Event()

        def count() -> None:
            nonlocal counted
            while not is_done.is_set():
                counted += 1
                time.sleep(0)  # gives the lock

        counting = threading.Thread(target=count)
        counting.start()
        interval = sys.getswitchinterval()
        sys.setswitchinterval(1000)
        try:
            before = counted
            assert serial.serial_number() == 100001
            after = counted
        finally:
            sys.setswitchinterval(interval)
            is_done.set()
            counting.join(PATIENCE)
        assert after - before > 100


def test_threads_wait_for_their_answers_beside_each_other() -> None:
    with devicesservice.open(answers="later", delay=1000, order="shuffled") as instrument:
        memory, serial = instrument.memory_operations, instrument.serial_number
        with ThreadPoolExecutor(8) as threads:
            sizes = list(threads.map(lambda _: (len(memory.read()), serial.serial_number()), range(200)))
        assert sizes == [(65536, 100001)] * 200


def test_an_instrument_passes_from_thread_to_thread() -> None:
    with ThreadPoolExecutor(1) as other:
        instrument = other.submit(devicesservice.open).result(PATIENCE)
        instrument.lo_leakage.enabled = True
        assert other.submit(lambda: instrument.lo_leakage.enabled).result(PATIENCE)
        instrument.release_controls()
        other.submit(instrument.offer_controls).result(PATIENCE)
        other.submit(instrument.close).result(PATIENCE)
        assert instrument.closed


def test_threads_ask_for_a_control_at_the_same_time() -> None:
    for _ in range(20):
        with devicesservice.open() as instrument, ThreadPoolExecutor(4) as threads:
            heard = Heard()
            together = threading.Barrier(4)

            def subscribe(_: int) -> None:
                together.wait(PATIENCE)
                instrument.serial_number.on_serial_number_event(heard)

            list(threads.map(subscribe, range(4)))
            instrument.serial_number.write_serial_number(1)
            instrument.wait_until_quiet()
            assert len(heard) == 4, "all have the same control"


def test_an_instrument_ends_while_another_thread_notifies() -> None:
    """The end waits for the notification, which waits for the interpreter's lock."""
    for _ in range(50):
        instrument = devicesservice.open()
        heard = Heard()
        instrument.memory_operations.on_notification1(heard)
        memory = instrument.memory_operations
        memory.integrity_check()  # its notifications come on another thread
        del memory
        instrument.close()
        before = len(heard)
        assert before <= 4
    for _ in range(50):
        instrument = devicesservice.open()
        instrument.serial_number.on_serial_number_event(lambda event: None)
        instrument.serial_number.write_serial_number(1)
        del instrument  # closes it


def test_controls_come_and_go_while_threads_use_them() -> None:
    with devicesservice.open() as instrument:
        stop = threading.Event()
        wrong: List[object] = []

        def use() -> None:
            while not stop.is_set():
                try:
                    if instrument.serial_number.serial_number() != 100001:
                        wrong.append("number")
                except devicesservice.Error:
                    pass
                if instrument.temperature.temperature != 23.0:
                    wrong.append("temperature")

        instrument.serial_number, instrument.temperature  # found before the controls go
        users = [threading.Thread(target=use) for _ in range(3)]
        for user in users:
            user.start()
        for _ in range(50):
            instrument.release_controls()
            instrument.offer_controls()
        stop.set()
        for user in users:
            user.join(PATIENCE)
        assert wrong == []


def test_the_last_reference_may_go_in_a_callback(monkeypatch: pytest.MonkeyPatch) -> None:
    """Nobody can wait there for the end of the instrument, which comes by itself."""
    reported: List[object] = []
    monkeypatch.setattr(sys, "unraisablehook", reported.append)
    told = threading.Event()
    held: List[Instrument] = [devicesservice.open()]
    serial = [held[0].serial_number]

    def let_go(event: object) -> None:
        held.clear()
        serial.clear()
        told.set()

    serial[0].on_serial_number_event(let_go)
    held[0].notify("serial_number")
    assert told.wait(PATIENCE)
    assert reported == []
