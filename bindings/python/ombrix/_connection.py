"""Connections to a database, owned by the client."""

from __future__ import annotations

from ctypes import byref
from typing import Any, Callable, Optional, TypeVar

from ._failures import Failure, check, mismatch
from ._handles import Held, kinds, made
from ._library import NO_ARGUMENTS, Value, lib
from ._values import call, encoded_name, take

Answer = TypeVar("Answer")


class Connection(Held):
    """A connection to a database; the client that makes it owns it.

        with ombrix.Connection("Driver=SQLite;Database=books.db") as cn:
            ombrix.create_schema(cn)

    The text is `Key=Value` pairs joined by `;`. `Driver=SQLite` takes `Database=` (a path),
    `Driver=PostgreSQL` takes `Host=`, `Port=`, `Database=`, `Username=` and `Password=`. Without a
    text the connection is made unopened. What cannot be understood or opened raises `Failure`.

    It closes with `Close`, at the end of a `with`, or when nothing refers to it any more.
    """

    __slots__ = ()

    def __init__(self, text: Optional[str] = None) -> None:
        if text is None:
            handle = made(lib.connection_new)
        else:
            handle = made(lib.connection_open, encoded_name(text, "Connection"))
        self._hold(handle, "Connection")

    @property
    def ConnectionString(self) -> str:
        """The text that it was opened with, "" before. It may hold a password."""
        return self._read(b"ConnectionString")

    @property
    def State(self) -> int:
        """1 when open, 0 when closed or when the database was lost."""
        return self._read(b"State")

    def Open(self, text: Optional[str] = None) -> None:
        """Opens it; without a text, again with the one that it had."""
        texts = () if text is None else (_text("Open", text),)
        call(self._handle, b"Open", texts)

    def Close(self) -> None:
        """Closes it and rolls an open transaction back. Closing it again does nothing."""
        call(self._handle, b"Close")

    def Execute(self, sql: str) -> int:
        """Runs statements as they stand; answers how many rows the last of them changed."""
        return int(call(self._handle, b"Execute", (_text("Execute", sql),)))

    def BeginTrans(self) -> None:
        """Begins a transaction. Transactions do not nest."""
        call(self._handle, b"BeginTrans")

    def CommitTrans(self) -> None:
        """Keeps what was written since `BeginTrans`."""
        call(self._handle, b"CommitTrans")

    def RollbackTrans(self) -> None:
        """Undoes what was written since `BeginTrans`."""
        call(self._handle, b"RollbackTrans")

    def all_or_nothing(self, run: Callable[..., Answer], *arguments: Any) -> Answer:
        """Calls inside a transaction, which is committed when the answer is True and rolled back
        otherwise. Gives the answer, or raises what the call raised.

            done = cn.all_or_nothing(lpo.Create_LPO)

        Properties and grids keep what the call left in them. What reads through a connection text,
        as the processing of an order does, sees committed work only: create and process in two.
        """
        self.BeginTrans()
        try:
            answer = run(*arguments)
            if answer is True:
                self.CommitTrans()
                return answer
        except BaseException:
            try:
                self.RollbackTrans()
            except Failure:
                pass  # The session is gone, its transaction with it; the first failure tells why.
            raise
        self.RollbackTrans()
        return answer

    def __enter__(self) -> Connection:
        return self

    def __exit__(self, *_: object) -> None:
        self.Close()

    def __repr__(self) -> str:
        # Never the text, which may hold a password.
        try:
            return f"<Connection {'open' if self.State else 'closed'}>"
        except Failure:
            return "<Connection released>"

    def _read(self, name: bytes) -> Any:
        value = Value()
        check(lib.get(self._handle, name, *NO_ARGUMENTS, byref(value)))
        return take(value)


def _text(method: str, text: Any) -> str:
    if not isinstance(text, str):
        raise mismatch(f"{method}: argument 1 takes a String")
    return text


kinds["Connection"] = Connection


def create_schema(connection: Connection) -> None:
    """Makes every table and view that is not there yet. It is safe to repeat."""
    if not isinstance(connection, Connection):
        raise mismatch("create_schema takes a connection")
    check(lib.create_schema(connection._handle))
