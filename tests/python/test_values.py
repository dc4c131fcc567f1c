"""Values, grids and transactions as Python has them."""

import datetime
import decimal

import ombrix
from books import LINE, BooksTest


class Values(BooksTest):
    def test_values_come_back_as_they_went(self):
        for name, value, read in (
                ("VendorName", "Caf\u00e9 \U0001f9c0 \u4e2d", None), ("TaxCode", "a\0b", None),
                ("LPODate", datetime.datetime(2024, 2, 29, 23, 59, 58), None),
                ("LPODate", datetime.date(1850, 1, 2), datetime.datetime(1850, 1, 2)),
                ("LPODate", datetime.datetime(2024, 1, 1, tzinfo=datetime.timezone.utc),
                 datetime.datetime(2024, 1, 1)),
                ("AmtDig", 3, 3.0), ("AmtDig", 2**40, float(2**40)), ("AmtDig", True, -1.0),
                ("AmtDig", decimal.Decimal("2.5"), 2.5),
                ("OnlineFlag", True, None), ("OnlineFlag", 0, False), ("TaxCode", 1.5, "1.5")):
            with self.subTest(name=name, value=value):
                setattr(self.order, name, value)
                got, wanted = getattr(self.order, name), value if read is None else read
                self.assertEqual((got, type(got)), (wanted, type(wanted)))

    def test_values_that_no_property_can_hold(self):
        self.assertFails(94, "Invalid use of Null", setattr, self.order, "VendorName", None)
        self.assertFails(5, "UTF-8", setattr, self.order, "VendorName", "\ud800")
        self.assertFails(6, "Overflow", setattr, self.order, "AmtDig", 10**400)
        self.assertEqual(self.order.VendorName, "Harbour Foods")

    def test_a_reference_brings_back_what_the_method_left(self):
        counter = ombrix.create("OmbrixSystem.CounterTransaction")
        counter.CompanyPrefix, counter.BranchPrefix, counter.DocumentPrefix = "AA", "01", "LPO"
        argument = ombrix.Ref(self.books)
        self.assertTrue(counter.Get_Last_Counter(argument, True), counter.ErrDesc)
        self.assertIs(argument.value, self.books)


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

    def test_outside_the_grid(self):
        read, write, number = self.grid.__getitem__, self.grid.__setitem__, self.grid.ValueMatrix
        for cell in ((2, 0), (0, 21), (-1, 0), (0, -1), (2**31, 0), (0, 2**32 + 1), (2**70, 0)):
            with self.subTest(cell):
                self.assertFails(9, "Subscript out of range", read, cell)
                self.assertFails(9, "Subscript out of range", write, cell, "x")
                self.assertFails(9, "Subscript out of range", number, *cell)
        for cell in (1, "ab", (1,), (1, 2, 3), (1.0, 2), (None, 2), slice(1)):
            with self.subTest(cell):
                self.assertFails(13, "Type mismatch", read, cell)
                self.assertFails(13, "Type mismatch", write, cell, "x")
        self.assertFails(94, "Null", write, (1, 1), None)
        self.assertFails(5, "UTF-8", write, (1, 1), "\ud800")
        self.assertFails(9, "Subscript", ombrix.Grid, -1, 5)

    def test_what_was_written_is_there_whoever_looks_and_however_late(self):
        grid = self.grid
        grid[1, 1] = "1,234.50"
        self.assertEqual(grid.ValueMatrix(1, 1), 1234.5)
        grid.Rows = 4
        grid[3, 20] = "new"
        grid.Rows = 2
        self.assertFails(9, "Subscript", grid.__setitem__, (3, 20), "gone")
        grid.Rows = 4
        self.assertEqual((grid.Rows, grid.Cols, grid[3, 20]), (4, 21, ""))
        self.assertIs(self.order.GridName, grid)
        grid[1, 3] = "written before it goes"
        del grid, self.grid
        self.assertEqual(self.order.GridName[1, 3], "written before it goes")

    def test_what_a_class_reads_into_it_is_seen_with_its_marks(self):
        self.grid[1, 18] = 1
        self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
        self.order.GridName = lines = ombrix.Grid(rows=2, cols=21)
        self.assertTrue(self.order.Get_LPO(), self.order.ErrDesc)
        self.assertEqual((lines[1, 3], lines.ValueMatrix(1, 11)), (LINE[3], 90.0))
        self.assertEqual([mark[:5] + (float(mark[5]),) for mark in lines.marks],
                         [(13, 1, 0, 1, 18, 1.0)])


class Transactions(BooksTest):
    def test_true_commits_false_and_raising_roll_back(self):
        def saved_but(ending):
            self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
            if isinstance(ending, BaseException):
                raise ending
            return ending

        for ending in (False, None, 1):
            self.assertIs(self.books.all_or_nothing(saved_but, ending), ending)
        for ending in (ValueError("no"), KeyboardInterrupt()):
            with self.assertRaises(type(ending)):
                self.books.all_or_nothing(saved_but, ending)
        self.assertEqual(self.rows("Select * From LPO_Master"), [])
        self.assertIs(self.books.all_or_nothing(self.order.Create_LPO), True)
        self.assertEqual(self.rows("Select LPO_No From LPO_Master"), [("AA01LPOTMP1",)])

    def test_a_lost_session_does_not_hide_what_was_raised(self):
        def close_and_raise():
            self.books.Close()
            raise ValueError("first")

        with self.assertRaisesRegex(ValueError, "first"):
            self.books.all_or_nothing(close_and_raise)

    def test_opened_and_closed(self):
        with ombrix.Connection(self.text) as other:
            self.assertEqual((other.State, other.ConnectionString), (1, self.text))
        self.assertEqual(other.State, 0)
        self.assertFails(3704, "closed", other.Execute, "Select 1")
        other.Open()
        self.assertFails(3705, "open", other.Open, self.text)
        self.assertEqual((other.State, ombrix.Connection().State), (1, 0))
