#include "ombrix/purchase/cash_purchase.h"

#include "base/names.h"
#include "base/raw.h"
#include "database/statement.h"
#include "frame/sibling.h"
#include "frame/trap.h"

namespace ombrix::purchase {

using database::sql;
using database::text;

bool CashPurchase::Cheque_Process() {
  return trapped(Trap::plain, [&] {
    if (!OnlineFlag() && !SyncFlag()) return true;
    // Blanks around the type count here: such a payment is entered as cleared.
    const bool cheque = same_name(Payment_Type(), "Cheque");
    const bool card = same_name(Payment_Type(), "Credit Card");
    const bool clears_later = cheque || card;
    const auto of_card = [&](const std::string& text) { return card ? text : std::string(); };
    auto bank = sibling("OmbrixBank.PDC");
    bank.set({{"CompanyPrefix", CompanyPrefix()},
              {"BranchPrefix", BranchPrefix()},
              {"DocumentPrefix", "PDC"},
              {"AdoConnectionObject", raw(AdoConnectionObject)},
              {"TransactionType", "Cash Purchase"},
              {"BAnkID", cheque ? Cheque_Bank_AccountNo() : CreditCardPaymentAccountNo},
              {"BankName", ChequeBank()},
              {"ChequeNo", ChequeNo()},
              {"ChequeAmount", (clears_later ? TaxAmount() : 0) + CashPurInvAmount()}});
    if (clears_later) bank.set("Cleared", "No");
    bank.set({{"CustomerID", VendorCode()},
              {"CustomerName", VendorName()},
              {"PDCDate", card ? ChequeDate() : CashPurInvDate()},
              {"PDCDueDate", ChequeDate()},
              {"CreditCardNo", of_card(CreditCardNo())},
              {"CreditCardName", of_card(CreditCardName())},
              {"CreditCardCode", of_card(CreditCardCode())},
              {"SourceNo", CashPurInvNo()},
              {"SourcePrefix", DocumentPrefix()},
              {"Status", clears_later ? "In Transit" : "Cleared"},
              {"CurrencyCode", CurrencyCode()},
              {"ForeignCurrencyFlag", ForeignCurrencyFlag()},
              {"ChequeFCAmount", CashPurInvFCAmount()}});
    if (!clears_later) bank.set("Cleared", "Yes");
    bank.set("LastUpdate", LastUpdate());
    if (!bank.call("Create_PDC")) return refused_by(bank);
    return !cheque || Incerase_Cheque_No(raw(Cheque_Bank_AccountNo));
  });
}

bool CashPurchase::Incerase_Cheque_No(std::string& pAcNo) {
  auto account = open(sql({"Select * from Bank_List Where Account_No=", text(pAcNo),
                           " And Branch_Prefix=", text(BranchPrefix())}),
                      Keyset);
  if (account.RecordCount() > 0) {
    account("Next_Check_No") = sum(account("Next_Check_No"), 1);
    account.Update();
  }
  return true;
}

}  // namespace ombrix::purchase
