"""What a client is told that has a name, a type or an order of calls wrong."""

import copy
import os
import pickle
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import ombrix
from books import BooksTest
from ombrix._library import lib

LPO = "OmbrixPurchase.LPO"


class Names(BooksTest):
    def test_members_stand_in_dispatch_order_with_what_they_allow(self):
        members = ombrix.members(self.order)
        self.assertEqual(len(members), 48)
        self.assertEqual([number for number, _, _ in members], list(range(1, 49)))
        for member in ((1, "TaxTypeLPO", "gl"), (8, "DocFlag", "l"),
                       (14, "AdoConnectionObject", "s"), (16, "ErrDesc", "g"),
                       (43, "GridName", "gs"), (45, "Create_LPO", "c"), (48, "Process_LPO", "c")):
            self.assertEqual(members[member[0] - 1], member)
        self.assertEqual(sorted(name for _, name, _ in members), dir(self.order))
        self.assertIn((2, "State", "g"), ombrix.members(self.books))
        self.assertEqual(ombrix.members(object()), [])
        self.assertFails(13, "takes an object", ombrix.members, LPO)

    def test_any_case_will_do(self):
        order = ombrix.create(LPO.upper())
        order.VENDORNAME = "Harbour Foods"
        self.assertEqual((order.vendorname, order.VendorName), ("Harbour Foods",) * 2)
        self.grid.ROWS = 5
        self.assertEqual((self.grid.rows, self.books.STATE), (5, 1))
        self.assertFalse(order.create_lpo())

    def test_a_wrong_name_says_which_near_one_exists(self):
        for thing, name, near in ((self.order, "VendorNmae", "VendorName"),
                                  (self.order, "LPONumber", "LPONo"),
                                  (self.order, "Create", "Create_LPO"),
                                  (self.books, "Exec", "Execute"), (self.grid, "Row", "Rows")):
            for run in (lambda t=thing, n=name: getattr(t, n),
                        lambda t=thing, n=name: setattr(t, n, 1)):
                with self.subTest(name), self.assertRaisesRegex(AttributeError, f"'{near}'"):
                    run()
        self.assertFalse(hasattr(self.order, "qqqq"))

    def test_what_a_member_does_not_allow_is_an_attribute_error(self):
        for name in ("DocFlag", "manualDocIdentity", "AdoConnectionObject"):
            with self.subTest(name), self.assertRaisesRegex(AttributeError, "not read"):
                getattr(self.order, name)
        for thing, name in ((self.order, "ErrDesc"), (self.order, "Create_LPO"),
                            (self.books, "State"), (self.grid, "Cols")):
            with self.subTest(name), self.assertRaisesRegex(AttributeError, name):
                setattr(thing, name, 1)

    def test_an_object_shows_its_class_and_its_keys(self):
        self.assertEqual(repr(ombrix.create(LPO)), f"<{LPO}>")
        self.order.VendorName = ""
        self.order.Create_LPO()
        self.assertEqual(repr(self.order),
                         f"<{LPO} CompanyPrefix='AA' BranchPrefix='01' DocumentPrefix='LPO'"
                         " ErrDesc='Invalid Vendor Name.'>")
        self.assertEqual(repr(self.grid), "<Grid rows=2 cols=21>")
        self.assertIn("Create_LPO", repr(self.order.Create_LPO))

    def test_names_of_classes(self):
        self.assertEqual(ombrix.classes(), sorted(ombrix.classes()))
        self.assertIn(LPO, ombrix.classes())
        self.assertFails(429, "OmbrixPurchase.Nothing", ombrix.create, "OmbrixPurchase.Nothing")
        for wrong in (5, None, LPO.encode()):
            self.assertFails(13, "Type mismatch", ombrix.create, wrong)
        self.assertFails(None, "", ombrix.create, "a\0b")
        self.assertFails(13, "callable", ombrix.register, "Own.Thing", 5)


class Types(BooksTest):
    def test_a_wrong_type_says_what_is_taken(self):
        for name, value, taken in (("LPODate", "soon", "LPODate takes a Date"),
                                   ("amtdig", "two", "AmtDig takes a Double"),
                                   ("OnlineFlag", [True], "OnlineFlag takes a Boolean"),
                                   ("VendorName", self.grid, "VendorName takes a String"),
                                   ("AdoConnectionObject", self.grid, "takes a connection"),
                                   ("AdoConnectionObject", self.text, "takes a connection")):
            with self.subTest(name):
                self.assertFails(13, taken, setattr, self.order, name, value)
                with self.assertRaisesRegex(ombrix.Failure, "^Type mismatch"):
                    setattr(self.order, name, value)
        counter = ombrix.create("OmbrixSystem.CounterTransaction")
        self.assertFails(13, "Get_Last_Counter: argument 1 takes a connection",
                         counter.Get_Last_Counter, "text", True)
        self.assertFails(13, "argument 2 takes a Boolean", counter.Get_Last_Counter, self.books, {})
        self.assertFails(13, "Execute: argument 1 takes a String", self.books.Execute, 5)
        self.assertFails(13, "takes a connection", ombrix.create_schema, self.order)

    def test_values_that_no_property_can_hold(self):
        self.assertFails(94, "Invalid use of Null", setattr, self.order, "VendorName", None)
        self.assertFails(5, "UTF-8", setattr, self.order, "VendorName", "\ud800")
        self.assertFails(6, "Overflow", setattr, self.order, "AmtDig", 10**400)
        self.assertEqual(self.order.VendorName, "Harbour Foods")

    def test_the_number_of_arguments(self):
        counter = ombrix.create("OmbrixSystem.CounterTransaction")
        self.assertFails(449, "not optional", counter.Get_Last_Counter)
        self.assertFails(450, "Wrong number", counter.Increase_Counter, True, True)
        self.assertFails(None, "too many", counter.Increase_Counter, *[1] * 100)


