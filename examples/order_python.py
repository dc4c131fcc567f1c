"""A purchase order in Python. After ./demo: PYTHONPATH=bindings/python python3 this file."""

import datetime

import ombrix

with ombrix.Connection("Driver=SQLite;Database=build/demo/books.db") as books:
    lines = ombrix.Grid(rows=2, cols=21)
    lines[1, 1] = "1002"  # item
    lines[1, 7] = 10  # ordered quantity
    lines[1, 15] = "AA01GL5000"  # account
    order = ombrix.create("OmbrixPurchase.LPO")
    order.AdoConnectionObject = books
    order.ConnectionString = books.ConnectionString
    order.CompanyPrefix, order.BranchPrefix, order.DocumentPrefix = "AA", "01", "LPO"
    order.LPODate = order.LastUpdate = datetime.datetime.now()
    order.VendorCode, order.VendorName = "AAV001", "Harbour Foods"
    order.CurrencyCode = "EUR"
    order.GridName = lines
    done = order.Create_LPO() and order.Process_LPO()
    print(order.LPONo if done else order.ErrDesc)
