"""The life of an order, driven by name."""

import datetime
import unittest

import ombrix
from books import DAY, LINE, BooksTest

FINAL = "AA01LPO118"


class OrderLife(BooksTest):
    def test_an_order_is_saved_read_changed_and_processed(self):
        self.assertIs(self.order.Create_LPO(), True, self.order.ErrDesc)
        self.assertEqual(self.order.LPONo, "AA01LPOTMP1")
        self.assertEqual(self.order.LPOIdentity, 1.0)
        self.assertEqual(
            self.rows("Select LPO_No, LPO_Date, Vendor_Code, LPO_Total_Amount, LPO_FC_Total_Amount,"
                      " LPO_Comments, Processed_Flag From LPO_Master"),
            [("AA01LPOTMP1", "2024-03-01 00:00:00", "AAV001", 90.12, 90.125, None, None)])
        self.assertEqual(
            self.rows("Select SL_No, Item_Code, Item_Name, Unit_Name, Period_Type, Unit_Qty,"
                      " LPO_Qty, LPO_Unit_Price, LPO_Item_Amount, Account_No, TaxType"
                      " From LPO_Detail"),
            [(1, "AA1001", "Flour", "Bag", "Weekly", 25, 4, 22.5, 90, "AA01GL5000", "Exempted")])

        self.order.LPOComments = "Before noon"
        self.grid.Rows = 3
        for column, value in {**LINE, 3: "Rye flour", 7: 6, 18: 1}.items():
            self.grid[2, column] = value
        self.assertTrue(self.order.Update_LPO(), self.order.ErrDesc)

        read = ombrix.create("OmbrixPurchase.LPO")
        read.ConnectionString, read.LPONo = self.text, "AA01LPOTMP1"
        read.GridName = lines = ombrix.Grid(rows=1, cols=21)
        self.assertTrue(read.Get_LPO(), read.ErrDesc)
        self.assertEqual((read.LPOComments, read.VendorName, read.LPODate),
                         ("Before noon", "Harbour Foods", DAY))
        self.assertEqual((lines.Rows, lines[1, 4], lines[2, 3], lines[2, 7], lines[2, 15]),
                         (4, "Bag-Weekly", "Rye flour", "6", "AA01GL5000"))
        self.assertEqual(lines.ValueMatrix(2, 11), 90.0)
        self.assertEqual([mark[:5] for mark in lines.marks],
                         [(13, 1, 0, 1, 18), (13, 2, 0, 2, 18)])
        self.assertEqual([float(mark[5]) for mark in lines.marks], [0.0, 1.0])

        self.assertTrue(self.order.Process_LPO(), self.order.ErrDesc)
        self.assertEqual(self.order.LPONo, FINAL)
        self.assertEqual(self.rows("Select LPO_No, LPO_Identity, Processed_Flag From LPO_Master"),
                         [(FINAL, 118, 1)])
        self.assertEqual(self.rows("Select LPO_No, SL_No From LPO_Detail Order By SL_No"),
                         [(FINAL, 1), (FINAL, 2)])
        self.assertEqual(self.rows("Select Purchase_Order_Qty From Item_Master"),
                         [(10 + (4 + 6) * 25 * 2,)])
        self.assertEqual(self.rows("Select Document_Next_No From Document_Prefix"), [(119,)])


class Transactions(BooksTest):
    def count(self):
        return self.rows("Select Count(*) From LPO_Master")[0][0]

    def test_true_commits_false_and_raising_roll_back(self):
        broken = self.order_on(self.grid_of({**LINE, 15: ""}))
        self.assertIs(self.books.all_or_nothing(broken.Create_LPO), False)
        self.assertEqual(broken.ErrDesc, "Invalid Details")
        self.assertEqual(self.count(), 0)

        def saved_but(ending):
            self.assertTrue(self.order.Create_LPO(), self.order.ErrDesc)
            if isinstance(ending, BaseException):
                raise ending
            return ending

        for ending in (None, 1):
            self.assertEqual(self.books.all_or_nothing(saved_but, ending), ending)
        for ending in (ValueError("no"), KeyboardInterrupt()):
            with self.assertRaises(type(ending)):
                self.books.all_or_nothing(saved_but, ending)
        self.assertEqual(self.count(), 0)
        self.assertIs(self.books.all_or_nothing(self.order.Create_LPO), True)
        self.assertEqual(self.count(), 1)

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
        self.order.AdoConnectionObject = other
        self.assertFalse(self.order.Create_LPO())
        self.assertEqual(self.order.ErrDesc, "Invalid Connection.")
        unopened = ombrix.Connection()
        self.assertEqual((unopened.State, unopened.ConnectionString), (0, ""))
        unopened.Open(self.text)
        self.assertFails(3705, "open", unopened.Open, self.text)
        unopened.Close()
        unopened.Open()
        self.assertEqual(unopened.State, 1)

    def test_no_password_is_shown(self):
        text = "Driver=PostgreSQL;Host=127.0.0.1;Port=1;Database=x;Username=u;Password=tell-no-one"
        with self.assertRaises(ombrix.Failure) as caught:
            ombrix.Connection(text)
        self.assertNotIn("tell-no-one", str(caught.exception) + repr(caught.exception))
        self.assertEqual(repr(self.books), "<Connection open>")


class Values(BooksTest):
    def test_values_come_back_as_they_went(self):
        for name, value, read in (
                ("VendorName", "Caf\u00e9 \U0001f9c0 \u4e2d", None), ("TaxCode", "a\0b", None),
                ("LPODate", datetime.datetime(2024, 2, 29, 23, 59, 58), None),
                ("LPODate", datetime.date(1850, 1, 2), datetime.datetime(1850, 1, 2)),
                ("LPODate", datetime.datetime(2024, 1, 1, tzinfo=datetime.timezone.utc),
                 datetime.datetime(2024, 1, 1)),
                ("AmtDig", 3, 3.0), ("AmtDig", 2**40, float(2**40)), ("AmtDig", True, -1.0),
                ("OnlineFlag", True, None), ("OnlineFlag", 0, False), ("TaxCode", 1.5, "1.5")):
            with self.subTest(name=name, value=value):
                setattr(self.order, name, value)
                got, wanted = getattr(self.order, name), value if read is None else read
                self.assertEqual((got, type(got)), (wanted, type(wanted)))
        fresh = ombrix.create("OmbrixPurchase.LPO")
        self.assertEqual(fresh.LPODate, datetime.datetime(1899, 12, 30))


if __name__ == "__main__":
    unittest.main()
