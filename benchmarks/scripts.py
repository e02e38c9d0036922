"""Prints what a getter costs from Python and from C++, on the simulated instrument.

  scripts.py PROGRAM    where PROGRAM is getter-benchmark
"""

import subprocess
import sys
import timeit

import devicesservice

CALLS, ROUNDS = 200_000, 5


class Plain:
    @property
    def enabled(self) -> bool:
        return False


def nanoseconds(statement, **names):
    return min(timeit.repeat(statement, globals=names, number=CALLS, repeat=ROUNDS)) / CALLS * 1e9


with devicesservice.open() as instrument:
    module = nanoseconds("control.enabled", control=instrument.lo_leakage)
    plain = nanoseconds("control.enabled", control=Plain())
adapter = float(subprocess.run(sys.argv[1:], stdout=subprocess.PIPE, text=True, check=True).stdout)
print(f"a getter from Python: {module:.0f} ns; of the adapter in C++: {adapter:.0f} ns; "
      f"{module / adapter:.1f} times as long, {module / plain:.1f} times a property in Python alone ({plain:.0f} ns)")
