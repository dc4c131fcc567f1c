"""What holds a handle of the library, and how a handle becomes a Python object again."""

from __future__ import annotations

import atexit
import difflib
import itertools
import weakref
from ctypes import byref, c_int32, c_uint64, string_at
from typing import Any, Callable, Dict, Iterable, NoReturn, Optional, Set, Type

from ._failures import check
from ._library import Value, lib


def no_member(class_name: str, name: str, members: Iterable[str]) -> AttributeError:
    """The error for a wrong name, with the near one that exists."""
    spelled = {member.lower(): member for member in members}
    near = difflib.get_close_matches(name.lower(), spelled, n=1, cutoff=0.5)
    hint = f"; did you mean {spelled[near[0]]!r}?" if near else ""
    return AttributeError(f"{class_name} has no member {name!r}{hint}")


# A handle that no object ever has. 0 is no object at all, which may be set as one.
_RELEASED = 2**64 - 1


class Held:
    """Something of the library's, released when nothing refers to it any more."""

    __slots__ = ("_handle", "__weakref__")
    _handle: c_uint64

    def _hold(self, handle: int, class_name: str) -> None:
        object.__setattr__(self, "_handle", c_uint64(handle))
        living = _living.get(class_name)
        if living is None:
            living = _living.setdefault(class_name, weakref.WeakValueDictionary())
        living[handle] = self

    @classmethod
    def _adopted(cls, handle: int, class_name: str) -> "Held":
        self = cls.__new__(cls)
        self._hold(handle, class_name)
        return self

    def _release(self, release: Callable[[int], int] = lib.release) -> None:
        handle = self._handle.value
        if handle != _RELEASED:
            self._handle.value = _RELEASED
            release(handle)

    def __del__(self) -> None:
        try:
            self._release()
        except AttributeError:
            pass  # It was never held: what should have made it raised.

    @classmethod
    def _public(cls) -> Iterable[str]:
        return [name for name in dir(cls) if not name.startswith("_")]

    @classmethod
    def _spelled(cls, name: str) -> Optional[str]:
        """The member that a name stands for when case is not looked at."""
        return next((each for each in cls._public() if each.lower() == name.lower()), None)

    # The fixed members of a connection or a grid; an object has members of its own instead.
    def __getattr__(self, name: str) -> Any:
        spelled = None if name.startswith("_") else self._spelled(name)
        if spelled is None or spelled == name:
            raise no_member(type(self).__name__, name, self._public())
        return getattr(self, spelled)

    def __setattr__(self, name: str, value: Any) -> None:
        if name[0] == "_":
            object.__setattr__(self, name, value)
            return
        spelled = self._spelled(name)
        if spelled is None and not hasattr(self, "__dict__"):
            raise no_member(type(self).__name__, name, self._public())
        known = getattr(type(self), spelled or name, None)
        if isinstance(known, property) and known.fset is None:
            raise AttributeError(f"{type(self).__name__}.{spelled} can be read but not set")
        object.__setattr__(self, spelled or name, value)

    def __dir__(self) -> Iterable[str]:
        return self._public()

    def __reduce_ex__(self, protocol: Any) -> NoReturn:
        raise TypeError(f"{type(self).__name__} can be neither copied nor pickled")


# By class name and handle. An object that comes back from the library is the Python object that
# stands for it already, if there is one.
_living: Dict[str, "weakref.WeakValueDictionary[int, Held]"] = {}


@atexit.register
def _release_all() -> None:
    """The end of an object may call back into Python, so it comes while there is one."""
    for living in list(_living.values()):
        for reference in living.valuerefs():
            held = reference()
            if held is not None:
                held._release()


# The class that stands for objects of a class name; "" for all others.
kinds: Dict[str, Type[Held]] = {}

# The class names of what factories in Python gave that was the library's already.
lent: Set[str] = set()


class OwnObjects:
    """The Python objects that the library refers to, by the key that it holds."""

    def __init__(self) -> None:
        # What a dict and a count do in one step needs no lock, and a lock here could be taken
        # again by a finaliser that runs while it is held.
        self._objects: Dict[int, Any] = {}
        self._keys = itertools.count(1)
        self._mark = f"@{id(self):x}."

    def __len__(self) -> int:
        return len(self._objects)

    def __getitem__(self, key: int) -> Any:
        return self._objects[key]

    def add(self, thing: Any) -> int:
        key = next(self._keys)
        self._objects[key] = thing
        return key

    def drop(self, key: int) -> None:
        self._objects.pop(key, None)

    def class_name(self, thing: Any, key: int) -> str:
        return f"Python.{type(thing).__name__}{self._mark}{key}"

    def find(self, class_name: str) -> Any:
        """The object whose class name this is; None when it is none of Python's."""
        _, mark, key = class_name.rpartition(self._mark)
        return self._objects.get(int(key)) if mark else None


own = OwnObjects()


def made(make: Callable[..., int], *arguments: Any) -> int:
    """The handle that a function of the library puts into its last argument."""
    handle = c_uint64()
    check(make(*arguments, byref(handle)))
    return handle.value


def class_name_of(handle: int) -> str:
    name = Value()
    check(lib.class_name(handle, byref(name)))
    text = string_at(name.address, name.length).decode("utf-8", "replace")
    lib.clear(byref(name))
    return text


def adopt(handle: int, new: bool = False) -> Any:
    """The Python object for a handle, which it takes over; None for "Nothing". A new object has
    none yet, unless a factory in Python lent its own."""
    if handle == 0:
        return None
    class_name = class_name_of(handle)
    known = own.find(class_name)
    if known is None and (not new or class_name in lent):
        known = _known(handle, class_name)
    if known is not None:
        lib.release(handle)
        return known
    # pylint: disable=protected-access
    return kinds.get(class_name, kinds[""])._adopted(handle, class_name)


def borrow(handle: int) -> Any:
    """As `adopt`, for a handle that stays the library's."""
    return adopt(made(lib.retain, handle)) if handle else None


def _known(handle: int, class_name: str) -> Optional[Held]:
    same = c_int32()
    living = _living.get(class_name)
    for reference in () if living is None else living.valuerefs():
        known = reference()
        if known is None:
            continue
        if lib.same(handle, known._handle, byref(same)) == 0 and same.value:
            return known
    return None
