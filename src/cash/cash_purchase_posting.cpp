#include <array>

#include "ombrix/purchase/cash_purchase.h"

#include "base/names.h"
#include "base/number.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/trap.h"
#include "hosting/dialogue.h"
#include "posting/ledger.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

/// Of the branch.
struct CashPurchase::LineAccounts {
  std::string purchase, free_of_charge;
};

/// Of the lines, each rounded.
struct CashPurchase::Totals {
  double amount = 0;
  double fc_amount = 0;
};

bool CashPurchase::Post_Cash_Purchase() {
  if (!Get_Default_Accounts()) {
    show_message("Please Assign the Default Purchase Preferences Accounts");
    return false;
  }
  if (!Post_Cash_Purchase_Items()) return false;
  const auto paid_by = [&](std::string_view type) { return same_name(trim(Payment_Type()), type); };
  if (paid_by("Cash")) return Post_Cash_Payment();
  if (paid_by("Cheque") || paid_by("Credit Card")) {
    return Post_Accounts_Payable() && Cheque_Process();
  }
  return true;
}

bool CashPurchase::Get_Default_Accounts() {
  auto preferences = open(
      sql({"Select * from Default_Account_Preferences Where Branch_Prefix=", text(BranchPrefix()),
           " and Company_Prefix=", text(CompanyPrefix())}),
      Keyset);
  if (preferences.IsEOF()) return refused("Set the Default Account Preferences");
  const std::string account = preferences("CreditCard_Payment_Account_No").text_or_empty();
  if (!account.empty()) CreditCardPaymentAccountNo = account;
  return true;
}

bool CashPurchase::read_line_accounts(LineAccounts& accounts) {
  auto preferences =
      open(sql({"Select * from Default_Purchase_Preferences Where Company_Prefix = ",
                text(CompanyPrefix()), " and Branch_Prefix = ", text(BranchPrefix())}),
           Keyset);
  if (preferences.IsEOF()) {
    return refused("Set the Purchase default settings in the Purchase Preferences");
  }
  accounts.purchase = preferences("Cash_Purchase_Account_No").text_or_empty();
  accounts.free_of_charge = preferences("FOC_Account_No").text_or_empty();
  return true;
}

bool CashPurchase::Post_Cash_Purchase_Items() {
  LineAccounts accounts;
  if (!read_line_accounts(accounts)) return false;
  Ledger ledger(*this);
  ledger.set({{"GLDate", CashPurInvDate()},
              {"DocumentNo", CashPurInvNo()},
              {"DocumentPrefix", DocumentPrefix()},
              {"CurrencyCode", CurrencyCode()},
              {"CurrencySymbol", CurrencySymbol()},
              {"ForeignCurrencyFlag", ForeignCurrencyFlag()},
              {"LastUpdate", LastUpdate()}});
  auto line =
      open(sql({"Select *  from Cash_Purchase_Detail Where  Cash_Pur_Inv_No=", text(CashPurInvNo()),
                " Order By Sl_No"}),
           KeysetPessimistic);
  Totals totals;
  for (; !line.IsEOF(); line.MoveNext()) {
    if (!post_line(line, accounts, ledger, totals)) return false;
  }
  CashPurInvAmount = totals.amount;
  CashPurInvFCAmount = totals.fc_amount;
  return true;
}

