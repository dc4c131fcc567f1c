"""Components, grids and windows of the client's own, in Python."""

import gc
import logging
import subprocess
import sys
import unittest
import weakref
from ctypes import byref

import ombrix
from books import COUNTER, LINE, BooksTest
from ombrix import _dialogue
from ombrix._library import Value
from ombrix._values import take


class Counter:
    NextDocumentNo = 41.0
    ErrDesc = "The counter says no."
    draws = True

    def __init__(self, **own):
        vars(self).update(own)

    def Get_Last_Counter(self, connection, temporary=False):
        return self.draws

    def Increase_Counter(self, temporary=False):
        return True


class Components(BooksTest):
    def test_names_are_matched_without_regard_to_case(self):
        class Lower:
            companyprefix = branchprefix = documentprefix = ""

            def get_last_counter(self, connection, temporary):
                told.append((self.companyprefix, connection, temporary))
                self.nextdocumentno = 5
                return True

            def increase_counter(self, temporary):
                return told.append(self.documentprefix) or True

        told = []
        self.register(Lower)
        self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
        self.assertEqual(self.order.LPONo, "AA01LPOTMP5")
        self.assertEqual(told, [("AA", self.books, True), "LPO"])
        self.assertIs(told[0][1], self.books)
        del told[:]
        gc.collect()
        self.assertEqual(self.books.State, 1)

    def test_a_refusal_and_a_wrong_answer_reach_the_order(self):
        for own, reason in (({"draws": False}, Counter.ErrDesc),
                            ({"NextDocumentNo": None}, "Invalid use of Null")):
            self.register(lambda own=own: Counter(**own))
            self.assertIs(self.order.Create_LPO(), False)
            self.assertEqual(self.order.ErrDesc, reason)

    def test_what_a_method_raises_becomes_the_failure(self):
        def raises(error):
            def method(*_):
                raise error
            return lambda: type("Raising", (), {"Get_Last_Counter": method})()

        self.register(raises(ombrix.Failure(70, "Permission denied")))
        self.assertFalse(self.order.Create_LPO())
        self.assertEqual(self.order.ErrDesc, "Permission denied")
        self.register(raises(KeyError("series")))
        with self.assertLogs("ombrix", logging.ERROR) as logged:
            self.assertFalse(self.order.Create_LPO())
        self.assertEqual(self.order.ErrDesc, "KeyError: 'series'")
        self.assertIn("raise error", logged.output[0])
        self.register(raises(KeyboardInterrupt()))
        with self.assertRaises(KeyboardInterrupt):
            self.order.Create_LPO()
        self.assertEqual(self.order.ErrDesc, "KeyboardInterrupt")
        self.register(raises(ombrix.Failure(70, "Not today"))().Get_Last_Counter, "Own.Thing")
        self.assertFails(70, "Not today", ombrix.create, "own.thing")
        self.register(object)
        self.assertFalse(self.order.Create_LPO())
        self.assertIn("object.CompanyPrefix", self.order.ErrDesc)

    def test_unregister_brings_back_what_stood_there(self):
        for name, number in ((COUNTER, 1), (COUNTER.upper(), 2)):
            ombrix.register(name, lambda number=number: Counter(NextDocumentNo=number))
        for expected in ("AA01LPOTMP2", "AA01LPOTMP1"):
            self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
            self.assertEqual(self.order.LPONo, expected)
            ombrix.unregister(COUNTER.lower())
        self.assertNotIsInstance(ombrix.create(COUNTER), Counter)
        self.assertFails(None, "Nothing is registered", ombrix.unregister, COUNTER)

    def test_create_gives_the_python_object_itself(self):
        counter = Counter()
        self.register(lambda: counter, "Own.Counter")
        self.assertIs(ombrix.create("OWN.COUNTER"), counter)
        self.assertIn("Own.Counter", ombrix.classes())
        shipped = ombrix.create(COUNTER)
        self.register(lambda: shipped, "Own.Shipped")
        shipped.CompanyPrefix = "ZZ"
        self.assertEqual(ombrix.create("Own.Shipped").CompanyPrefix, "ZZ")

    def test_what_a_component_writes_into_the_grid_is_seen_at_once(self):
        def own_grid():
            self.order.GridName = grid = self.grid_of(LINE)
            return grid

        for choose in (lambda: self.grid, own_grid):
            class Writes(Counter):
                def Get_Last_Counter(counter, connection, temporary=False):
                    grid = choose()
                    grid[1, 7] = 9
                    grid[1, 8] = 2.5
                    return True

            self.register(Writes)
            self.grid[1, 7] = 4
            self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
            self.assertEqual(self.rows("Select LPO_Qty, LPO_Unit_Price From LPO_Detail"),
                             [(9, 2.5)])

    def test_a_process_ends_well_whatever_is_still_registered(self):
        program = ("import ombrix, sys\n"
                   "ombrix.dialogue(message=print, input=lambda *_: '')\n"
                   "ombrix.register('Own.Thing', Exception)\n"
                   "cn = ombrix.Connection(sys.argv[1])\n"
                   "lpo = ombrix.create('OmbrixPurchase.LPO')\n"
                   "lpo.AdoConnectionObject = cn\n"
                   "thing = ombrix.create('Own.Thing')\n")
        ended = subprocess.run([sys.executable, "-c", program, self.text], capture_output=True,
                               text=True, timeout=60, check=False)
        self.assertEqual((ended.returncode, ended.stderr), (0, ""))


