#pragma once

#include <cstdint>
#include <string>

#include "ombrix/grid.h"
#include "ombrix/purchase/posted_document.h"

namespace ombrix::purchase {

struct CashPurchaseColumns;

/// A number that goes in and out as text, in its general form. A text that is no number raises
/// "Type mismatch" and leaves what was there.
class NumberText {
 public:
  using Type = std::string;
  static constexpr Access access = kGetLet;

  NumberText() = default;
  NumberText(const NumberText&) = delete;

  NumberText& operator=(const std::string& text) {
    held_ = Value(text).to_number();
    return *this;
  }
  std::string operator()() const { return Value(held_).to_text(); }
  double number() const { return held_; }

 private:
  double held_ = 0;
};

/// The cash purchase: goods that are bought and paid in one document, which is order, receipt,
/// invoice and payment in one.
///
/// Amounts are the client's, in foreign currency; every save works the home amounts out of them
/// with `ExchangeRate`, which the client sets to 1 in home currency. A save starts the life of the
/// document anew: its flags go back to False and its status to "Saved", also on a processed one.
///
/// Grid columns (row 0 is the heading; the first row whose columns 1 and 3 are empty ends the
/// lines): 1 item code without company prefix, 2 vendor's item code, 3 item name, 4 unit code,
/// 5 unit name or unit name "-" period type, 6 base units in one unit, 7 quantity, 8 foreign unit
/// price before discount, 9 home unit price, 10 item discount percent, 11 and 12 home and foreign
/// discount on one unit, 13 and 14 home and foreign line amount, 15 account without its prefix,
/// 16 location name, 17 account, 18 project, 19 project without its prefix, 20 location, 21 free of
/// charge (1 or 0), 22 tax mark (1 or 0), 23 tax class. Columns 8, 9, 15 and 22 are not saved;
/// column 23 is not filled.
class CashPurchase final : public PostedDocument {
 public:
  CashPurchase();

  /// Filled by `Get_Direct_PInvoice`: "Saved", then "Processed" when paid in cash, else
  /// "In Transit". What a client lets here is not saved.
  Text Status;
  /// Decimals of every rounding.
  NumberText AmtDig;
  /// Stored; no method acts on it.
  Text ChequeToPay;
  /// "Item" (which an empty value also means), "Fixed Asset" or "Costing Expense". The item codes
  /// of the last are stored behind company and branch, all others behind the company alone.
  Text Purchase_Type;
  /// The bank account that a cheque is drawn on.
  Text Cheque_Bank_AccountNo;
  /// "Cash", "Cheque" or "Credit Card".
  Text Payment_Type;
  /// Series of the purchase log entries and of the stock movements.
  Property<std::string, Access::let> PurchaseLogPrefix;
  Property<std::string, Access::let> StockMovementPrefix;
  Property<std::shared_ptr<Grid>> GridName;
  TrimmedText CashPurInvNo;
  Number CashPurInvIdentity;
  /// The zero date counts as missing.
  Day CashPurInvDate;
  /// The vendor's own number and date.
  TrimmedText VendorRefInvoiceNo;
  Day VendorRefInvoiceDate;
  TrimmedText VendorRefDocumentPrefix;
  /// Home total, not negative; saved as the balance alone. Posting replaces it and
  /// `CashPurInvFCAmount` with the sums of the lines.
  Number CashPurInvAmount;
  /// Filled by `Get_Direct_PInvoice`; a save writes False.
  Flag ProcessFlag;
  Flag CancelFlag;
  Flag AllowCancelFlag;
  Flag FulFilledFlag;
  /// Also the comments of stock and ledger entries.
  TrimmedText CashPurInvComments;
  Number CashPurInvFCAmount;
  /// Filled by `Get_Direct_PInvoice`; a save works it out of the foreign one.
  Number CashPurInvSubTotal;
  /// Not negative.
  Number CashPurInvFCSubTotal;
  /// The overall discount. A save spreads it over the lines when the foreign amount is positive;
  /// the home amount serves the last line only and is not saved.
  Number CashPurInvDiscPercent;
  Number CashPurInvDiscAmount;
  Number CashPurInvFCDiscAmount;
  /// Held; no method reads them.
  Property<std::int32_t> LocationID;
  Text LocationName;
  Text ChequeNo;
  Text ChequeBank;
  Day ChequeDate;
  Text CreditCardCode;
  Text CreditCardName;
  Text CreditCardNo;

  /// Saves a new purchase under a temporary number; sets `CashPurInvNo` and `CashPurInvIdentity`.
  bool Create_Cash_Purchase_Invoice();
  /// Saves the purchase `CashPurInvNo` again: the number stays, the lines are replaced.
  bool Update_Cash_Purchase_Invoice();
  /// Loads the purchase `CashPurInvNo` into the properties and the grid, through
  /// `ConnectionString`. The grid is left alone after a `Process_Cash_Purchase` that failed, or
  /// that drew no number from the counter.
  bool Get_Direct_PInvoice();
  /// Gives the purchase its final number (but in a sync run), moves stock and costs, and posts
  /// lines, payment and tax in every run. It begins with `Get_Direct_PInvoice`, so the purchase
  /// must be committed. A second call books everything again.
  bool Process_Cash_Purchase();
  /// Posts the tax of the document to the authorities' accounts, see `PostedDocument`.
  bool CP_Tax_Posting();
  /// Reads the bank of card payments. False with a reason for a branch without preferences; a
  /// failure rises.
  bool Get_Default_Accounts();
  /// Enters the payment in the register of the bank, in online and sync runs; a cheque moves the
  /// next cheque number of its account on.
  bool Cheque_Process();
  /// An account that no bank has is no failure; one that is raised rises.
  bool Incerase_Cheque_No(std::string& pAcNo);

 private:
  friend struct CashPurchaseColumns;

  bool Validate_Cash_Purchase();
  bool Save_Cash_Purchase_Master();
  bool Save_Cash_Purchase_Detail();
  bool Get_Cash_Purchase_Detail();
  void take_currency_symbol();
  std::int32_t next_serial() const;
  void read_status(Recordset& master);
  void mark_location(Grid& grid, std::int32_t row) const;

  bool rename(FinalNumber& number);
  bool move_stock();
  /// What the document's percentage takes off a line.
  double discount_on(Recordset& line) const;

  struct LineAccounts;
  struct Totals;
  bool Post_Cash_Purchase();
  bool Post_Cash_Purchase_Items();
  bool read_line_accounts(LineAccounts& accounts);
  bool post_line(Recordset& line, const LineAccounts& accounts, Ledger& ledger, Totals& totals);
  std::string item_text(Recordset& line) const;
  bool Post_Cash_Payment();
  bool Post_Accounts_Payable();
  bool credit_payment(const std::string& description, const std::string& account);
  Heading heading() const { return {CashPurInvNo(), CashPurInvDate(), CashPurInvComments()}; }

  /// As last read by `Get_Default_Accounts`.
  std::string CreditCardPaymentAccountNo;
  /// While it is True, reading leaves the grid alone.
  bool SkipCashDetailLoad = false;
};

}  // namespace ombrix::purchase
