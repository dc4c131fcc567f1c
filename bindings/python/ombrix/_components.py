"""Python objects that the library uses: components under a name, and grids."""

from __future__ import annotations

import atexit
import inspect
import threading
from ctypes import c_void_p
from typing import Any, Callable, Dict, List, Optional, Tuple

from ._failures import NO_MEMBER, Failure, callback, check, mismatch, silent_callback
from ._handles import Held, borrow, class_name_of, lent, made, own
from ._library import (CallFunction, DestroyFunction, FactoryFunction, Functions, GetFunction,
                       LetFunction, SetFunction, lib)
from ._values import Shared, decode, encoded_name, give


class GridControl:
    """A grid of the client's own, such as one on a screen: subclass it and give it `Rows` and
    the two item methods. It is assigned like an `ombrix.Grid`:

        class Screen(ombrix.GridControl):
            def __init__(self, widget): self.widget = widget
            @property
            def Rows(self): return self.widget.row_count()
            @Rows.setter
            def Rows(self, count): self.widget.set_row_count(count)
            def __getitem__(self, cell): return self.widget.text(*cell)
            def __setitem__(self, cell, text): self.widget.set_text(*cell, text)

        lpo.GridName = Screen(widget)

    Any object with these members will do, whatever its class. In place of the item methods it may
    have `TextMatrix(row, col)`, which is called with the text as a third argument to write. Where
    it has `ValueMatrix(row, col)` that reads a cell as a number, in place of the library's reading
    of the text. Where it has `Cell(setting, row, col, row2, col2, value)` that sets an attribute of
    cells; 13 is bold.
    """

    Rows: int = 0

    def __getitem__(self, cell: Tuple[int, int]) -> str:
        raise NotImplementedError("A grid reads its cells with __getitem__.")

    def __setitem__(self, cell: Tuple[int, int], text: str) -> None:
        raise NotImplementedError("A grid writes its cells with __setitem__.")


def _spelled(thing: Any, member: str) -> Optional[str]:
    """The attribute that a member's name stands for, without regard to case if need be."""
    if member in getattr(thing, "__dict__", ()) or hasattr(type(thing), member):
        return member
    lower = member.lower()
    return next((name for name in dir(thing) if name.lower() == lower), None)


def _lacking(thing: Any, member: str) -> Failure:
    return Failure(NO_MEMBER, "Object doesn't support this property or method: "
                              f"{type(thing).__name__}.{member}")


def _attribute(thing: Any, member: str) -> Any:
    name = _spelled(thing, member)
    if name is not None:
        return getattr(thing, name)
    try:
        return getattr(thing, member)
    except AttributeError:
        raise _lacking(thing, member) from None


def _assign(thing: Any, member: str, value: Any) -> None:
    name = _spelled(thing, member)
    if name is not None:
        setattr(thing, name, value)
        return
    try:
        setattr(thing, member, value)
    except AttributeError:
        raise _lacking(thing, member) from None


def _decoded(values: Any, count: int) -> List[Any]:
    return [decode(values[place]) for place in range(count)]


def _is_cell(member: str, thing: Any) -> bool:
    return member.lower() == "textmatrix" and _spelled(thing, member) is None


@callback
def _get(key: int, member: bytes, arguments: Any, count: int, result: Any) -> None:
    thing, name = own[key], member.decode()
    indices = _decoded(arguments, count)
    if indices and _is_cell(name, thing):
        answer = thing[tuple(indices)]
    else:
        answer = _attribute(thing, name)
        if indices or inspect.ismethod(answer):
            answer = answer(*indices)
    give(result[0], answer)


@callback
def _let(key: int, member: bytes, arguments: Any, count: int, value: Any) -> None:
    thing, name = own[key], member.decode()
    indices, content = _decoded(arguments, count), decode(value[0])
    if not indices:
        _assign(thing, name, content)
    elif _is_cell(name, thing):
        thing[tuple(indices)] = content
    elif name.lower() != "cell" or _spelled(thing, name):
        # A grid that shows no attributes of cells has none to set.
        _attribute(thing, name)(*indices, content)


@callback
def _set(key: int, member: bytes, handle: int) -> None:
    _assign(own[key], member.decode(), borrow(handle))


@callback
def _call(key: int, member: bytes, arguments: Any, count: int, result: Any) -> None:
    thing, name = own[key], member.decode()
    method = _attribute(thing, name)
    if not callable(method):
        raise _lacking(thing, name)
    give(result[0], method(*_decoded(arguments, count)))


@silent_callback
def _destroy(key: int) -> None:
    own.drop(key)


@callback
def _make(key: int, handle: Any) -> None:
    thing = own[key]()
    if isinstance(thing, Held):
        lent.add(class_name_of(thing._handle.value))
        handle[0] = made(lib.retain, thing._handle)
    else:
        handle[0] = _wrap(thing)


# One set of C functions serves all objects, told apart by their keys, so that the library can call
# them for as long as the module lives.
_destroy_function = DestroyFunction(_destroy)
_factory_function = FactoryFunction(_make)
_functions = Functions(GetFunction(_get), LetFunction(_let), SetFunction(_set),
                       CallFunction(_call), _destroy_function)


def _wrap(thing: Any) -> int:
    key = own.add(thing)
    try:
        name = own.class_name(thing, key).encode("utf-8", "replace")
        return made(lib.wrap, name, _functions, c_void_p(key))
    except BaseException:
        own.drop(key)
        raise


Shared.wrap = staticmethod(_wrap)

_registrations: Dict[str, List[int]] = {}
_lock = threading.RLock()


def register(name: str, factory: Callable[[], Any]) -> None:
    """Puts a component under a name, in place of what stood there: `factory()` makes the object
    whenever the library, or `ombrix.create`, wants one.

        class Counter:
            def Get_Last_Counter(self, connection, temporary=False):
                self.NextDocumentNo = 4711
                return True
            def Increase_Counter(self, temporary=False):
                return True

        ombrix.register("OmbrixSystem.CounterTransaction", Counter)

    The library sets attributes of the object, reads them and calls its methods. Arguments are plain
    values, a connection comes as `ombrix.Connection`. A method that raises `Failure` raises it in
    the library; any other exception becomes a failure that names it, and goes to the log "ombrix"
    with its traceback.
    """
    encoded = encoded_name(name)
    if not callable(factory):
        raise mismatch("factory takes a callable")
    key = own.add(factory)
    try:
        registration = made(lib.register, encoded, _factory_function, c_void_p(key),
                            _destroy_function)
    except BaseException:
        own.drop(key)
        raise
    with _lock:
        _registrations.setdefault(name.lower(), []).append(registration)


def unregister(name: str) -> None:
    """Brings back what stood under a name before the last `register` of it."""
    encoded_name(name)
    with _lock:
        stack = _registrations.get(name.lower())
        if not stack:
            raise Failure(5, f"Nothing is registered under {name!r}.")
        registration = stack.pop()
    check(lib.unregister(registration))


@atexit.register
def _unregister_all() -> None:
    """The library may outlive the interpreter, and must not call it then."""
    with _lock:
        for stack in _registrations.values():
            while stack:
                lib.unregister(stack.pop())
