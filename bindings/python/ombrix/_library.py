"""Finds the shared library, loads it and tells ctypes what its functions take."""

from __future__ import annotations

import ctypes
import os
import sys
from ctypes import (CFUNCTYPE, POINTER, c_char_p, c_double, c_int32, c_int64, c_size_t, c_uint64,
                    c_void_p)
from pathlib import Path
from typing import Iterator, List

OK = 0
NO_MEMBER_STATUS = -5
CAN_GET, CAN_LET, CAN_SET, CAN_CALL = 1, 2, 4, 8
EMPTY, NULL, BOOLEAN, LONG, DOUBLE, DATE, TEXT, OBJECT = range(8)
BY_REFERENCE, OWNED = 1, 2
_NAMES = {"win32": "ombrixpurchase.dll", "darwin": "libombrixpurchase.dylib"}


class _Text(ctypes.Structure):
    _fields_ = [("chars", c_char_p), ("length", c_int64)]


class _Content(ctypes.Union):
    _anonymous_ = ("text",)
    _fields_ = [("integer", c_int32), ("number", c_double), ("seconds", c_int64),
                ("text", _Text), ("address", c_void_p), ("object", c_uint64)]


class Value(ctypes.Structure):
    """The tagged union of the C interface. `address` is `chars` without its end at a zero."""

    _anonymous_ = ("content",)
    _fields_ = [("type", c_int32), ("flags", c_int32), ("content", _Content)]


NO_ARGUMENTS = (None, c_size_t(0))
TWO = c_size_t(2)


class MemberInfo(ctypes.Structure):
    _fields_ = [("number", c_int32), ("access", c_int32), ("name", ctypes.c_char * 64),
                ("type", ctypes.c_char * 32)]


class Mark(ctypes.Structure):
    _fields_ = [(name, c_int32) for name in ("setting", "row", "column", "row2", "column2")]


VALUES = POINTER(Value)
GetFunction = CFUNCTYPE(c_int32, c_void_p, c_char_p, VALUES, c_size_t, VALUES)
LetFunction = CFUNCTYPE(c_int32, c_void_p, c_char_p, VALUES, c_size_t, VALUES)
SetFunction = CFUNCTYPE(c_int32, c_void_p, c_char_p, c_uint64)
CallFunction = CFUNCTYPE(c_int32, c_void_p, c_char_p, VALUES, c_size_t, VALUES)
DestroyFunction = CFUNCTYPE(None, c_void_p)
FactoryFunction = CFUNCTYPE(c_int32, c_void_p, POINTER(c_uint64))
MessageFunction = CFUNCTYPE(None, c_void_p, c_char_p, c_char_p)
InputFunction = CFUNCTYPE(None, c_void_p, c_char_p, c_char_p, c_char_p, VALUES)


class Functions(ctypes.Structure):
    _fields_ = [("get", GetFunction), ("let", LetFunction), ("set", SetFunction),
                ("call", CallFunction), ("destroy", DestroyFunction)]


class Dialogue(ctypes.Structure):
    _fields_ = [("message", MessageFunction), ("input", InputFunction),
                ("destroy", DestroyFunction)]


# Pointers to values are void here: ctypes then takes packed bytes as well as its own structures.
# Converting to a declared type is most of what a call costs. The few functions that run for every
# property declare none: their arguments are ctypes objects, bytes, and None for a null pointer.
_UNDECLARED = ("get", "let", "call")
_PROTOTYPES = {
    "version": (c_char_p,),
    "failure_number": (c_int32,),
    "failure_text": (c_char_p,),
    "failure_hint": (c_char_p,),
    "clear": (None, c_void_p),
    "put_text": (c_int32, c_void_p, c_void_p, c_int64),
    "put_object": (c_int32, c_void_p, c_uint64),
    "create": (c_int32, c_char_p, c_void_p),
    "classes": (c_int32, c_void_p),
    "retain": (c_int32, c_uint64, c_void_p),
    "release": (c_int32, c_uint64),
    "same": (c_int32, c_uint64, c_uint64, c_void_p),
    "set": (c_int32, c_uint64, c_char_p, c_uint64),
    "class_name": (c_int32, c_uint64, c_void_p),
    "member_count": (c_int32, c_uint64, c_void_p),
    "member": (c_int32, c_uint64, c_size_t, c_void_p),
    "connection_new": (c_int32, c_void_p),
    "connection_open": (c_int32, c_char_p, c_void_p),
    "create_schema": (c_int32, c_uint64),
    "grid_new": (c_int32, c_int32, c_int32, c_void_p),
    "grid_size": (c_int32, c_uint64, c_void_p, c_void_p),
    "grid_fill": (c_int32, c_uint64, c_void_p, c_size_t, c_char_p),
    "grid_mark_count": (c_int32, c_uint64, c_void_p),
    "grid_mark": (c_int32, c_uint64, c_size_t, c_void_p, c_void_p),
    "wrap": (c_int32, c_char_p, POINTER(Functions), c_void_p, c_void_p),
    "register": (c_int32, c_char_p, FactoryFunction, c_void_p, DestroyFunction, c_void_p),
    "unregister": (c_int32, c_uint64),
    "raise": (c_int32, c_int32, c_char_p),
    "set_dialogue": (c_int32, POINTER(Dialogue), c_void_p),
}


def _candidates() -> Iterator[Path]:
    name = _NAMES.get(sys.platform, "libombrixpurchase.so")
    package = Path(__file__).resolve().parent
    yield package / name
    if len(package.parents) > 2:
        for build in ("release", "debug", "sanitize"):
            yield package.parents[2] / "build" / build / name


def _refusal(path: Path) -> str:
    """Why the library at a path is passed over, or ""."""
    if not path.exists():
        return "not there"
    if path.parent.name == "sanitize" and not hasattr(ctypes.CDLL(None), "__asan_init"):
        # Its runtime would end the process that loads it late.
        return "needs the sanitizer's runtime, named in LD_PRELOAD"
    return ""


def _load() -> ctypes.CDLL:
    named = os.environ.get("OMBRIX_LIBRARY")
    if named:
        try:
            return ctypes.CDLL(named)
        except OSError as error:
            raise ImportError(f"OMBRIX_LIBRARY names a library that cannot be loaded, {named}: "
                              f"{error}") from None
    tried: List[str] = []
    for path in _candidates():
        refusal = _refusal(path)
        if not refusal:
            try:
                return ctypes.CDLL(str(path))
            except OSError as error:
                refusal = str(error)
        tried.append(f"\n  {path}: {refusal}")
    raise ImportError("The shared library of ombrix was not found. Build it, put it beside the "
                      "package, or name it in OMBRIX_LIBRARY. Tried:" + "".join(tried))


class Library:
    """The functions of the C interface, without their prefix."""

    def __init__(self) -> None:
        loaded = _load()
        self.path: str = loaded._name
        for name, (answer, *parameters) in _PROTOTYPES.items():
            function = loaded["ombrix_" + name]
            function.restype = answer
            function.argtypes = parameters
            setattr(self, name, function)
        for name in _UNDECLARED:
            setattr(self, name, loaded["ombrix_" + name])


lib = Library()
