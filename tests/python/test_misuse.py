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
    def test_members_and_classes_are_listed(self):
        members = ombrix.members(self.order)
        self.assertEqual([number for number, _, _ in members], list(range(1, len(members) + 1)))
        for member in ((8, "DocFlag", "l"), (14, "AdoConnectionObject", "s"),
                       (43, "GridName", "gs"), (48, "Process_LPO", "c")):
            self.assertIn(member, members)
        self.assertEqual(sorted(name for _, name, _ in members), dir(self.order))
        self.assertIn((2, "State", "g"), ombrix.members(self.books))
        self.assertEqual(ombrix.members(object()), [])
        self.assertEqual(ombrix.classes(), sorted(ombrix.classes()))
        self.assertIn(LPO, ombrix.classes())

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
            for run in (getattr, lambda thing, name: setattr(thing, name, 1)):
                with self.subTest(name), self.assertRaisesRegex(AttributeError, f"'{near}'"):
                    run(thing, name)
        self.assertFalse(hasattr(self.order, "qqqq"))

    def test_what_a_member_does_not_allow_is_an_attribute_error(self):
        for name in ("DocFlag", "AdoConnectionObject"):
            with self.subTest(name), self.assertRaisesRegex(AttributeError, "not read"):
                getattr(self.order, name)
        for thing, name in ((self.order, "ErrDesc"), (self.order, "Create_LPO"),
                            (self.books, "State"), (self.grid, "Cols")):
            with self.subTest(name), self.assertRaisesRegex(AttributeError, name):
                setattr(thing, name, 1)

    def test_an_object_shows_its_class_and_its_keys_and_no_password(self):
        self.assertEqual(repr(ombrix.create(LPO)), f"<{LPO}>")
        self.order.VendorName = ""
        self.order.Create_LPO()
        self.assertEqual(repr(self.order),
                         f"<{LPO} CompanyPrefix='AA' BranchPrefix='01' DocumentPrefix='LPO'"
                         " ErrDesc='Invalid Vendor Name.'>")
        self.assertEqual(repr(self.grid), "<Grid rows=2 cols=21>")
        self.assertIn("Create_LPO", repr(self.order.Create_LPO))
        self.assertEqual(repr(self.books), "<Connection open>")


class Types(BooksTest):
    def test_a_wrong_type_says_what_is_taken(self):
        for name, value, taken in (("LPODate", "soon", "LPODate takes a Date"),
                                   ("amtdig", "two", "AmtDig takes a Double"),
                                   ("OnlineFlag", [True], "OnlineFlag takes a Boolean"),
                                   ("VendorName", self.grid, "VendorName takes a String"),
                                   ("AdoConnectionObject", self.grid, "takes a connection"),
                                   ("AdoConnectionObject", self.text, "takes a connection")):
            with self.subTest(name):
                self.assertFails(13, "Type mismatch: ", setattr, self.order, name, value)
                self.assertFails(13, taken, setattr, self.order, name, value)
        for wrong in ([1, 2], "grid", 5, object(), self.books):
            with self.subTest(wrong=wrong):
                self.assertFails(13, "GridName takes a grid", setattr, self.order, "GridName",
                                 wrong)
        self.assertIs(self.order.GridName, self.grid)
        self.assertFails(13, "takes a connection", ombrix.create_schema, self.order)
        self.assertFails(13, "takes an object", ombrix.members, LPO)
        self.assertFails(13, "callable", ombrix.register, "Own.Thing", 5)
        self.assertFails(13, "callable", lambda: ombrix.dialogue(message="print"))

    def test_arguments(self):
        counter = ombrix.create("OmbrixSystem.CounterTransaction")
        draw = counter.Get_Last_Counter
        self.assertFails(13, "Get_Last_Counter: argument 1 takes a connection", draw, "text", True)
        self.assertFails(13, "argument 2 takes a Boolean", draw, self.books, {})
        self.assertFails(13, "Execute: argument 1 takes a String", self.books.Execute, 5)
        self.assertFails(449, "not optional", draw)
        self.assertFails(450, "Wrong number", counter.Increase_Counter, True, True)
        self.assertFails(None, "too many", counter.Increase_Counter, *[1] * 100)
        self.assertFails(429, "OmbrixPurchase.Nothing", ombrix.create, "OmbrixPurchase.Nothing")
        for wrong in (5, None, LPO.encode()):
            self.assertFails(13, "Type mismatch", ombrix.create, wrong)
        self.assertFails(None, "", ombrix.create, "a\0b")


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
    def test_a_library_beside_the_package(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        shutil.copytree(Path(ombrix.__file__).parent, folder.name + "/ombrix",
                        ignore=shutil.ignore_patterns("__pycache__", "*.so*"))
        shutil.copy(lib.path, folder.name + "/ombrix/libombrixpurchase.so")
        variables = {name: value for name, value in os.environ.items() if name != "OMBRIX_LIBRARY"}
        loaded = subprocess.run(
            [sys.executable, "-c", "import ombrix; print(ombrix.__version__)"], timeout=60,
            capture_output=True, text=True, env={**variables, "PYTHONPATH": folder.name},
            check=False)
        self.assertEqual(loaded.stdout.strip(), ombrix.__version__)
