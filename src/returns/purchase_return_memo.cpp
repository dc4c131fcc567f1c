#include <array>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "ombrix/purchase/purchase_return.h"

#include "base/number.h"
#include "base/raw.h"
#include "base/text.h"
#include "database/statement.h"
#include "frame/lookup.h"
#include "frame/numbering.h"
#include "frame/sibling.h"
#include "frame/trap.h"
#include "frame/vendor_accounts.h"
#include "hosting/dialogue.h"

namespace ombrix::purchase {

using database::digits;
using database::name;
using database::Piece;
using database::sql;
using database::text;

/// A line of a memo as the memo's kinds of line differ.
struct PurchaseReturn::MemoLine {
  std::int32_t serial;
  std::string type;
  std::string account;
  std::string account_name;
  std::string side;
  double fc_amount;
  double amount;
};

namespace {

const std::string kSeries = "DRM";

void put(Recordset& row, std::initializer_list<std::pair<std::string_view, Value>> columns) {
  for (const auto& [column, value] : columns) row.write(column, value);
}

Piece compared(const std::string& value, bool is_number) {
  return is_number ? digits(value) : text(value);
}

double figure(Recordset& row, std::string_view column) {
  return row(column).number();
}

}  // namespace

bool PurchaseReturn::Generate_Debit_Memo(std::string& pReturnNo) {
  return trapped(Trap::numbered, [&] {
    double own_number = 0;
    bool manual = false;
    if (!ask_memo_number(manual, own_number)) return false;
    Counter counter(*this, kSeries);
    if (!manual && !counter.draw(true)) return false;
    const std::string identity = manual ? general_text(own_number) : counter.number_text();
    std::string voucher_no = CompanyPrefix() + BranchPrefix() + kSeries + "TMP" + identity;
    if (!Create_Voucher_Master(pReturnNo, voucher_no)) return false;
    // A number of the user's own was not drawn, which the counter may refuse to move on from; its
    // reason stands, and the memo goes on.
    counter.move_on(true);
    return Process_DebitMemo(voucher_no, own_number, manual);
  });
}

bool PurchaseReturn::ask_memo_number(bool& manual, double& number) {
  auto series =
      open(sql({"Select Document_Next_No, Manual_Flag,Last_Update From Document_Prefix Where "
                "Document_Prefix='DRM' and Company_Prefix=",
                text(CompanyPrefix()), " and Branch_Prefix=", text(BranchPrefix())}),
           Keyset);
  if (series.IsEOF()) return true;
  const Value flag = series("Manual_Flag");
  manual = !flag.is_null() && flag.to_flag();
  if (!manual) return true;
  const auto answer = whole_number_text(ask("Please Enter Debit Memo No", "0"));
  if (!answer || *answer == 0 || !std::isfinite(*answer)) {
    return refused("Please Enter Valid Numeric Debit Memo No ");
  }
  number = *answer;
  std::optional<bool> is_number = false;
  const std::string final_number =
      CompanyPrefix() + BranchPrefix() + kSeries + general_text(number);
  return !ExistDocument("Voucher_Master", "Voucher_No", final_number, is_number) ||
         refused("Debit Memo No Already Exists ");
}

bool PurchaseReturn::Create_Voucher_Master(std::string& pReturnNo, std::string& pVoucherNo) {
  return trapped(Trap::numbered, [&] {
    auto document =
        open(sql({"Select * from Purchase_Return_Master Where Purchase_Rtn_No=", text(pReturnNo)}),
             Static);
    if (document.RecordCount() < 1) return true;
    write_memo_master(document, pVoucherNo);
    VendorAccounts accounts(asker());
    if (!accounts.read(raw(CompanyPrefix), raw(BranchPrefix))) return false;
    const double amount = figure(document, "Purchase_Rtn_Amount");
    return write_memo_line(pVoucherNo,
                           {1, "Vendor", document("Vendor_Code").text(),
                            document("Vendor_name").text_or_empty(), "Debit", amount, amount}) &&
           credit_accounts(document, pVoucherNo);
  });
}

void PurchaseReturn::write_memo_master(Recordset& document, const std::string& voucher_no) {
  const Value symbol = document("Currency_Symbol");
  const Value amount = document("Purchase_Rtn_Amount");
  const Value fc_amount = document("Purchase_Rtn_FC_Amount");
  auto voucher = open(sql({"Select * from Voucher_Master"}), Static);
  voucher.AddNew();
  put(voucher, {{"Voucher_No", voucher_no},
                {"Voucher_Identity", without_first(voucher_no, 10)},
                {"Company_Prefix", document("Company_Prefix")},
                {"Branch_Prefix", document("Branch_Prefix")},
                {"Document_Prefix", kSeries},
                {"Voucher_Date", document("Purchase_Rtn_Date")},
                {"Voucher_Comments", document("Purchase_Rtn_Comments")},
                {"Foreign_Currency_Flag", document("Foreign_Currency_Flag")},
                {"Currency_Code", document("Currency_Code")},
                {"Currency_Symbol", symbol.is_null() ? symbol : Value(trim(symbol.to_text()))},
                {"process_Flag", 0},
                {"Voucher_Amount", amount},
                {"Voucher_FCAmount", fc_amount},
                {"Balance_Amount", amount},
                {"Balance_FCAmount", fc_amount},
                {"Voucher_For", "Vendor"},
                {"Exchange_Rate", document("Exchange_Rate")},
                {"Type", "Vendor"},
                {"AccountNo", document("Vendor_Code")},
                {"AccountName", document("Vendor_name")},
                {"amountDr", amount},
                {"amountfcDr", amount},
                {"amountCr", 0},
                {"amountfcCr", 0},
                {"Last_Update", LastUpdate()}});
  voucher.Update();
}

bool PurchaseReturn::credit_accounts(Recordset& document, std::string& voucher_no) {
  const auto credit = [&](std::int32_t serial, const std::string& preference,
                          std::string_view missing, double fc_amount, double amount) {
    const std::string account =
        GetFldValue("Default_Purchase_Preferences", preference, "Company_Prefix",
                    document("Company_Prefix").text(), false, "Branch_Prefix",
                    document("Branch_Prefix").text(), false);
    if (trim(account).empty()) return refused(missing);
    const std::string account_name =
        GetFldValue("Chart_Of_Accounts", "Account_Name", "Account_No", account, false);
    return write_memo_line(voucher_no,
                           {serial, "General", account, account_name, "Credit", fc_amount, amount});
  };
  if (!credit(2, "Pur_Accrual_Account_No", "Invalid Purchase Accural Account",
              figure(document, "Purchase_Rtn_FC_SubTotal"),
              figure(document, "Purchase_Rtn_SubTotal"))) {
    return false;
  }
  const Value fc_discount = document("Purchase_Rtn_FC_Disc_Amount");
  if (fc_discount.is_null() || fc_discount.to_number() <= 0) return true;
  return credit(3, "Purchase_Disc_Account_No", "Invalid Default Discount Account",
                fc_discount.to_number(), figure(document, "Purchase_Rtn_Disc_Amount"));
}

bool PurchaseReturn::write_memo_line(std::string& voucher_no, MemoLine line) {
  bool foreign = ForeignCurrencyFlag();
  std::string currency = CurrencyCode();
  std::string symbol = CurrencySymbol();
  std::string project = "  ";
  return Create_Voucher_Detail(voucher_no, line.type, line.account, line.account_name, line.side,
                               line.fc_amount, line.amount, foreign, currency, symbol, project,
                               line.serial);
}

bool PurchaseReturn::Create_Voucher_Detail(std::string& pVoucherNo, std::string& pVouType,
                                           std::string& pAcNo, std::string& pAcName,
                                           std::string& pType, double& pFcAmt, double& pAmt,
                                           bool& /*pFC*/, std::string& /*pCurCode*/,
                                           std::string& /*pCurSymbol*/, std::string& pPrjNo,
                                           std::int32_t& PSlNo) {
  return trapped(Trap::numbered_close, [&] {
    const bool debit = pType == "Debit";
    auto line = open(sql({"Select * from Voucher_Detail "}), Keyset);
    line.AddNew();
    put(line, {{"SL_No", PSlNo},
               {"Voucher_No", pVoucherNo},
               {"Voucher_Type", pVouType},
               {"Account_No", pAcNo},
               {"Account_Name", pAcName},
               {"Voucher_Description", "System Generated Debit Memo."},
               {"Debit_Amount", debit ? pAmt : 0.0},
               {"FC_Debit_Amount", debit ? pFcAmt : 0.0},
               {"Credit_Amount", debit ? 0.0 : pAmt},
               {"FC_Credit_Amount", debit ? 0.0 : pFcAmt},
               {"Proj_No", pPrjNo},
               {"Foreign_Currency_Flag", ForeignCurrencyFlag()},
               {"Currency_Code", CurrencyCode()},
               {"Currency_Symbol", trim(CurrencySymbol())},
               {"Last_Update", LastUpdate()}});
    line.Update();
    return true;
  });
}

bool PurchaseReturn::Process_DebitMemo(std::string& pVoucherNo, double& manualIdentity,
                                       bool& ManualDocFlag) {
  return trapped(Trap::numbered, [&] {
    auto memo = sibling("OmbrixAccountsExt.DebitCreditNote");
    memo.set({{"AdoConnectionObject", raw(AdoConnectionObject)},
              {"ADOConnectionString", ConnectionString()},
              {"VoucherNo", pVoucherNo},
              {"manualDocIdentity", manualIdentity},
              {"DocFlag", ManualDocFlag},
              {"LastUpdate", LastUpdate()}});
    std::array<Value, 1> voucher{pVoucherNo};
    const bool processed = memo.call("Process_Voucher", voucher);
    pVoucherNo = voucher[0].to_text();
    return processed || refused_by(memo);
  });
}

bool PurchaseReturn::ExistDocument(const std::string& strTblName, const std::string& strFldName,
                                   const std::string& DocNo, std::optional<bool>& WhereFldNumYN,
                                   std::optional<std::string> SecondWhereFldName,
                                   std::optional<std::string> SecondWhereFldValue,
                                   std::optional<bool> SecdWhereFldNumType) {
  return trapped(Trap::message_box, [&] {
    const Piece first = compared(DocNo, WhereFldNumYN.value_or(false));
    const std::string second = SecondWhereFldName.value_or("");
    auto rows = second.empty() ? open(sql({"Select * from ", name(strTblName), " Where ",
                                           name(strFldName), "=", first}),
                                      Static)
                               : open(sql({"Select * from ", name(strTblName), " Where ",
                                           name(strFldName), "=", first, " and ", name(second), "=",
                                           compared(SecondWhereFldValue.value_or(""),
                                                    SecdWhereFldNumType.value_or(false))}),
                                      Static);
    return rows.RecordCount() > 0;
  });
}

}  // namespace ombrix::purchase
