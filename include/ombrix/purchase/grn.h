#pragma once

#include "ombrix/grid.h"
#include "ombrix/purchase/posted_document.h"

namespace ombrix::purchase {

struct GRNColumns;
struct GRNLine;

/// The goods receive note: goods of a purchase order have arrived.
///
/// Prices are not typed in: the amounts of a line are derived from the order's line. In home
/// currency the client sets `ExchangeRate` to 1, as every home amount is the foreign one times it.
///
/// Grid columns (row 0 is the heading; a row is taken when 1 is not zero and 8 is positive):
/// 1 selection, 2 item code without company prefix, 3 vendor's item code, 4 item name, 5 unit name
/// or unit name "-" period type, 6 unit code, 7 base units in one unit, 8 quantity of the order
/// line, 9 quantity received, 16 location name, 17 line number on the order, 18 the item's account,
/// 19 project, 20 location, 21 free-of-charge mark, 22 and 23 overall discount of the order line in
/// home and foreign currency, 24 tax class ("Taxable" or other), 25 tax rate.
class GRN final : public PostedDocument {
 public:
  GRN();

  /// Decimals of every rounding.
  Number AmtDig;
  /// "Item" (which an empty value also means), "Fixed Asset" or "Costing Expense"; taken from the
  /// order when the receipt is saved.
  Text Purchase_Type;
  Day OrderDate;
  /// Held; no method reads them.
  Property<std::int32_t> LocationID;
  Text LocationName;
  TrimmedText GRNNo;
  /// The zero date counts as missing.
  Day GRNDate;
  Number GRNIdentity;
  /// Held; no method reads it.
  Flag DirectGRNFlag;
  /// Also the comments of stock and ledger entries.
  TrimmedText GRNComments;
  /// The order's number, and its type: "LPO" or "OPO".
  TrimmedText GRNRefDocumentNo;
  TrimmedText GRNRefDocumentPrefix;
  /// Filled by `Get_GRN`; what a client lets here is not saved.
  Flag GRNInvoicedFlag;
  /// Must not be negative.
  Number GRNAmount;
  Flag ProcessedFlag;
  TrimmedText VendorRefDocumentNo;
  Day VendorRefDocumentDate;
  /// Not saved: the totals come from the lines.
  Number GRNFCAmount;
  /// Sums over the lines, set by a save.
  Number GRNSubTotal;
  Number GRNFCSubTotal;
  Number GRNDiscountAmount;
  Number GRNFCDiscountAmount;
  /// Filled by `Get_GRN`; not saved.
  Number GRNCostingAmount;
  Number GRNFCCostingAmount;
  Property<bool, Access::get> CancelFlag;
  Reference<Grid> GridName;
  /// Series of the purchase log entries and of the stock movements.
  Property<std::string, Access::let> PurchaseLogPrefix;
  Property<std::string, Access::let> StockMovementPrefix;
  /// Held; no method reads it.
  Text Database;

  /// Saves a new receipt under a temporary number; sets `GRNNo` and `GRNIdentity`.
  bool Create_GRN();
  /// Saves the receipt `GRNNo` again: the number stays, the lines are replaced. A processed receipt
  /// is rewritten too.
  bool Update_GRN();
  /// Reads the master of `GRNNo` into the properties; the grid is left alone.
  bool Get_GRN();
  /// Gives the receipt its final number and books it on its order (online and offline runs), moves
  /// stock and costs and posts the ledger (online and sync runs). A second call books again.
  bool ProcessGRN();
  /// Posts the tax of the document to the authorities' accounts, see `PostedDocument`.
  bool GRN_Tax_Posting();
  /// One ledger line and the move of its account. `pType` is "Debit" or "Credit"; on a credit
  /// `pInvAmt` comes back negated.
  bool GL_Posting(std::string& pDesc, std::string& pAcNo, double& pInvAmt, double& pInvFCAmt,
                  std::string& pType);
  /// Debits each line's account and credits the purchase accrual, or the account for goods free of
  /// charge.
  bool GRN_Posting();

 private:
  friend struct GRNColumns;
  struct Accounts;

  bool Validate_GRN();
  bool Save_GRN_Master();
  bool Save_GRN_Detail();
  bool save_totals();
  void take_purchase_type_of_order();
  void derive_amounts(GRNLine& line) const;
  void count_in(const GRNLine& line);

  bool Check_Order_Invoiced();
  bool Update_Order_Received();
  bool book_on_order(Recordset& line);
  bool rename(Recordset& master, FinalNumber& number);
  /// "Fixed Asset", "Costing Expense" and the like move no stock.
  bool enters_stock() const { return Purchase_Type().empty() || Purchase_Type() == "Item"; }
  bool move_stock();

  bool read_accounts(Accounts& accounts);
  bool post_line(Recordset& line, const Accounts& accounts);
  double order_discount_percent();
  /// The order of the receipt, and one line of it, in the tables of its type.
  Recordset open_order(OpenMode mode) const;
  Recordset open_order_line(std::string_view sl_no) const;
  Recordset open_order_state() const;
  bool on_lpo() const { return GRNRefDocumentPrefix() == "LPO"; }
  Heading heading() const { return {GRNNo(), GRNDate(), GRNComments()}; }

  /// The order's state of being invoiced, as last seen; what the writers store.
  Flag OrderInvoicedFlag;
};

}  // namespace ombrix::purchase
