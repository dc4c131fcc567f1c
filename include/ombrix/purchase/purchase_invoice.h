#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ombrix/grid.h"
#include "ombrix/purchase/posted_document.h"

namespace ombrix::purchase {

/// The purchase invoice: the vendor's bill for goods that were received or ordered.
///
/// Each line keeps two sides of a match: what is billed, and what was received or ordered.
/// Processing turns the difference into a purchase variance. The totals and the discount are the
/// client's: no save adds up the lines.
///
/// `InvoiceType` is stored; `RefInvoiceType` is not, and the client sets it before an order's lines
/// are fetched, before saving and before processing.
///
/// Grid columns (row 0 is the heading; rows whose columns 6, 7 and 8 are empty end the lines):
/// 1 line taken (text that converts to Boolean), 2 order number (whole, when the order is billed),
/// 3 order date, 4 and 5 vendor's document number and date, 6 item code without company prefix,
/// 7 vendor's item code, 8 item name, 9 unit code, 10 unit name or unit name "-" period type,
/// 11 base units in one unit, 12 quantity billed, 13 foreign unit price before discount, 14 item
/// discount percent, 15 foreign item discount on one unit, 16 and 17 home and foreign line amount,
/// 18 home item discount on one unit, 19 project, 20 line number on the source, 21 as 4, 22 and 23
/// receipt's number and date, 24 unit price billed, 25 and 26 home and foreign amount of the
/// source, 27 its unit price, 28 order number whole, 29 receipt kind ("GRN", or a direct receipt),
/// 30 free of charge (1 or 0), 31 and 33 home and foreign share of the order's overall discount, 32
/// and 34 line amounts less that share, 35 tax rate (0 for none). Columns 13, 14 and 21 are not
/// saved.
class PurchaseInvoice final : public PostedDocument {
 public:
  PurchaseInvoice();

  /// Of the source order, set by `Get_PO_details`; no method reads it.
  Number DiscountPercent;
  /// Held; no method reads it.
  Number DiscountMaster;
  /// Of the source order, set by `Get_PO_details`; no method reads it.
  Number POTaxAmount;
  /// Held; no method reads it.
  Number POTaxPercent;
  /// Decimals of every rounding.
  Number AmtDig;
  /// "Item" (which an empty value also means), "Fixed Asset" or "Costing Expense".
  Text Purchase_Type;
  /// What the invoice was drawn from: "LPO" or "OPO" for an order, anything else for receipts.
  Text RefInvoiceType;
  /// "GRN" for an invoice against receipts, any other text for one against an order.
  Text InvoiceType;
  /// The source order.
  Text PONo;
  Day PODate;
  /// Held; no method reads it.
  Number HomeCurrencyDigits;
  /// Held; no method reads it.
  Text Database;
  Reference<Grid> PInvoiceGridName;
  TrimmedText PurchaseInvNo;
  Number PurchaseInvIdentity;
  /// The zero date counts as missing.
  Day PurchaseInvDate;
  /// The vendor's own number and date; a number stands behind every ledger description.
  TrimmedText VendorRefInvoiceNo;
  Day VendorRefInvoiceDate;
  TrimmedText VendorRefDocumentPrefix;
  /// Home total, not negative. `Process_Invoice` leaves it negated.
  Number PurchaseInvAmount;
  Flag ProcessedFlag;
  Flag CancelFlag;
  Flag AllowCancelFlag;
  Flag FulFilledFlag;
  /// Also the comments of the ledger lines.
  TrimmedText PurchaseInvComments;
  Number PurchaseInvFCAmount;
  /// Not negative.
  Number PurchaseInvSubTotal;
  Number PurchaseInvFCSubTotal;
  /// The overall discount. A save spreads it over the lines when the foreign amount is positive.
  Number PurchaseInvDiscPercent;
  Number PurchaseInvDiscAmount;
  Number PurchaseInvFCDiscAmount;
  /// Stored as given; processing sets them to the figures of each line that varies.
  Number PurchaseVariance;
  Number FCPurchaseVariance;
  /// Filled by `Get_Purchase_Invoice`; a save resets the stored balance to the whole invoice.
  Number BalanceAmount;
  Number BalanceFCAmount;
  /// Held; no method reads it.
  Flag OBFlag;

