"""What the tests of the Python package share: a fresh database and an order on it."""

import datetime
import sqlite3
import tempfile
import unittest
from contextlib import closing

import ombrix

DAY = datetime.datetime(2024, 3, 1)
COUNTER = "OmbrixSystem.CounterTransaction"
LINE = {1: "1001", 3: "Flour", 4: "Bag-Weekly", 6: 25, 7: 4, 8: 22.5, 12: 90, 15: "AA01GL5000"}


class BooksTest(unittest.TestCase):
    """A database with a series, and an order that can be saved."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = folder.name + "/books.db"
        self.text = f'Driver=SQLite;Database="{self.path}";Synchronous=OFF'
        self.books = ombrix.Connection(self.text)
        self.addCleanup(self.books.Close)
        ombrix.create_schema(self.books)
        self.books.Execute("Insert Into Document_Prefix (Document_Prefix, Company_Prefix,"
                           " Branch_Prefix) Values ('LPO', 'AA', '01')")
        self.grid = self.grid_of(LINE)
        self.order = order = ombrix.create("OmbrixPurchase.LPO")
        order.ConnectionString, order.AdoConnectionObject = self.text, self.books
        order.CompanyPrefix, order.BranchPrefix, order.DocumentPrefix = "AA", "01", "LPO"
        order.LPODate = order.LastUpdate = DAY
        order.VendorCode, order.VendorName, order.CurrencyCode = "AAV001", "Harbour Foods", "EUR"
        order.GridName = self.grid

    def grid_of(self, cells):
        grid = ombrix.Grid(rows=2, cols=21)
        for column, value in cells.items():
            grid[1, column] = value
        return grid

    def register(self, factory, name=COUNTER):
        ombrix.register(name, factory)
        self.addCleanup(ombrix.unregister, name)

    def rows(self, select):
        """Committed rows, read past the library."""
        with closing(sqlite3.connect(self.path)) as connection:
            return connection.execute(select).fetchall()

    def assertFails(self, number, text, run, *arguments):
        with self.assertRaises(ombrix.Failure) as caught:
            run(*arguments)
        self.assertIn(text, caught.exception.description)
        if number is not None:
            self.assertEqual(caught.exception.number, number)
