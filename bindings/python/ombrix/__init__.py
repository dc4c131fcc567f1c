"""The purchase module of the suite, driven from Python.

An order, saved and given its final number:

    import datetime
    import ombrix

    cn = ombrix.Connection("Driver=SQLite;Database=books.db")      # opens; the client owns it
    ombrix.create_schema(cn)                                       # safe to repeat
    grid = ombrix.Grid(rows=20, cols=40)
    grid[1, 1], grid[1, 7], grid[1, 15] = "1002", 10, "AA01GL5000"

    lpo = ombrix.create("OmbrixPurchase.LPO")
    lpo.ConnectionString = cn.ConnectionString
    lpo.AdoConnectionObject = cn
    lpo.CompanyPrefix, lpo.BranchPrefix, lpo.DocumentPrefix = "AA", "01", "LPO"
    lpo.VendorCode, lpo.VendorName, lpo.CurrencyCode = "AAV001", "Harbour Foods", "EUR"
    lpo.LPODate = lpo.LastUpdate = datetime.datetime.now()
    lpo.GridName = grid
    print(lpo.LPONo if lpo.Create_LPO() and lpo.Process_LPO() else lpo.ErrDesc)

Values. A String is a `str`, a Double a `float`, a Long an `int`, a Boolean a `bool`, Null is None.
A date is written as `datetime.date` or `datetime.datetime` and read as `datetime.datetime`, to the
second and without a time zone; one never set is 30 December 1899. A `Decimal` goes as a Double.
A value that a property can convert is taken, such as an `int` for a Double.

Names are matched without regard to case. `classes()` tells what can be created, `dir(obj)` and
`members(obj)` what an object has. A name that an object lacks, or a getter or setter that it does
not offer, raises `AttributeError`; everything else that goes wrong raises `Failure`.

Threads. An object may be used from any one thread at a time, a connection together with all that
uses it. Objects of their own do not disturb each other. Calls release the interpreter's lock.

Log. An exception other than `Failure` that leaves a callback goes to the logger "ombrix" with its
traceback. A `KeyboardInterrupt` in a callback ends the library's call with a failure, and is then
raised where that call was made.

The library is looked for in the file that the environment variable OMBRIX_LIBRARY names, then
beside this package, then in the build folders of the checkout.
"""

from ._components import GridControl, register, unregister
from ._connection import Connection, create_schema
from ._dialogue import dialogue
from ._failures import Failure
from ._grid import Grid
from ._library import lib as _lib
from ._objects import Object, classes, create, members
from ._values import Ref

__version__ = _lib.version().decode()
__all__ = ["Connection", "Failure", "Grid", "GridControl", "Object", "Ref", "classes", "create",
           "create_schema", "dialogue", "members", "register", "unregister"]
