"""Times the Python package: setting a property, and whole orders of ten lines on SQLite.

    PYTHONPATH=bindings/python python3 bench/python_bench.py [orders]

Prints microseconds, the best of many short runs, which other load on the machine disturbs least.
"Filled" is what Python itself does for an order: its properties and its grid; the rest is the
library's and the database's.
"""

import datetime
import sys
import tempfile
import time

import ombrix

LINES = 10
SHORT_RUN = 100
DAY = datetime.datetime(2024, 5, 2)


def microseconds(run, repeats, count=1):
    """The best time of one of `count` runs in a row."""
    best = float("inf")
    for _ in range(repeats):
        begin = time.perf_counter()
        for _ in range(count):
            run()
        best = min(best, time.perf_counter() - begin)
    return best / count * 1e6


def make_books(folder):
    books = ombrix.Connection(f'Driver=SQLite;Database="{folder}/books.db";Synchronous=OFF')
    ombrix.create_schema(books)
    books.Execute("Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix)"
                  " Values ('LPO', 'AA', '01')")
    for item in range(LINES):
        books.Execute("Insert Into Item_Master (Item_Code, Item_Type, Base_Qty)"
                      f" Values ('AA{1000 + item}', '0', 1)")
    return books


def fill_grid(grid):
    for row in range(1, LINES + 1):
        quantity = row % 9 + 1
        cells = ((1, str(999 + row)), (2, f"HF-{row}"), (3, f"An item of the company, line {row}"),
                 (4, "Carton"), (5, "CTN"), (6, 12), (7, quantity), (8, 20), (9, 5),
                 (10, quantity), (12, quantity * 19.5), (15, "AA01GL5000"), (16, "AA01PRJ07"),
                 (18, 0), (20, "1"))
        for column, value in cells:
            grid[row, column] = value


def fill(order, books, grid):
    order.ConnectionString = books.ConnectionString
    order.AdoConnectionObject = books
    order.CompanyPrefix, order.BranchPrefix, order.DocumentPrefix = "AA", "01", "LPO"
    order.AmtDig, order.OnlineFlag = 2, True
    order.LPODate = order.LPODueDate = order.LastUpdate = DAY
    order.VendorCode, order.VendorName = "AAV001", "Harbour Foods"
    order.CurrencyCode = order.CurrencySymbol = "EUR"
    order.LPODiscountPercent, order.LPOFCDiscountAmount = 10.0, 95.0
    order.LPOFCSubtotal, order.LPOFCTotalAmount = 950.0, 855.0
    fill_grid(grid)
    order.GridName = grid


def order_from_nothing(books, work):
    order = ombrix.create("OmbrixPurchase.LPO")
    fill(order, books, ombrix.Grid(LINES + 1, 21))
    if work:
        for method in (order.Create_LPO, order.Process_LPO):
            if not books.all_or_nothing(method):
                raise SystemExit(order.ErrDesc)


def main():
    orders = int(sys.argv[1]) if len(sys.argv) > 1 else 300
    order = ombrix.create("OmbrixPurchase.LPO")
    for name, value in (("VendorName", "Harbour Foods"), ("AmtDig", 2.0), ("OnlineFlag", True),
                        ("LPODate", DAY)):
        took = microseconds(lambda n=name, v=value: setattr(order, n, v), 200, SHORT_RUN)
        print(f"property set, {type(value).__name__:8} {took:10.2f}")
    print(f"property get, str      {microseconds(lambda: order.VendorName, 200, SHORT_RUN):10.2f}")
    with tempfile.TemporaryDirectory() as folder, make_books(folder) as books:
        filled = microseconds(lambda: order_from_nothing(books, False), orders)
        whole = microseconds(lambda: order_from_nothing(books, True), orders)
        print(f"order of {LINES} lines, filled {filled:8.0f}")
        print(f"order of {LINES} lines, whole  {whole:8.0f}")


if __name__ == "__main__":
    main()
