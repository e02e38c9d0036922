"""Nothing is left behind, and the interpreter ends well whatever is open."""

import gc
import os
import pathlib
import subprocess
import sys
import threading

import pytest

import devicesservice

_PAGE = os.sysconf("SC_PAGE_SIZE")


def resident_bytes() -> int:
    gc.collect()
    return int(pathlib.Path("/proc/self/statm").read_text().split()[1]) * _PAGE


def test_controls_subscriptions_and_arrays_leave_nothing_behind() -> None:
    with devicesservice.open() as instrument:
        def once() -> None:
            subscription = instrument.serial_number.on_serial_number_event(lambda event: None)
            signal = instrument.ulk_power.on_lo_power_changed(lambda: None)
            instrument.ulk_power.lo_power = 1
            subscription.close()
            signal.close()
            instrument.yq_synthesis.supported_ifs
            instrument.calibration_controller_1.lock()
            with pytest.raises(ValueError):
                instrument.ulk_power.lo_power = 256

        for _ in range(5_000):
            once()
        before = resident_bytes()
        for _ in range(100_000):
            once()
        assert resident_bytes() - before < 2_000_000, "20 bytes for each"


def test_instruments_leave_nothing_behind() -> None:
    def once() -> None:
        with devicesservice.open(memory_size=64) as instrument:
            for name in instrument.present_controls:
                getattr(instrument, name)
            instrument.temperature.on_temperatures_changed(lambda: None)

    for _ in range(200):
        once()
    before, threads = resident_bytes(), threading.active_count()
    for _ in range(2_000):
        once()
    assert resident_bytes() - before < 2_000_000, "1000 bytes for each"
    assert threading.active_count() == threads


@pytest.mark.parametrize("script", [
    "instrument = d.open()",
    "instrument = d.open(); instrument.serial_number.on_serial_number_event(print)",
    "d.open().serial_number.on_serial_number_event(lambda e: None); import gc; gc.disable()",
    # Notifications come all the time while the interpreter ends.
    """
import threading
instrument = d.open()
memory = instrument.memory_operations
memory.on_notification1(lambda event: None)
def notify():
    while True:
        try:
            memory.integrity_check()
        except d.Error:
            pass
threading.Thread(target=notify, daemon=True).start()
memory.integrity_check()
""",
    # What raises at the end finds a closed instrument.
    "import atexit; instrument = d.open(); atexit.register(lambda: instrument.temperature.temperature)",
    "class Late:\n    def __del__(self): self.i.close()\nlate = Late(); late.i = d.open(); late.cycle = late",
])
def test_the_interpreter_ends_with_instruments_open(script: str) -> None:
    done = subprocess.run([sys.executable, "-B", "-c", f"import devicesservice as d\n{script}\nprint('reached')"],
                          capture_output=True, text=True, timeout=120, check=False)
    assert (done.returncode, done.stdout, done.stderr) == (0, "reached\n", "")
