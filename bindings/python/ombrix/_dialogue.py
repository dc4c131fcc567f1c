"""The windows of the client in which the library shows messages and asks."""

from __future__ import annotations

import atexit
from ctypes import byref
from typing import Any, Callable, Optional

from ._failures import check, mismatch, silent_callback
from ._library import Dialogue, InputFunction, MessageFunction, lib
from ._values import give

_message: Optional[Callable[[str, str], Any]] = None
_input: Optional[Callable[[str, str, str], Optional[str]]] = None


def dialogue(message: Optional[Callable[[str, str], Any]] = None,
             input: Optional[Callable[[str, str, str], Optional[str]]] = None) -> None:
    """Sets the message box and the input box of the whole process.

        ombrix.dialogue(message=lambda text, title: print(title, text),
                        input=lambda prompt, title, default: default)

    `message(text, title)` is called where the library shows a message, `input(prompt, title,
    default)` answers a question with a text; None counts as "". Without one, or with None, a
    message goes to standard error and a question is answered by "".
    """
    global _message, _input
    for name, function in (("message", message), ("input", input)):
        if function is not None and not callable(function):
            raise mismatch(f"{name} takes a callable")
    _message, _input = message, input
    if message is None and input is None:
        check(lib.set_dialogue(None, None))
        return
    functions = Dialogue(_show if message is not None else MessageFunction(),
                         _ask if input is not None else InputFunction())
    check(lib.set_dialogue(byref(functions), None))


def _text(chars: Optional[bytes]) -> str:
    return (chars or b"").decode("utf-8", "replace")


@MessageFunction
@silent_callback
def _show(_: Any, text: bytes, title: bytes) -> None:
    shown = _message
    if shown is not None:
        shown(_text(text), _text(title))


@InputFunction
@silent_callback
def _ask(_: Any, prompt: bytes, title: bytes, default: bytes, answer: Any) -> None:
    asked = _input
    if asked is not None:
        told = asked(_text(prompt), _text(title), _text(default))
        give(answer[0], "" if told is None else str(told))


@atexit.register
def _remove() -> None:
    """The library may outlive the interpreter, and must not call it then."""
    lib.set_dialogue(None, None)
