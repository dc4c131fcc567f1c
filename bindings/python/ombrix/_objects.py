"""Objects of the library, their members reached by name."""

from __future__ import annotations

from ctypes import byref, c_size_t, c_uint64
from typing import Any, Dict, List, Optional, Sequence, Tuple

from ._failures import Failure, check, mismatch, raise_interrupt, raise_last
from ._handles import Held, adopt, class_name_of, kinds, made, no_member
from ._library import (CAN_CALL, CAN_GET, CAN_LET, CAN_SET, NO_ARGUMENTS,
                       NO_MEMBER_STATUS, OBJECT, MemberInfo, Value, lib)
from ._values import Shared, call, encode, encoded_name, take

_OBJECT_TYPES = ("grid", "connection")
_KEYS = ("CompanyPrefix", "BranchPrefix", "DocumentPrefix")
_letters = ((CAN_CALL, "c"), (CAN_GET, "g"), (CAN_LET, "l"), (CAN_SET, "s"))
_get, _let, _set = lib.get, lib.let, lib.set


class Member:
    """A row of a class's interface table."""

    __slots__ = ("number", "name", "encoded", "access", "type", "plain")

    def __init__(self, number: int, name: str, access: int, type_name: str) -> None:
        self.number = number
        self.name = name
        self.encoded = name.encode()
        self.access = access
        self.type = type_name
        # Takes values only, so that none has to be looked at.
        self.plain = bool(access & CAN_LET) and type_name not in _OBJECT_TYPES

    def letters(self) -> str:
        return "".join(letter for bit, letter in _letters if self.access & bit)


class Table:
    """The members of a class, by every spelling that was used."""

    def __init__(self, class_name: str, members: List[Member]) -> None:
        self.class_name = class_name
        self.members = members
        self.lower = {member.name.lower(): member for member in members}
        self.spelled = {member.name: member for member in members}

    def find(self, name: str) -> Member:
        member = self.spelled.get(name)
        if member is None:
            member = self.lower.get(name.lower())
            if member is None:
                raise self.no_member(name)
            self.spelled[name] = member
        return member

    def no_member(self, name: str) -> AttributeError:
        return no_member(self.class_name, name, [member.name for member in self.members])

    def refusal(self, member: Member, what: str) -> AttributeError:
        return AttributeError(f"{self.class_name}.{member.name} {what}")


_tables: Dict[Tuple[str, int], Table] = {}


def _text(chars: bytes) -> str:
    return chars.decode("utf-8", "replace")


def table_of(handle: c_uint64, class_name: str) -> Table:
    count = c_size_t()
    check(lib.member_count(handle, byref(count)))
    key = (class_name, count.value)
    table = _tables.get(key)
    if table is None:
        members = []
        info = MemberInfo()
        for place in range(count.value):
            check(lib.member(handle, place, byref(info)))
            members.append(Member(info.number, _text(info.name), info.access, _text(info.type)))
        table = _tables[key] = Table(class_name, members)
    return table


