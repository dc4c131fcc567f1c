#include "ombrix/purchase/grn.h"

#include "base/number.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/trap.h"
#include "posting/ledger.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

/// Of the branch. A branch without preferences leaves what the line before took.
struct GRN::Accounts {
  std::string accrual, free_of_charge, discount;
};

bool GRN::GL_Posting(std::string& pDesc, std::string& pAcNo, double& pInvAmt, double& pInvFCAmt,
                     std::string& pType) {
  return trapped(Trap::plain, [&] {
    return Ledger(*this).post(heading(), {pDesc, pAcNo, pInvAmt, pInvFCAmt, pType});
  });
}

bool GRN::GRN_Posting() {
  return trapped(Trap::plain, [&] {
    auto line = open(
        sql({"Select * from Goods_Receive_Detail Where GRN_No=", text(GRNNo()), " Order By Sl_No"}),
        KeysetPessimistic);
    Accounts accounts;
    for (; !line.IsEOF(); line.MoveNext()) {
      if (!read_accounts(accounts) || !post_line(line, accounts)) return false;
    }
    return true;
  });
}

bool GRN::read_accounts(Accounts& accounts) {
  auto preferences = open(sql({"Select * from Default_Purchase_Preferences Where Branch_Prefix=",
                               text(BranchPrefix())}),
                          Static);
  if (preferences.RecordCount() == 0) return true;
  const auto take = [&](std::string& account, std::string_view column, std::string_view missing) {
    const Value value = preferences.read(column);
    if (value.is_null()) return refused(missing);
    account = value.to_text();
    return true;
  };
  return take(accounts.accrual, "Pur_Accrual_Account_No",
              "Set the Default Purchase Accrual account in the Purchase Preferences") &&
         take(accounts.free_of_charge, "FOC_Account_No",
              "Set the Default FOC Purchase Account in the Purchase Preferences") &&
         take(accounts.discount, "Discount_Account_No",
              "Set the Default Discount Account in the Purchase Preferences");
}

double GRN::order_discount_percent() {
  auto order = open(
      sql({"Select LPO_Discount_Percent from LPO_Master Where LPO_No=", text(GRNRefDocumentNo())}),
      Keyset);
  return order.RecordCount() == 0 ? 0 : order("LPO_Discount_Percent").number();
}

bool GRN::post_line(Recordset& line, const Accounts& accounts) {
  const auto rounded = [&](double amount) { return round_half_even(amount, AmtDig()); };
  const double fc_amount = line("GRN_FC_Item_Amount").number();
  const double amount = rounded(fc_amount * ExchangeRate());
  const double percent = order_discount_percent();
  const double discount = rounded(amount * percent / 100);
  const double fc_discount = rounded(percent * fc_amount / 100);

  const std::string account = line("Account_No").text_or_empty();
  if (account.empty()) {
    return refused(
        "Invalid Default Inventory Account. Set Default Accounts in the Purchase Preferences");
  }
  const bool fixed_asset = Purchase_Type() == "Fixed Asset";
  const std::string item_code = line("Item_Code").text_or_empty();
  const std::string code(without_first(trim(item_code), 2));
  const std::string thing = (fixed_asset ? "Fixed Asset ID - " : "Item Code - ") + code;
  const auto post = [&](std::string description, std::string account_no, double home,
                        double foreign, std::string side) {
    return GL_Posting(description, account_no, home, foreign, side);
  };

  if (!post(fixed_asset ? "Fixed Asset Account : Asset ID - " + code
                        : "Inventory Account : Item Code - " + code,
            account, amount - discount, fc_amount - fc_discount, "Debit")) {
    return false;
  }
  const bool free = line("FOC_Flag").flag();
  // The tax of the whole document, the same figure in both currencies, rides on each such credit.
  const double tax = free || line("TaxType").text_or_empty() == "Taxable" ? TaxAmount() : 0;
  return post((free ? "FOC Purchase Account : " : "Purchase Accrual : ") + thing,
              free ? accounts.free_of_charge : accounts.accrual, amount + tax - discount,
              fc_amount + tax - fc_discount, "Credit");
}

bool GRN::GRN_Tax_Posting() {
  return post_tax({.heading = heading(), .own_type = "GRN", .digits = AmtDig()});
}

}  // namespace ombrix::purchase