  /// Saves a new invoice under a temporary number; sets `PurchaseInvNo` and `PurchaseInvIdentity`.
  bool Create_Purchase_Invoice();
  /// Loads the invoice `PurchaseInvNo` into the properties and the grid, through
  /// `ConnectionString`. After `Process_Invoice` was called the grid is left alone.
  bool Get_Purchase_Invoice();
  /// Fills the grid with the open receipt lines of `VendorCode`, none of them taken. A fixed-asset
  /// invoice sees only fixed assets, any other only the rest.
  bool Get_GRN_details();
  /// Saves the invoice `PurchaseInvNo` again: the number stays, the lines are replaced. A processed
  /// invoice is rewritten too.
  bool Update_Purchase_Invoice();
  /// Gives the invoice its final number, marks its sources invoiced (both but in a sync run), posts
  /// the variance and the accrual of its lines, the discount and the payable. It begins with
  /// `Get_Purchase_Invoice`, so the invoice must be committed.
  bool Process_Invoice();
  /// Posts the tax of the document to the authorities' accounts, see `PostedDocument`. No part of
  /// `Process_Invoice`.
  bool PI_Tax_Posting();
  /// Fills the grid with all lines of the order `PONo`, all taken, and takes vendor, currency and
  /// discount from the order. Without an order as `RefInvoiceType` it does nothing.
  bool Get_PO_details();

  /// One ledger line, which carries `TaxAmount` on top, and the move of its account, which does
  /// not. `pType` is "Debit" or "Credit". `pDesc` comes back with the vendor's reference behind it,
  /// `pInvAmt` negated on a credit.
  bool Account_Posting(std::string& pDesc, std::string& pAcNo, double& pInvAmt, double& pInvFCAmt,
                       std::string& pType);
  /// Reads the branch's accounts for the postings to come. The item is not looked at.
  bool Get_Item_Accounts(Value& pItemCode);

  /// The field of the first row that the comparisons select, as text, through `ConnectionString`;
  /// "" when there is none or it is Null. A "'" in a compared value is searched as "~". A failure
  /// shows in a message box and answers "".
  std::string GetFldValue(const std::string& TblName, const std::string& fldName,
                          std::optional<std::string> WhereFldName = std::nullopt,
                          std::optional<std::string> WhereFldValue = std::nullopt,
                          std::optional<bool> WhereFldNumYN = std::nullopt,
                          std::optional<std::string> SecondWhereFldName = std::nullopt,
                          std::optional<std::string> SecondWhereFldValue = std::nullopt,
                          std::optional<bool> SecdWhereFldNumYN = std::nullopt);
  /// `mString` with each "'" as "~", or back again when `mValidate` is False.
  std::string StringValidation(const std::string& mString, bool mValidate);

 private:
  bool Validate_Purchase_Invoice();
  bool Save_Purchase_Invoice_Master();
  bool Save_Purchase_Invoice_Detail();
  bool Get_Purchase_Invoice_Detail();
  void read_order_date(Recordset& master);

  bool bills_receipts() const { return InvoiceType() == "GRN"; }
  double read_order_master();

  bool give_final_number(FinalNumber& number);
  bool Assign_Final_Invoice_No(const std::string& number);
  bool Update_PO_Invoiced_Flag();
  bool Update_GRN_Invoiced_Flags();
  bool mark_goods_receipt(const std::string& number, const std::string& serial);
  bool mark_direct_receipt(const std::string& number, const std::string& serial);
  void mark_receipt(Recordset receipt, std::string_view flag);
  bool mark_receipt_line(Recordset line);

  struct Amounts;
  bool post(std::string description, std::string account, std::string side, double amount,
            double fc_amount);
  bool post_lines();
  bool post_line(Recordset& line);
  Amounts accrued(Recordset& line) const;
  bool varies(Recordset& line) const;
  bool post_variance(Recordset& line);
  bool post_discount();
  bool post_payable();
  Heading heading() const { return {PurchaseInvNo(), PurchaseInvDate(), PurchaseInvComments()}; }

  /// Of the branch, as last read.
  std::string PurAccrualAccountNo;
  std::string PurVarianceAccountNo;
  std::string FOCAccountNo;
  /// True once `Process_Invoice` was called: the grid is left alone.
  bool SkipDetailLoad = false;
};

}  // namespace ombrix::purchase