class Grids(BooksTest):
    def test_a_number_becomes_its_general_text(self):
        for value, text in ((10, "10"), (10.0, "10"), (0.1, "0.1"), (1 / 3, "0.333333333333333"),
                            (-0.0, "0"), (-2.50, "-2.5"), (1e15, "1E+15"), (10**15, "1E+15"),
                            (123456789012345.0, "123456789012345"), (0.1 + 0.2, "0.3"),
                            (1e-5, "0.00001"), (1.5e300, "1.5E+300"), (True, "True"),
                            ("caf\u00e9\0", "caf\u00e9\0")):
            with self.subTest(value=value):
                self.grid[1, 2] = value
                self.assertEqual(self.grid[1, 2], text)
        self.grid[1, 2] = "1,234.50"
        self.assertEqual(self.grid.ValueMatrix(1, 2), 1234.5)

    def test_outside_the_grid(self):
        for cell in ((2, 0), (0, 21), (-1, 0), (0, -1), (2**31, 0), (0, 2**32 + 1), (2**70, 0)):
            with self.subTest(cell):
                self.assertFails(9, "Subscript out of range", self.grid.__getitem__, cell)
                self.assertFails(9, "Subscript out of range", self.grid.__setitem__, cell, "x")
                self.assertFails(9, "Subscript out of range", self.grid.ValueMatrix, *cell)
        for cell in (1, "ab", (1,), (1, 2, 3), (1.0, 2), (None, 2), slice(1)):
            with self.subTest(cell):
                self.assertFails(13, "Type mismatch", self.grid.__getitem__, cell)
                self.assertFails(13, "Type mismatch", self.grid.__setitem__, cell, "x")
        self.assertFails(94, "Null", self.grid.__setitem__, (1, 1), None)
        self.assertFails(5, "UTF-8", self.grid.__setitem__, (1, 1), "\ud800")
        self.assertFails(9, "Subscript", ombrix.Grid, -1, 5)

    def test_rows_that_stay_keep_their_texts(self):
        self.grid[1, 1] = "kept"
        self.grid.Rows = 4
        self.grid[3, 20] = "new"
        self.grid.Rows = 2
        self.assertFails(9, "Subscript", self.grid.__setitem__, (3, 20), "gone")
        self.grid.Rows = 4
        self.assertEqual((self.grid.Rows, self.grid.Cols, self.grid[1, 1], self.grid[3, 20]),
                         (4, 21, "kept", ""))

    def test_one_grid_has_one_python_object(self):
        self.assertIs(self.order.GridName, self.grid)
        self.grid[1, 3] = "written before it goes"
        self.grid = None
        self.assertEqual(self.order.GridName[1, 3], "written before it goes")


class Lifetime(BooksTest):
    def test_a_released_handle_is_told_and_does_no_harm(self):
        order, grid, books = self.order, self.grid, ombrix.Connection(self.text)
        for thing in (order, grid, books):
            thing._release()
        for run in (lambda: order.VendorName, order.Create_LPO, lambda: grid[1, 1],
                    lambda: books.State, lambda: setattr(order, "AmtDig", 2),
                    lambda: setattr(ombrix.create(LPO), "GridName", grid)):
            self.assertFails(5, "handle", run)
        self.assertEqual((repr(books), repr(grid)), ("<Connection released>", "<Grid released>"))

    def test_a_connection_closes_with_its_last_reference(self):
        other, order = ombrix.Connection(self.text), ombrix.create(LPO)
        other.BeginTrans()
        order.AdoConnectionObject = other
        del other
        self.books.Close()
        self.books.Open(self.text + ";Busy Timeout=20")
        self.assertFails(None, "lock", self.books.BeginTrans)
        order.AdoConnectionObject = None
        self.books.BeginTrans()

    def test_objects_are_not_copied(self):
        for run in (copy.copy, copy.deepcopy, pickle.dumps):
            with self.assertRaises(TypeError):
                run(self.order)


class Loading(unittest.TestCase):
    """The package in a folder of its own, in a process of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.package = Path(folder.name) / "bindings" / "python" / "ombrix"
        shutil.copytree(Path(ombrix.__file__).parent, self.package,
                        ignore=shutil.ignore_patterns("__pycache__", "*.so*"))

    def load(self, **environment):
        variables = {name: value for name, value in os.environ.items() if name != "OMBRIX_LIBRARY"}
        variables.update(environment, PYTHONPATH=str(self.package.parent))
        program = "import ombrix; print(ombrix.__version__)"
        return subprocess.run([sys.executable, "-c", program], capture_output=True, text=True,
                              env=variables, timeout=60, check=False)

    def test_a_library_beside_the_package(self):
        shutil.copy(lib.path, self.package / "libombrixpurchase.so")
        self.assertEqual(self.load().stdout.strip(), ombrix.__version__)


if __name__ == "__main__":
    unittest.main()
