#pragma once

#include <cstdint>
#include <optional>

#include "ombrix/grid.h"
#include "ombrix/purchase/posted_document.h"

namespace ombrix::purchase {

struct FilledReturn;

/// The purchase return: goods that go back to a vendor, on their own or from a source document.
///
/// Saving stores the return under a temporary number and moves nothing else. Processing sends the
/// stock out, posts ledger and tax, and raises a debit memo where the preferences ask for one; the
/// client then marks the source document with `UpdateReturnSource`. No figure is rounded.
///
/// Grid columns (row 0 is the heading): 1 selection (not 0 takes the row of a return with a
/// source), 2 item code without company prefix, 3 vendor's item code, 4 item name, 5 unit code, 6
/// unit name or unit name "-" period type, 7 base units in one line unit, 8 quantity, 9 unit price,
/// 10 discount on one unit, 11 overall discount of the line, 12 overall invoice discount of the
/// line, 13 net amount (9 to 13 in document currency), 14 net amount and 15 item discount in home
/// currency, 16 location name, 19 project, 21 location key, 26 overall invoice discount in home
/// currency. `Get_Purchase_Rtn` fills all of these but 19 (11 is what was stored, divided by
/// `ExchangeRate`), and 18 copy of the price, 22 overall
/// discount as stored, 23 the same for one unit, 24 copy of the quantity, 25 overall invoice
/// discount for one unit.
class PurchaseReturn final : public PostedDocument {
 public:
  PurchaseReturn();

  /// The exchange rate of the source document, for `Process_Return`; not stored. 0 is a rate like
  /// any other: left so with a source, the whole amount becomes an exchange variance.
  Number SourceExchangeRate;
  /// The kind of source document: "INV", "REC", "CAP", "DRI" or "GRN"; empty for a return on its
  /// own.
  Text Ref_Doc_Type;
  /// The identity of the source document, a plain number, for `UpdateReturnSource`.
  Property<std::string, Access::let> Refno;
  /// Held; no method reads it.
  Text Database;
  /// Held; no method reads it.
  Property<std::int32_t> LocationID;
  /// Held; no method reads it.
  Text LocationName;
  TrimmedText PurchaseRtnNo;
  Number PurchaseRtnIdentity;
  /// The zero date counts as missing.
  Day PurchaseRtnDate;
  TrimmedText PurchaseRtnRefNo;
  /// Also the comments of the ledger lines.
  TrimmedText PurchaseRtnComments;
  Flag ProcessedFlag;
  Flag CancelFlag;
  Flag AllowCancelFlag;
  /// `Process_Return` replaces the two amounts by the sums of the lines; the columns stay.
  Number PurchaseRtnAmount;
  Number PurchaseRtnFCAmount;
  Number PurchaseRtnSubTotal;
  Number PurchaseRtnFCSubTotal;
  Number PurchaseRtnDiscAmount;
  Number PurchaseRtnFCDiscAmount;
  /// Held; no method reads it.
  Number PurchaseRtnOverDiscAmount;
  Property<std::shared_ptr<Grid>> PurRetGridName;
  /// The series of the stock journal.
  Text StockMovementPrefix;

  /// Saves a new return under a temporary number; sets `PurchaseRtnNo` and `PurchaseRtnIdentity`.
  bool Create_Purchase_Rtn();
  /// Loads the return `PurchaseRtnNo` into the properties and the grid, through `ConnectionString`.
  /// The tax, the source's rate and the flags of processing are not restored.
  bool Get_Purchase_Rtn();
  /// Saves the return `PurchaseRtnNo` again: the number and identity stay, the lines are replaced.
  bool Update_Purchase_Rtn();
  /// Gives the return its final number and books it. It begins with `Get_Purchase_Rtn`, so the
  /// return must be committed; the grid stays as it is. After False `Get_Purchase_Rtn` reads no
  /// lines until a run comes to its end.
  bool Process_Return();
  /// Posts `TaxAmount` to the authorities of `TaxCode`; "PR" as `TaxType` is the credit side.
  bool PR_Tax_Posting();

  /// Adds `pQty`, in base units, to what came back of an item on its source document. A document
  /// without such a line passes. `Cn` and `pRefSLNO` are not used.
  bool Update_Source(std::shared_ptr<Connection>& Cn, std::string& pDocNo, double& pQty,
                     std::string& pSource, std::string& pItemCode, std::int32_t& pRefSLNO);
  /// Marks the processed source document `Refno` with the lines of the return; for "INV", "REC"
  /// and "CAP" only. Nothing records that it ran. Failures of its own rise to the client.
  bool UpdateReturnSource();

