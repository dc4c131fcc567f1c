#include "ombrix/purchase/document.h"

#include "base/number.h"

namespace ombrix::purchase {

bool Document::valid(std::string_view date_message, const Date& date,
                     std::initializer_list<Check> own) {
  const auto passes = [this](std::initializer_list<Check> checks) {
    for (const Check& check : checks) {
      if (check.fails) return refused(check.message);
    }
    return true;
  };
  return passes({{connection().State() == 0, "Invalid Connection."},
                 {CompanyPrefix().empty(), "Invalid Company Prefix."},
                 {DocumentPrefix().empty(), "Invalid Document Prefix."},
                 {BranchPrefix().empty(), "Invalid Branch Prefix."},
                 {date.is_zero(), date_message},
                 {VendorCode().empty(), "Invalid Vendor Code."}}) &&
         passes(own) && passes({{CurrencyCode().empty(), "Invalid Currency Code."}});
}

std::string Document::final_number(double identity) const {
  return CompanyPrefix() + BranchPrefix() + DocumentPrefix() + general_text(identity);
}

std::string Document::temporary_number(double identity) const {
  return CompanyPrefix() + BranchPrefix() + DocumentPrefix() + "TMP" + general_text(identity);
}

void Document::read_exchange_rate(Recordset& master) {
  const Value foreign = master("Foreign_Currency_Flag");
  if (foreign.is_null() || !foreign.to_flag()) {
    ExchangeRate = 1;
    return;
  }
  const Value rate = master("Exchange_Rate");
  if (!rate.is_null()) ExchangeRate = rate.to_number();
}

}  // namespace ombrix::purchase
