"""The one exception of the package, and how failures cross into and out of the library."""

from __future__ import annotations

import functools
import logging
import threading
from typing import Any, Callable, Dict, NoReturn

from ._library import OK, lib

TYPE_MISMATCH, NO_MEMBER, SUBSCRIPT, CALLBACK_FAILED = 13, 438, 9, 440
_log = logging.getLogger("ombrix")
_interrupts: Dict[int, BaseException] = {}


class Failure(Exception):
    """A failure that a class does not trap, or misuse of this package.

    `number` and `description` tell what is wrong. A component raises one to raise that failure in
    the library:

        raise ombrix.Failure(5, "The counter is locked.")
    """

    def __init__(self, number: int, description: str = "") -> None:
        super().__init__(number, description)
        self.number = int(number)
        self.description = str(description)

    def __str__(self) -> str:
        return f"{self.description} ({self.number})"


def mismatch(what: str) -> Failure:
    return Failure(TYPE_MISMATCH, "Type mismatch: " + what)


def raise_last() -> NoReturn:
    """Raises what the library remembers of the call that just failed."""
    number = lib.failure_number()
    text = lib.failure_text().decode("utf-8", "replace")
    hint = lib.failure_hint().decode("utf-8", "replace")
    raise Failure(number, f"{text}: {hint}" if hint else text)


def check(status: int) -> None:
    if status:
        raise_last()


def raise_interrupt() -> None:
    """An interrupt that struck inside a callback goes on where the library returns to Python."""
    if _interrupts:
        interrupt = _interrupts.pop(threading.get_ident(), None)
        if interrupt is not None:
            raise interrupt


def _tell(number: int, description: str) -> int:
    if number == 0 or not -2**31 <= number < 2**31:
        number = CALLBACK_FAILED
    getattr(lib, "raise")(number, description.encode("utf-8", "backslashreplace"))
    return -1


def callback(body: Callable[..., Any]) -> Callable[..., Any]:
    """Makes a function fit to be called by the library: it answers a status and never raises."""

    @functools.wraps(body)
    def run(*arguments: Any) -> int:
        try:
            body(*arguments)
            return OK
        except Failure as failure:
            return _tell(failure.number, failure.description)
        except Exception as fault:  # pylint: disable=broad-except
            # The library keeps one line of it; where it happened would be lost.
            _log.error("An exception left a callback", exc_info=True)
            return _tell(CALLBACK_FAILED, f"{type(fault).__name__}: {fault}")
        except BaseException as interrupt:  # pylint: disable=broad-except
            _interrupts[threading.get_ident()] = interrupt
            return _tell(CALLBACK_FAILED, type(interrupt).__name__)

    return run


def silent_callback(body: Callable[..., Any]) -> Callable[..., None]:
    """As `callback`, for a function that answers nothing: no failure of it goes anywhere else."""

    @callback
    def run(*arguments: Any) -> None:
        try:
            body(*arguments)
        except Failure:
            _log.error("A failure left a callback that cannot fail", exc_info=True)

    @functools.wraps(body)
    def answer_nothing(*arguments: Any) -> None:
        run(*arguments)

    return answer_nothing