  /// Raises a debit memo for the saved return `pReturnNo`. When its series is numbered by hand the
  /// user is asked for the number in the input box.
  bool Generate_Debit_Memo(std::string& pReturnNo);
  /// Writes the memo's master row and its lines, from the saved return.
  bool Create_Voucher_Master(std::string& pReturnNo, std::string& pVoucherNo);
  /// Writes one line; `pType` is "Debit" or "Credit". `pFC`, `pCurCode` and `pCurSymbol` are not
  /// used: the line takes the currency of the return.
  bool Create_Voucher_Detail(std::string& pVoucherNo, std::string& pVouType, std::string& pAcNo,
                             std::string& pAcName, std::string& pType, double& pFcAmt, double& pAmt,
                             bool& pFC, std::string& pCurCode, std::string& pCurSymbol,
                             std::string& pPrjNo, std::int32_t& PSlNo);
  /// Hands the memo to the component that processes it. `pVoucherNo` holds what that leaves in it.
  bool Process_DebitMemo(std::string& pVoucherNo, double& manualIdentity, bool& ManualDocFlag);
  /// Whether a row has the value, or both values; a value that is no number stands between quotes.
  /// A failure shows in a message box and answers False.
  bool ExistDocument(const std::string& strTblName, const std::string& strFldName,
                     const std::string& DocNo, std::optional<bool>& WhereFldNumYN,
                     std::optional<std::string> SecondWhereFldName = std::nullopt,
                     std::optional<std::string> SecondWhereFldValue = std::nullopt,
                     std::optional<bool> SecdWhereFldNumType = std::nullopt);
  /// The field of the first row that the comparisons select, as text, through `ConnectionString`;
  /// "" when there is none or it is Null. A failure shows in a message box and answers "".
  std::string GetFldValue(const std::string& TblName, const std::string& fldName,
                          std::optional<std::string> WhereFldName = std::nullopt,
                          std::optional<std::string> WhereFldValue = std::nullopt,
                          std::optional<bool> WhereFldNumYN = std::nullopt,
                          std::optional<std::string> SecondWhereFldName = std::nullopt,
                          std::optional<std::string> SecondWhereFldValue = std::nullopt,
                          std::optional<bool> SecdWhereFldNumYN = std::nullopt);

 private:
  /// What the lines of a return come to while it is processed, and where it is posted.
  struct Booked;
  /// What one line comes to, in home and document currency, and the variance that its rate leaves.
  struct LineAmounts;

  bool Validate_Purchase_Rtn();
  bool Save_Purchase_Rtn_Master();
  bool Save_Purchase_Rtn_Detail();
  double next_serial() const;
  bool Get_Purchase_Rtn_Detail();
  void mark_item_type(FilledReturn& line);

  bool rename(FinalNumber& number);
  bool read_currency_symbol();
  bool book_lines(Booked& booked);
  bool book_line(Recordset& line, Booked& booked);
  LineAmounts amounts_of(Recordset& line) const;
  bool read_preferences(Booked& booked);
  bool credit_inventory(Recordset& line, const LineAmounts& amounts, Booked& booked);
  bool debit_accrual(const Booked& booked);
  bool post_variance(const Booked& booked);

  std::string item_field(Sibling general, std::string_view field, const std::string& item) const;
  bool take_out_of_stock(Recordset& line, double amount);
  bool Consume_Purchase_Log(Recordset& line);
  bool take_off_layers(const std::string& item, const std::string& costing_type, double quantity);
  bool Reduce_Item_Stock(const std::string& item, double quantity, double amount);
  bool lower_location_stock(Recordset& line);
  bool enter_stock_movement(Recordset& line);

  struct MemoLine;
  bool ask_memo_number(bool& manual, double& number);
  void write_memo_master(Recordset& document, const std::string& voucher_no);
  bool credit_accounts(Recordset& document, std::string& voucher_no);
  bool write_memo_line(std::string& voucher_no, MemoLine line);

  /// True from the beginning of `Process_Return` to its end: the grid is left alone.
  bool SkipReturnDetailLoad = false;
  /// The tax as the client gave it: posting it replaces `TaxAmount`.
  double SavedTaxAmount = 0;
  /// Of the line in hand, in base units.
  double ReturnBaseQty = 0;
};

}  // namespace ombrix::purchase