class OwnGrid(ombrix.GridControl):
    def __init__(self, rows):
        self.Rows, self.cells = rows, {}

    def __getitem__(self, cell):
        return self.cells.get(cell, "")

    def __setitem__(self, cell, text):
        self.cells[cell] = text


class DuckGrid:
    """Has the members of a grid, and tells its settings."""

    def __init__(self, rows):
        self.Rows, self.cells, self.bold = rows, {}, []

    def TextMatrix(self, row, col, *text):
        if text:
            self.cells[row, col] = text[0]
        return self.cells.get((row, col), "")

    def ValueMatrix(self, row, col):
        return float(self.cells.get((row, col)) or 0) * 2

    def Cell(self, *setting):
        self.bold.append(setting)


class OwnGrids(BooksTest):
    def test_an_order_is_saved_from_and_read_into_a_grid_of_the_clients_own(self):
        for grid, quantity in ((OwnGrid(2), "4"), (DuckGrid(2), "8")):
            with self.subTest(type(grid).__name__):
                grid.cells.update(((1, column), str(value)) for column, value in LINE.items())
                self.order.GridName = grid
                self.assertIs(self.order.GridName, grid)
                self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
                grid.cells.clear()
                self.assertTrue(self.order.Get_LPO(), self.order.ErrDesc)
                self.assertEqual((grid.cells[1, 3], grid.cells[1, 7]), ("Flour", quantity))
        self.assertEqual([setting[:5] for setting in grid.bold], [(13, 1, 0, 1, 18)])

    def test_what_the_library_lets_go_is_let_go(self):
        made = []

        def factory():
            counter = Counter()
            made.append(weakref.ref(counter))
            return counter

        self.register(factory)
        self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
        grid = OwnGrid(2)
        self.order.GridName, gone = grid, weakref.ref(grid)
        del grid
        self.assertIsNotNone(gone())
        self.order.GridName = None
        self.assertEqual((made[0](), gone()), (None, None))


class Windows(unittest.TestCase):
    def setUp(self):
        self.addCleanup(ombrix.dialogue)

    def asked(self):
        """What the library is answered."""
        answer = Value()
        _dialogue._ask(None, b"Name?", b"Books", b"caf\xc3\xa9", byref(answer))
        return take(answer)

    def test_the_clients_windows_show_and_answer(self):
        shown = []
        ombrix.dialogue(lambda *told: shown.append(told), lambda *told: "|".join(told))
        _dialogue._show(None, b"Saved", b"Books")
        self.assertEqual((shown, self.asked()), ([("Saved", "Books")], "Name?|Books|caf\u00e9"))
        ombrix.dialogue(input=lambda *_: None)
        self.assertEqual(self.asked(), "")

    def test_a_window_that_raises_is_logged_and_answers_nothing(self):
        for error in (ValueError("broken"), ombrix.Failure(5, "broken")):
            def raise_error(*_, raised=error):
                raise raised
            ombrix.dialogue(raise_error, raise_error)
            with self.assertLogs("ombrix", logging.ERROR):
                _dialogue._show(None, b"Saved", b"Books")
                self.assertIsNone(self.asked())
