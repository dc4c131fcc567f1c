#include <array>

#include "ombrix/purchase/vendor_ob.h"

#include "base/raw.h"
#include "database/statement.h"
#include "frame/numbering.h"
#include "frame/trap.h"
#include "frame/vendor_accounts.h"
#include "vendor/vendor_ob_columns.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

/// What kind of document is made of a balance.
struct VendorOB::Making {
  database::Statement table;
  std::span<const Column<OpeningBalance>> columns;
  const std::string& account;
  bool credit;  ///< otherwise the entry is a debit, and names the vendor's reference
};

bool VendorOB::Process_OB() {
  if (VendorCode().empty()) return refused("Invalid Vendor");
  if (OBType().empty()) return refused("Invalid Opening Balance Type");
  if (connection().State() == 0) return refused("Invalid Connection.");
  return trapped(Trap::plain, [&] {
    Accounts accounts;
    if (!read_accounts(accounts)) return false;
    const Making making = OBType() == "Credit"
                              ? Making{sql({"Select * from Purchase_Invoice_Master"}),
                                       opening_invoice_columns(), accounts.payable, true}
                              : Making{sql({"Select * from Payment_Master"}),
                                       opening_payment_columns(), accounts.advance, false};
    auto line = open(sql({"Select * from Vendor_OB Where Vendor_Code=", text(VendorCode()),
                          " And OBType = ", text(OBType()),
                          " and branch_prefix=", text(BranchPrefix()), " order by SL_No"}),
                     Keyset);
    double total = 0;
    for (; !line.IsEOF(); line.MoveNext()) {
      OpeningBalance balance{*this};
      take(line, balance);
      total += balance.amount;
      if (!make_document(making, balance)) return false;
      line("OB_Inv_No") = balance.number;
      line("Last_Update") = LastUpdate();
      line.Update();
    }
    line.Close();
    return SyncFlag() || move_chart(making.account, making.credit ? 0 - total : total);
  });
}

bool VendorOB::read_accounts(Accounts& accounts) {
  VendorAccounts preferences(asker());
  preferences.tell("BranchPrefix", BranchPrefix());
  preferences.tell("CompanyPrefix", CompanyPrefix());
  if (!preferences.read(raw(CompanyPrefix), raw(BranchPrefix))) return false;
  accounts.payable = preferences.payable();
  accounts.advance = preferences.advance();
  return preferences.has_payable(accounts.payable) && preferences.has_advance(accounts.advance);
}

void VendorOB::take(Recordset& line, OpeningBalance& balance) {
  balance.ref_no = line("Ref_No").text();
  balance.ref_date = line("Ref_Date").date();
  balance.amount = line("Balance_Amount").number();
  balance.fc_amount = line("Balance_FCAmount").number();
  balance.exchange_rate = line("Exchange_Rate").number();
  const std::string comments = line("OB_Comments").text_or_empty();
  balance.comments = comments.empty() ? balance.ref_no : balance.ref_no + " : " + comments;
  ForeignCurrencyFlag = line("Foreign_Currency_Flag").flag();
  raw(CurrencyCode) = line("Currency_Code").text();
  raw(CurrencySymbol) = line("Currency_Symbol").text();
}

bool VendorOB::make_document(const Making& making, OpeningBalance& balance) {
  return trapped(Trap::plain, [&] {
    SeriesCounter counter(asker(), {CompanyPrefix(), BranchPrefix(), DocumentPrefix()});
    counter.skip_checking();
    if (!counter.draw()) return false;
    balance.identity = counter.whole_number();
    balance.number =
        CompanyPrefix() + BranchPrefix() + DocumentPrefix() + std::to_string(balance.identity);
    auto document = open(making.table, Keyset);
    document.AddNew();
    write_columns(making.columns, balance, document);
    document.Update();
    document.Close();
    return enter_payable(making, balance) && counter.move_on();
  });
}

bool VendorOB::enter_payable(const Making& making, const OpeningBalance& balance) {
  const auto on = [](bool side, double amount) { return side ? amount : 0.0; };
  auto payable = sibling("OmbrixAccounts.AccountsPayable");
  payable.set({
      {"AdoConnectionObject", raw(AdoConnectionObject)},
      {"CompanyPrefix", CompanyPrefix()},
      {"BranchPrefix", BranchPrefix()},
      {"DocumentPrefix", DocumentPrefix()},
      {"ForeignCurrencyFlag", false},  // whatever the currency: the foreign amounts go along
      {"VendorCode", VendorCode()},
      {"DocumentNo", balance.number},
      {"APLDate", balance.ref_date},
      {"AccountNo", making.account},
      {"APLDescription",
       "Vendor Opening Balance Vendor Code-" + std::string(without_first(VendorCode(), 2))},
      {"APLComments", balance.comments},
      {"APLCreditAmount", on(making.credit, balance.amount)},
      {"FCAPLCreditAmount", on(making.credit, balance.fc_amount)},
      {"APLDebitAmount", on(!making.credit, balance.amount)},
      {"FCAPLDebitAmount", on(!making.credit, balance.fc_amount)},
      {"CurrencyCode", CurrencyCode()},
      {"CurrencySymbol", CurrencySymbol()},
      {"LastUpdate", LastUpdate()},
  });
  if (!making.credit) payable.set({{"Refno", balance.ref_no}, {"RefDate", balance.ref_date}});
  return payable.call("AP_Insert_Transaction") || refused_by(payable);
}

bool VendorOB::move_chart(const std::string& account, double movement) {
  auto chart =
      open(sql({"Select * from Chart_Of_Accounts Where Account_No=", text(account)}), Static);
  if (chart.RecordCount() < 1) return refused("Error while Processing vendor Opening balance.");
  chart("Opening_Balance") = sum(chart("Opening_Balance"), movement);
  chart("Last_Update") = LastUpdate();
  chart.Update();
  return true;
}

}  // namespace ombrix::purchase