bool CashPurchase::post_line(Recordset& line, const LineAccounts& accounts, Ledger& ledger,
                             Totals& totals) {
  const auto net = [&](std::string_view amount, std::string_view discount) {
    const Value taken_off = line.read(discount);
    return line.read(amount).to_number() - (taken_off.is_null() ? 0 : taken_off.to_number());
  };
  const double amount = net("Cash_Pur_Inv_Item_Amount", "Cash_Pur_Inv_Overall_Disc_Amount");
  const double fc_amount =
      net("Cash_Pur_Inv_FC_Item_Amount", "Cash_Pur_Inv_Overall_FC_Disc_Amount");
  totals.amount += round_half_even(amount, AmtDig.number());
  totals.fc_amount += round_half_even(fc_amount, AmtDig.number());
  if (accounts.purchase.empty()) {
    return refused(
        "Invalid Default Inventoty Account. Set Default Accounts in the Purchase Preferences");
  }
  const auto state = [&](const std::string& account, const std::string& description, Side side) {
    const bool credit = side == Side::credit;
    ledger.set({{"AccountNo", account},
                {"GLDescription", description},
                {"GLDebitAmount", credit ? 0.0 : amount},
                {"FCGLDebitAmount", credit ? 0.0 : fc_amount},
                {"GLCreditAmount", credit ? amount : 0.0},
                {"FCGLCreditAmount", credit ? fc_amount : 0.0}});
    if (!CashPurInvComments().empty()) ledger.set({{"GLComments", CashPurInvComments()}});
    return ledger.insert();
  };
  const std::string item = item_text(line);
  if (!state(accounts.purchase,
             "Inventory Account : Item - " + item + " - Ref.No:" + VendorRefInvoiceNo() +
                 "- Ref.Date:" + VendorRefInvoiceDate().general_text(),
             Side::debit)) {
    return false;
  }
  // The account as the component has it, which may have put another in its place.
  std::string account = ledger.get("AccountNo").text_or_empty();
  double movement = amount;
  if (!ledger.move(account, movement)) return false;

  const Value free = line("FOC_Flag");
  if (free.is_null() || !free.to_flag()) return true;
  account = accounts.free_of_charge;
  movement = 0 - amount;
  return state(account, "Purchase FOC Account : Item - " + item, Side::credit) &&
         ledger.move(account, movement);
}

std::string CashPurchase::item_text(Recordset& line) const {
  const auto trimmed = [&](std::string_view column) {
    return std::string(trim(line.read(column).text_or_empty()));
  };
  if (line("Item_Code").text_or_empty().empty()) return trimmed("Item_Name");
  const std::string code = trimmed("Item_Code");
  if (Purchase_Type() != "Costing Expense") return std::string(without_first(code, 2));
  return std::string(without_first(code, 4)) + " : " + line("Vendor_Item_Code").text_or_empty();
}

bool CashPurchase::Post_Cash_Payment() {
  auto general = sibling("OmbrixSystem.General");
  general.set("AdoConnectionObject", raw(AdoConnectionObject));
  std::array<Value, 8> look_up{"Default_Account_Preferences",
                               "Cash_Memo_Account_No",
                               "Company_Prefix",
                               CompanyPrefix(),
                               false,
                               "Branch_Prefix",
                               BranchPrefix(),
                               false};
  const std::string account = general.ask("GetFldValue", look_up).text_or_empty();
  if (trim(account).empty()) return refused("Invalid Default Cash Purchase Account");
  return credit_payment("Cash Purchase Account", account);
}

bool CashPurchase::credit_payment(const std::string& description, const std::string& account) {
  Ledger ledger(*this);
  ledger.state(heading(), {description, account, Side::credit, CashPurInvAmount() + TaxAmount(),
                           CashPurInvFCAmount() + TaxAmount()});
  // The tax moves the balance by a posting of its own.
  return ledger.post(account, -CashPurInvAmount());
}

bool CashPurchase::Post_Accounts_Payable() {
  std::string account;
  const Payable payable{.heading = heading(),
                        .reference = VendorRefInvoiceNo(),
                        .reference_date = VendorRefInvoiceDate(),
                        .vendor = std::string(trim(VendorCode())),
                        .amount = CashPurInvAmount() + TaxAmount(),
                        .fc_amount = TaxAmount() + CashPurInvFCAmount(),
                        .tells_branch = false};
  return find_payable_account(false, account) && enter_payable(payable, account) &&
         credit_payment(payable_description(), account);
}

bool CashPurchase::CP_Tax_Posting() {
  return post_tax({.heading = heading(), .own_type = "CP", .digits = AmtDig.number()});
}

}  // namespace ombrix::purchase
