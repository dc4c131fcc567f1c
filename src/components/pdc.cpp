#include "components/pdc.h"

#include <array>

#include "base/number.h"
#include "base/raw.h"
#include "frame/columns.h"
#include "frame/sibling.h"

namespace ombrix::components {

using database::ConnectionAccess;
using database::sql;

namespace {

using namespace rule;

constexpr Column<PDC> kRegister[] = {
    {"PDC_No", always<&PDC::PDCNo>},
    {"PDC_Identity", always<&PDC::PDCIdentity>},
    {"Company_Prefix", always<&PDC::CompanyPrefix>},
    {"Branch_Prefix", always<&PDC::BranchPrefix>},
    {"Document_Prefix", always<&PDC::DocumentPrefix>},
    {"Transaction_Type", always<&PDC::TransactionType>},
    {"Bank_ID", always<&PDC::BAnkID>},
    {"Bank_Name", always<&PDC::BankName>},
    {"Cheque_No", always<&PDC::ChequeNo>},
    {"Cheque_Amount", always<&PDC::ChequeAmount>},
    {"Cleared", always<&PDC::Cleared>},
    {"CustomerID", always<&PDC::CustomerID>},
    {"Customer_Name", always<&PDC::CustomerName>},
    {"PDC_Date", always<&PDC::PDCDate>},
    {"PDC_Due_Date", always<&PDC::PDCDueDate>},
    {"CreditCard_No", always<&PDC::CreditCardNo>},
    {"CreditCard_Name", always<&PDC::CreditCardName>},
    {"CreditCard_Code", always<&PDC::CreditCardCode>},
    {"Source_No", always<&PDC::SourceNo>},
    {"Source_Prefix", always<&PDC::SourcePrefix>},
    {"Status", always<&PDC::Status>},
    {"Currency_Code", always<&PDC::CurrencyCode>},
    {"Foreign_Currency_Flag", always<&PDC::ForeignCurrencyFlag>},
    {"Cheque_FC_Amount", always<&PDC::ChequeFCAmount>},
    {"Last_Update", always<&PDC::LastUpdate>},
};

}  // namespace

bool PDC::Create_PDC() {
  if (!ready("Bank register", {{"CompanyPrefix", CompanyPrefix()},
                               {"BranchPrefix", BranchPrefix()},
                               {"DocumentPrefix", DocumentPrefix()},
                               {"BAnkID", BAnkID()},
                               {"SourceNo", SourceNo()}})) {
    return false;
  }
  Sibling counter("OmbrixSystem.CounterTransaction",
                  ConnectionAccess::instruments(*AdoConnectionObject()));
  const auto counter_refuses = [&] { return refuse(counter.get("ErrDesc").text_or_empty()); };
  counter.set({{"CompanyPrefix", CompanyPrefix()},
               {"BranchPrefix", BranchPrefix()},
               {"DocumentPrefix", DocumentPrefix()}});
  std::array<Value, 1> connection{AdoConnectionObject()};
  if (!counter.call("Get_Last_Counter", connection)) return counter_refuses();
  raw(PDCIdentity) = counter.get("NextDocumentNo").to_number();
  raw(PDCNo) = CompanyPrefix() + BranchPrefix() + DocumentPrefix() + general_text(PDCIdentity());
  write();
  return counter.call("Increase_Counter") || counter_refuses();
}

void PDC::write() {
  auto entry = open(sql({"Select * From PDC_Master"}), Dynamic);
  entry.AddNew();
  write_columns(kRegister, *this, entry);
  entry.Update();
}

namespace {

using Of = MembersOf<PDC, Nulls::read_as_empty>;

constexpr Member kMembers[] = {
    Of::property<&PDC::CompanyPrefix>("CompanyPrefix"),
    Of::property<&PDC::BranchPrefix>("BranchPrefix"),
    Of::property<&PDC::DocumentPrefix>("DocumentPrefix"),
    Of::property<&PDC::AdoConnectionObject>("AdoConnectionObject"),
    Of::property<&PDC::TransactionType>("TransactionType"),
    Of::property<&PDC::BAnkID>("BAnkID"),
    Of::property<&PDC::BankName>("BankName"),
    Of::property<&PDC::ChequeNo>("ChequeNo"),
    Of::property<&PDC::ChequeAmount>("ChequeAmount"),
    Of::property<&PDC::Cleared>("Cleared"),
    Of::property<&PDC::CustomerID>("CustomerID"),
    Of::property<&PDC::CustomerName>("CustomerName"),
    Of::property<&PDC::PDCDate>("PDCDate"),
    Of::property<&PDC::PDCDueDate>("PDCDueDate"),
    Of::property<&PDC::CreditCardNo>("CreditCardNo"),
    Of::property<&PDC::CreditCardName>("CreditCardName"),
    Of::property<&PDC::CreditCardCode>("CreditCardCode"),
    Of::property<&PDC::SourceNo>("SourceNo"),
    Of::property<&PDC::SourcePrefix>("SourcePrefix"),
    Of::property<&PDC::Status>("Status"),
    Of::property<&PDC::CurrencyCode>("CurrencyCode"),
    Of::property<&PDC::ForeignCurrencyFlag>("ForeignCurrencyFlag"),
    Of::property<&PDC::ChequeFCAmount>("ChequeFCAmount"),
    Of::property<&PDC::LastUpdate>("LastUpdate"),
    Of::property<&PDC::PDCNo>("PDCNo"),
    Of::property<&PDC::PDCIdentity>("PDCIdentity"),
    Of::property<&PDC::ErrDesc>("ErrDesc"),
    Of::method<&PDC::Create_PDC>("Create_PDC"),
};

}  // namespace

const Interface& pdc_interface() {
  static constexpr Interface kInterface("OmbrixBank.PDC", kMembers);
  return kInterface;
}

}  // namespace ombrix::components
