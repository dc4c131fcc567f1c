"""The line grid between a client and a class."""

from __future__ import annotations

import operator
import struct
from ctypes import byref, c_int32, c_size_t
from typing import Any, List, Mapping, Optional, Tuple

from ._failures import SUBSCRIPT, Failure, check, mismatch, raise_last
from ._handles import Held, kinds, made
from ._library import LONG, NO_ARGUMENTS, TWO, Mark, Value, lib
from ._values import encode, encode_text, take

# Two Values of type Long in a row: packing them costs a third of filling two structures.
_pack_longs = struct.Struct("=" + "iiiiq" * 2).pack
_pack_cell = struct.Struct("=iii").pack
_fill, _ONE = lib.grid_fill, c_size_t(1)


class Grid(Held):
    """A grid in memory, of so many rows (the heading included) and columns.

        grid = ombrix.Grid(rows=20, cols=40)
        grid[1, 7] = 10                # a number becomes its general text
        print(grid[1, 7])              # "10"
        grid.fill(1, {1: "1002", 7: 10, 15: "AA01GL5000"})

    Row 0 is the heading, lines begin in row 1. Outside the grid both raise `Failure` 9.
    """

    # Whether it was made here; another grid has no more than the members of one.
    __slots__ = ("_in_memory",)

    def __init__(self, rows: int, cols: int) -> None:
        self._hold(made(lib.grid_new, _long(rows), _long(cols)), "Grid")
        self._in_memory = True

    def _hold(self, handle: int, class_name: str) -> None:
        super()._hold(handle, class_name)
        self._in_memory = False

    def __getitem__(self, cell: Tuple[int, int]) -> str:
        return self._read(b"TextMatrix", cell)

    def __setitem__(self, cell: Tuple[int, int], value: Any) -> None:
        text = value if type(value) is str else _plain_text(value)
        if text is None or not self._in_memory:
            self._let(b"TextMatrix", _pair(*_whole(cell)), TWO, value)
            return
        encoded = encode_text(text)
        try:
            packed = _pack_cell(*cell, len(encoded))
        except (TypeError, struct.error):
            packed = _pack_cell(*_whole(cell), len(encoded))
        if _fill(self._handle, packed, _ONE, encoded):
            raise_last()

    def fill(self, row: int, cells: Mapping[int, Any]) -> None:
        """Writes many cells of a row, by their columns, in one call. A cell that is refused ends
        it; those before it are written."""
        texts, packed = [], []
        for column, value in cells.items():
            text = value if type(value) is str else _plain_text(value)
            if text is None or not self._in_memory:
                self._fill(packed, texts)
                texts, packed = [], []
                self[row, column] = value
                continue
            texts.append(encode_text(text))
            packed.append(_pack_cell(*_whole((row, column)), len(texts[-1])))
        self._fill(packed, texts)

    def _fill(self, packed: List[bytes], texts: List[bytes]) -> None:
        check(_fill(self._handle, b"".join(packed), c_size_t(len(texts)), b"".join(texts)))

    __iter__ = None

    @property
    def Rows(self) -> int:
        """How many rows there are, the heading included. Rows that stay keep their texts."""
        return self._size()[0]

    @Rows.setter
    def Rows(self, count: int) -> None:
        self._let(b"Rows", *NO_ARGUMENTS, count)

    @property
    def Cols(self) -> int:
        """How many columns there are."""
        return self._size()[1]

    def TextMatrix(self, row: int, col: int) -> str:
        """The text of a cell, as `grid[row, col]`."""
        return self[row, col]

    def ValueMatrix(self, row: int, col: int) -> float:
        """A cell as a number: blanks around it, a sign, thousands separators, a decimal point and
        an exponent are read; any other text is 0."""
        return self._read(b"ValueMatrix", (row, col))

    def Cell(self, setting: int, row: int, col: int, row2: int, col2: int, value: Any) -> None:
        """Sets an attribute of a range of cells; 13 is bold. `marks` tells them."""
        indices = (Value * 5)()
        for place, index in enumerate((setting, row, col, row2, col2)):
            indices[place].type = LONG
            indices[place].integer = _long(index)
        self._let(b"Cell", indices, c_size_t(5), value)

    @property
    def marks(self) -> List[Tuple[int, int, int, int, int, Any]]:
        """The settings that were made by `Cell`, as (setting, row, col, row2, col2, value)."""
        count = c_size_t()
        check(lib.grid_mark_count(self._handle, byref(count)))
        return [self._mark(place) for place in range(count.value)]

    def __repr__(self) -> str:
        try:
            return "<Grid rows={} cols={}>".format(*self._size())
        except Failure:
            return "<Grid released>"

    def _read(self, member: bytes, cell: Tuple[int, int]) -> Any:
        result = Value()
        check(lib.get(self._handle, member, _pair(*_whole(cell)), TWO, byref(result)))
        return take(result)

    def _let(self, member: bytes, indices: Any, count: c_size_t, value: Any) -> None:
        target = Value()
        kept = encode(target, value)
        check(lib.let(self._handle, member, indices, count, byref(target)))
        del kept

    def _size(self) -> Tuple[int, int]:
        rows, columns = c_int32(), c_int32()
        check(lib.grid_size(self._handle, byref(rows), byref(columns)))
        return rows.value, columns.value

    def _mark(self, place: int) -> Tuple[int, int, int, int, int, Any]:
        mark, value = Mark(), Value()
        check(lib.grid_mark(self._handle, place, byref(mark), byref(value)))
        return mark.setting, mark.row, mark.column, mark.row2, mark.column2, take(value)


kinds["Grid"] = Grid


def _pair(row: int, column: int) -> bytes:
    return _pack_longs(LONG, 0, row, 0, 0, LONG, 0, column, 0, 0)


def _plain_text(number: Any) -> Optional[str]:
    """The general text of a number where Python's own is the same; None leaves it to the library,
    which takes longer."""
    kind = type(number)
    if kind is int and -10**15 < number < 10**15:
        return str(number)
    if kind is float:
        text = repr(number + 0.0)  # without the sign of a zero
        if len(text) < 17 and "e" not in text and "n" not in text:
            return text[:-2] if text.endswith(".0") else text
    return None


def _whole(cell: Any) -> Tuple[int, int]:
    """A cell as two plain numbers; raises for what is no cell."""
    try:
        row, column = cell
    except (TypeError, ValueError):
        raise mismatch("a cell is a row and a column") from None
    return _long(row), _long(column)


def _long(number: Any) -> int:
    try:
        whole = operator.index(number)
    except TypeError:
        raise mismatch("rows and columns are whole numbers") from None
    if not -2**31 <= whole < 2**31:
        raise Failure(SUBSCRIPT, "Subscript out of range")
    return whole
