"""Runs the demo and the README's program as a user does, good input and bad."""

import os
import sqlite3
import subprocess
import sys
import tempfile
import unittest

DEMO, ORDER_CPP, ORDER_C = sys.argv[1:4]
ORDER_PYTHON = os.path.join(os.path.dirname(os.path.abspath(__file__)), "order_python.py")
HEADING = ("Item,Vendor item,Description,Unit,Code,Base units,Quantity,Price,Discount %,Account,"
           "Project,Free,Tax\n")
LINE = "1001,,Flour,Bag,BAG,25,2,22.5,0,AA01GL5000,,no,yes\n"

BAD_LINES = [  # what stands in the third line of the file, and what is said of it
    ("1001,,Flour,Bag\n", "line 3: has 4 columns where 13 belong"),
    (LINE.replace("22.5", "cheap"), 'line 3: "Price" must be a number'),
    (LINE.replace("22.5", "nan"), 'line 3: "Price" must be a number'),
    (LINE.replace(",2,", ",-2,"), 'line 3: "Quantity" must be a number'),
    (LINE.replace(",2,", ",0,"), 'line 3: "Quantity" must be above 0'),
    (LINE.replace("Flour", '"Flour'), "line 3: a double quote is not closed"),
    (LINE.replace("Flour", '"Flour" fine'), "line 3: something stands behind a closing"),
    (LINE.replace("AA01GL5000", ""), 'line 3: "Account" is empty'),
    (LINE.replace("no,yes", "no,perhaps"), 'line 3: "Tax" must be "yes" or "no"'),
]


class Examples(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        os.makedirs(self.path("build/demo"))

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def write(self, name, text):
        with open(self.path(name), "w", encoding="utf-8", newline="") as file:
            file.write(text)
        return self.path(name)

    def run_program(self, *command):
        return subprocess.run(command, cwd=self.folder.name, capture_output=True, text=True,
                              timeout=60, check=False)

    def demo(self, *arguments):
        return self.run_program(DEMO, *arguments)

    def check_refused(self, result, message, code=1):
        self.assertEqual(result.returncode, code, result.stderr)
        self.assertIn(message, result.stderr)

    def test_a_purchase_walks_its_road_and_the_next_run_takes_an_order_alone(self):
        first = self.demo("--database", "build/demo/books.db")
        self.assertEqual(first.returncode, 0, first.stderr)
        for text in ("AAV010  PG-2291    1250.00  AA01OBN1",  # each chapter, by a figure of its own
                     "What was AA01LPOTMP1, as Get_LPO reads it now", "Invalid Account No",
                     "AA1001  Wheat flour, type 550             0          0    350",
                     "AA1002  168       872.14     5.19       5.45    5.00",
                     "AA01PIN92  AA01GL5040  Purchase Variance : 5040- Ref.No..   24.11     0.00",
                     "AA01DRM6  AA01GL2000  System Generated Debit Memo.        67.50",
                     "AA01PDC23  AA01CPN42  AA01GL1010  100451",
                     "Purchase_Invoice_Master  2         0",
                     "credits 6989.59, difference 24.11, of it price variance 24.11"):
            self.assertIn(text, first.stdout)
        self.assertLess(max(map(len, first.stdout.splitlines())), 100)
        second = self.demo("--database", "build/demo/books.db")
        self.assertIn("AA01LPO120", second.stdout)
        self.assertNotIn("=== Vendors", second.stdout)
        programs = [[ORDER_CPP], [ORDER_C]]
        # An instrumented library does not load into Python; then it is not named.
        if "OMBRIX_LIBRARY" in os.environ:
            programs.append([sys.executable, ORDER_PYTHON])
        for number, program in enumerate(programs, start=121):
            result = self.run_program(*program)
            self.assertEqual((result.returncode, result.stdout), (0, f"AA01LPO{number}\n"))

    def test_lines_of_ones_own_are_taken(self):
        lines = self.write("own.csv", "\ufeff" + (HEADING + LINE).replace("\n", "\r\n"))
        result = self.demo("--database", "own.db", lines)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("1  1001  Flour        Bag     4  22.50", result.stdout)

    def test_a_bad_line_is_named_and_no_database_made(self):
        for line, message in BAD_LINES:
            with self.subTest(message):
                lines = self.write("bad.csv", HEADING + LINE + line)
                self.check_refused(self.demo("--database", "bad.db", lines), message)
                self.assertFalse(os.path.exists(self.path("bad.db")))

    def test_a_quote_in_a_code_is_refused_by_the_database(self):
        lines = self.write("quote.csv", HEADING + LINE.replace("1001", "10'01"))
        self.check_refused(self.demo("--database", "quote.db", lines), "demo: ")

    def test_files_that_do_not_serve_are_named(self):
        self.check_refused(self.demo("none.csv"), "none.csv: the file cannot be read")
        self.check_refused(self.demo(self.write("empty.csv", "")), "no lines behind the heading")
        self.check_refused(self.demo("--database", "no/such/folder.db"), "unable to open")
        self.check_refused(self.demo("--database", "build"), "unable to open")
        text = self.write("text.db", "no database, only a text that is long enough\n" * 40)
        self.check_refused(self.demo("--database", text), "file is not a database")
        with sqlite3.connect(self.path("other.db")) as other:
            other.execute("create table Customers (Name text)")
        other.close()
        self.check_refused(self.demo("--database", "other.db"), "has no purchase tables")

    def test_wrong_use_is_told(self):
        for arguments in (["--database"], ["--nonsense"], ["a.csv", "b.csv"], [""]):
            self.check_refused(self.demo(*arguments), "usage: demo", code=2)


unittest.main(argv=sys.argv[:1])
