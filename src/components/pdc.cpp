#include "base/number.h"
#include "components/components.h"
#include "components/row_component.h"
#include "database/statement.h"
#include "frame/numbering.h"

namespace ombrix::components {

using database::sql;

namespace {

constexpr Stored kRegister[] = {
    {"CompanyPrefix", "Company_Prefix"},
    {"BranchPrefix", "Branch_Prefix"},
    {"DocumentPrefix", "Document_Prefix"},
    {"TransactionType", "Transaction_Type"},  // what kind of document is paid
    {"BAnkID", "Bank_ID"},                    // the account of the bank
    {"BankName", "Bank_Name"},
    {"ChequeNo", "Cheque_No"},
    {"ChequeAmount", "Cheque_Amount", Type::number},  // home currency
    {"Cleared", "Cleared"},                           // "Yes" or "No"
    {"CustomerID", "CustomerID"},
    {"CustomerName", "Customer_Name"},
    {"PDCDate", "PDC_Date", Type::day},
    {"PDCDueDate", "PDC_Due_Date", Type::day},
    {"CreditCardNo", "CreditCard_No"},
    {"CreditCardName", "CreditCard_Name"},
    {"CreditCardCode", "CreditCard_Code"},
    {"SourceNo", "Source_No"},  // the document that is paid, and its series
    {"SourcePrefix", "Source_Prefix"},
    {"Status", "Status"},
    {"CurrencyCode", "Currency_Code"},
    {"ForeignCurrencyFlag", "Foreign_Currency_Flag", Type::flag},
    {"ChequeFCAmount", "Cheque_FC_Amount", Type::number},  // the document's currency
    {"LastUpdate", "Last_Update", Type::day},
    // What `Create_PDC` made of the entry.
    {"PDCNo", "PDC_No", Type::text, as_it_is, Access::get},
    {"PDCIdentity", "PDC_Identity", Type::number, as_it_is, Access::get},
};

/// `OmbrixBank.PDC`: the register of cheques and card payments on the way through the bank.
///
/// An entry bears a number of the series `DocumentPrefix`, drawn from the counter of the suite.
/// Amounts of any sign are taken. Refused is a blank company, branch, series, bank or source
/// document, and whatever the counter refuses.
class PDC final : public RowComponent {
 public:
  PDC() : RowComponent(kRegister) {}

  /// Registers the members as an entry of its own. A refusal of its own writes nothing; when the
  /// counter refuses to move on, the entry stands. Failures of the database rise. Either way the
  /// counter then stands where it stood.
  bool Create_PDC() {
    if (!ready_with("Bank register",
                    {"CompanyPrefix", "BranchPrefix", "DocumentPrefix", "BAnkID", "SourceNo"})) {
      return false;
    }
    const std::string company = text("CompanyPrefix"), branch = text("BranchPrefix"),
                      series = text("DocumentPrefix");
    SeriesCounter counter(asker(), {company, branch, series});
    if (!counter.draw()) return false;
    const double identity = counter.number();
    put("PDCIdentity", identity);
    put("PDCNo", company + branch + series + general_text(identity));
    write_row(sql({"Select * From PDC_Master"}));
    return counter.move_on();
  }
};

constexpr auto kMembers =
    members_with<PDC>(kRegister, {MembersOf<PDC>::method<&PDC::Create_PDC>("Create_PDC")});
constexpr Interface kInterface("OmbrixBank.PDC", kMembers);

}  // namespace

Shipped pdc() {
  return component<PDC>(kInterface, database::Piece("PDC_Master Where PDC_No="));
}

}  // namespace ombrix::components
