"""What the tests share: a simulated instrument, and waiting for what must happen."""

import threading
from typing import Any, Callable, Iterator, List

import pytest

import devicesservice
from devicesservice import Instrument

PATIENCE = 60.0  # for what must happen; nothing waits so long that goes well


class Heard(List[Any]):
    """What a callback was told, and from which threads."""

    def __init__(self) -> None:
        super().__init__()
        self.threads: List[int] = []
        self._changed = threading.Condition()

    def __call__(self, *arguments: object) -> None:
        with self._changed:
            self.append(arguments)
            self.threads.append(threading.get_ident())
            self._changed.notify_all()

    def wait_for(self, is_reached: Callable[[], bool]) -> None:
        with self._changed:
            assert self._changed.wait_for(is_reached, PATIENCE), f"only {list(self)} was told"


@pytest.fixture(autouse=True)
def without_environment(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.delenv("DEVICESSERVICE_PROVIDER", raising=False)
    monkeypatch.delenv("DEVICESSERVICE_PROVIDER_PATH", raising=False)


@pytest.fixture
def instrument() -> Iterator[Instrument]:
    with devicesservice.open() as opened:
        yield opened


@pytest.fixture
def heard() -> Heard:
    return Heard()