class Object(Held):
    """An object of the library. Its attributes are its properties and methods, by their names in
    any case; `dir(obj)` and `ombrix.members(obj)` list them.

        lpo.VendorCode = "AAV001"      # let; a grid, a connection, an object: set by reference
        print(lpo.LPONo)               # get
        if not lpo.Create_LPO(): ...   # call
    """

    __slots__ = ("_table",)
    _table: Table

    @classmethod
    def _adopted(cls, handle: int, class_name: str) -> Object:
        self = cls.__new__(cls)
        self._hold(handle, class_name)
        object.__setattr__(self, "_table", table_of(self._handle, class_name))
        return self

    def __getattr__(self, name: str) -> Any:
        if name[0] == "_":
            raise AttributeError(name)
        table = self._table
        if not table.members:
            return self._untold(name)
        member = table.spelled.get(name) or table.find(name)
        if member.access & CAN_CALL:
            return Method(self, member.name, member.encoded)
        if not member.access & CAN_GET:
            raise table.refusal(member, "can be set but not read")
        result = Value()
        if _get(self._handle, member.encoded, *NO_ARGUMENTS, byref(result)):
            raise_last()
        return take(result)

    def _untold(self, name: str) -> Any:
        """A member of an object that does not tell which it has."""
        result = Value()
        status = _get(self._handle, name.encode(), *NO_ARGUMENTS, byref(result))
        if status == NO_MEMBER_STATUS:
            return Method(self, name, name.encode())
        check(status)
        return take(result)

    def __setattr__(self, name: str, value: Any) -> None:
        table = self._table
        member = table.spelled.get(name)
        if member is not None and member.plain and not isinstance(value, Held):
            target = Value()
            kept = encode(target, value)
            if _let(self._handle, member.encoded, *NO_ARGUMENTS, byref(target)):
                raise_last()
            del kept
            return
        if not table.members:
            member = Member(0, name, CAN_LET | CAN_SET, "")
        self._assign(member or table.find(name), value)

    def _assign(self, member: Member, value: Any) -> None:
        if not member.access & (CAN_LET | CAN_SET):
            what = "is a method" if member.access & CAN_CALL else "can be read but not set"
            raise self._table.refusal(member, what)
        target = Value()
        kept = self._fill(target, member, value)
        if member.access & CAN_SET and target.type == OBJECT:
            check(_set(self._handle, member.encoded, target.object))
        elif member.access & CAN_LET:
            check(_let(self._handle, member.encoded, *NO_ARGUMENTS, byref(target)))
        else:
            raise mismatch(f"{member.name} takes a {member.type or 'reference to an object'}")
        del kept

    def _fill(self, target: Value, member: Member, value: Any) -> Optional[Held]:
        if value is None and not member.plain:
            target.type = OBJECT
            return None
        return encode(target, _grid(member, value) if member.type == "grid" else value)

    def __dir__(self) -> List[str]:
        return [member.name for member in self._table.members]

    def __repr__(self) -> str:
        shown = [self._table.class_name]
        names = list(_KEYS)
        names += [each.name for each in self._table.members if each.name.endswith("No")][:1]
        for name in names + ["ErrDesc"]:
            member = self._table.lower.get(name.lower())
            if member is None or not member.access & CAN_GET:
                continue
            try:
                value = getattr(self, name)
            except Failure as failure:
                value = failure
            if value not in ("", None):
                shown.append(f"{name}={value!r}")
        return f"<{' '.join(shown)}>"


kinds[""] = Object


def _grid(member: Member, value: Any) -> Any:
    """Refuses what cannot be a grid here: the library would find out only in use."""
    if isinstance(value, Held):
        return value
    reads = hasattr(value, "TextMatrix") or hasattr(value, "__getitem__")
    if not (reads and hasattr(value, "Rows")):
        raise mismatch(f"{member.name} takes a {member.type}")
    return Shared(value)


class Method:
    """A method of an object, ready to be called."""

    __slots__ = ("_object", "_encoded", "__name__")

    def __init__(self, owner: Object, name: str, encoded: bytes) -> None:
        self._object = owner
        self._encoded = encoded
        self.__name__ = name

    def __call__(self, *arguments: Any) -> Any:
        return call(self._object._handle, self._encoded, arguments)

    def __repr__(self) -> str:
        return f"<method {self.__name__} of {self._object!r}>"


def create(name: str) -> Any:
    """A new object of a class, such as "OmbrixPurchase.LPO". A component of the client's own in
    Python comes as it is. An unknown name raises `Failure` 429."""
    try:
        handle = made(lib.create, encoded_name(name))
    finally:
        raise_interrupt()
    return adopt(handle, new=True)


def classes() -> List[str]:
    """The names that can be created, sorted."""
    names = Value()
    check(lib.classes(byref(names)))
    return take(names).splitlines()


def members(obj: Any) -> List[Tuple[int, str, str]]:
    """The members of an object as (dispid, name, access) in dispatch order. `access` is made of
    the letters c (call), g (get), l (let) and s (set). A client's own component tells none.

        >>> ombrix.members(lpo)[0]
        (1, 'TaxTypeLPO', 'gl')
    """
    if isinstance(obj, Held):
        table = table_of(obj._handle, class_name_of(obj._handle.value))
        return [(member.number, member.name, member.letters()) for member in table.members]
    if obj is None or isinstance(obj, (str, bytes, int, float)):
        raise mismatch("members takes an object")
    return []
