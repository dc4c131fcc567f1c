"""Values on their way between Python and the library."""

from __future__ import annotations

import datetime
from ctypes import byref, c_size_t, c_uint64, string_at
from typing import Any, Callable, Dict, Generic, Optional, Sequence, TypeVar

from ._failures import Failure, check, mismatch, raise_interrupt, raise_last
from ._handles import Held, adopt, borrow
from ._library import (BOOLEAN, BY_REFERENCE, DATE, DOUBLE, EMPTY, LONG, NULL, OBJECT, OWNED, TEXT,
                       Value, lib)

T = TypeVar("T")
ZERO_DATE = datetime.datetime(1899, 12, 30)
_call, _clear = lib.call, lib.clear


class Ref(Generic[T]):
    """An argument by reference: after the call `value` holds what the method left in it.

        amount = ombrix.Ref(250.0)
        obj.Convert(amount)
        print(amount.value)
    """

    __slots__ = ("value",)

    def __init__(self, value: T = None) -> None:  # type: ignore[assignment]
        self.value = value

    def __repr__(self) -> str:
        return f"Ref({self.value!r})"


def encode_text(text: str) -> bytes:
    """UTF-8, or a failure that says what is wrong."""
    try:
        return text.encode()
    except UnicodeEncodeError:
        raise Failure(5, "A text holds characters that UTF-8 does not have.") from None


# Each puts a Python value of one type into an empty Value.

def _put_text(target: Value, text: str) -> None:
    encoded = encode_text(text)
    target.type = TEXT
    target.chars = encoded
    target.length = len(encoded)


def _put_number(target: Value, number: float) -> None:
    target.type = DOUBLE
    target.number = number


def _put_whole(target: Value, number: int) -> None:
    if -0x80000000 <= number <= 0x7fffffff:
        target.type = LONG
        target.integer = number
        return
    try:
        _put_number(target, float(number))
    except OverflowError:
        raise Failure(6, "Overflow") from None


def _put_flag(target: Value, flag: bool) -> None:
    target.type = BOOLEAN
    target.integer = flag


def _put_null(target: Value, _: None) -> None:
    target.type = NULL


def _put_moment(target: Value, moment: datetime.datetime) -> None:
    if moment.tzinfo is not None:
        moment = moment.replace(tzinfo=None)
    since = moment - ZERO_DATE
    target.type = DATE
    target.seconds = since.days * 86400 + since.seconds


def _put_day(target: Value, day: datetime.date) -> None:
    _put_moment(target, datetime.datetime(day.year, day.month, day.day))


_writers: Dict[type, Callable[[Value, Any], None]] = {
    str: _put_text, float: _put_number, int: _put_whole, bool: _put_flag,
    type(None): _put_null, datetime.datetime: _put_moment, datetime.date: _put_day}
_bases = (str, float, int, datetime.datetime, datetime.date)


def encode(target: Value, value: Any) -> Optional[Held]:
    """Puts a value into an empty Value, which stays Python's to end. What is answered has to live
    as long as the Value is used."""
    writer = _writers.get(type(value))
    if writer is not None:
        writer(target, value)
        return None
    return _encode_other(target, value)


def _encode_other(target: Value, value: Any) -> Optional[Held]:
    for base in _bases:
        if isinstance(value, base):
            _writers[base](target, value)
            return None
    if not isinstance(value, Held):
        plain = _plain_number(value)
        if plain is not None:
            return encode(target, plain)
        value = Shared(value)
    put_object(target, value)
    return value


def put_object(target: Value, held: Held) -> None:
    target.type = OBJECT
    target.object = held._handle.value


def _plain_number(value: Any) -> Any:
    """Numbers of other kinds, such as a Decimal, by what they say of themselves."""
    if hasattr(value, "__index__"):
        return value.__index__()
    return float(value) if hasattr(value, "__float__") else None


class Shared(Held):
    """A handle for a Python object that the library may refer to, called by its members' names."""

    __slots__ = ()

    wrap: Callable[[Any], int]

    def __init__(self, thing: Any) -> None:
        self._hold(Shared.wrap(thing), "")


def decode(value: Value) -> Any:
    """What a Value holds that stays the library's."""
    if value.type == OBJECT:
        return borrow(value.object)
    return _plain(value)


def take(value: Value) -> Any:
    """What a Value holds that the library filled; the Value is ended."""
    if value.type == OBJECT:
        return adopt(value.object)
    try:
        return _plain(value)
    finally:
        if value.flags & OWNED:
            _clear(byref(value))


def _plain(value: Value) -> Any:
    kind = value.type
    if kind == TEXT:
        chars = value.chars
        if len(chars) != value.length:
            chars = string_at(value.address, value.length)
        return chars.decode("utf-8", "replace")
    if kind == DOUBLE:
        return value.number
    if kind == BOOLEAN:
        return value.integer != 0
    if kind == LONG:
        return value.integer
    if kind == DATE:
        return ZERO_DATE + datetime.timedelta(seconds=value.seconds)
    assert kind in (EMPTY, NULL)
    return None


def call(handle: c_uint64, name: bytes, arguments: Sequence[Any] = ()) -> Any:
    """Calls a method; what it leaves in arguments by reference goes into their `Ref`."""
    count = len(arguments)
    values = (Value * count)() if count else None
    kept = []
    for place, argument in enumerate(arguments):
        by_reference = isinstance(argument, Ref)
        kept.append(encode(values[place], argument.value if by_reference else argument))
        if by_reference:
            values[place].flags = BY_REFERENCE
    result = Value()
    status = _call(handle, name, values, c_size_t(count), byref(result))
    if status:
        raise_interrupt()
        raise_last()
    for place, argument in enumerate(arguments):
        if isinstance(argument, Ref):
            argument.value = take(values[place])
    answer = take(result)
    raise_interrupt()
    return answer


def give(target: Value, value: Any) -> None:
    """Puts an answer into a Value that is the library's from then on."""
    answer = Value()
    held = encode(answer, value)
    if answer.type == TEXT:
        check(lib.put_text(byref(target), answer.address, answer.length))
    elif held is not None:
        check(lib.put_object(byref(target), held._handle))
    else:
        target.type = answer.type
        target.content = answer.content


def encoded_name(name: Any, what: str = "a name") -> bytes:
    """A text for a function that reads it up to a zero character."""
    if not isinstance(name, str):
        raise mismatch(what + " takes a String")
    if "\0" in name:
        raise Failure(5, f"{what} takes no zero character.")
    return encode_text(name)
