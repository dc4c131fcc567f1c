#pragma once

#include "components/component.h"
#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixBank.PDC`: the register of cheques and card payments on the way through the bank.
///
/// An entry bears a number of the series `DocumentPrefix`, drawn from the counter of the suite.
/// Amounts of any sign are taken. Refused is a blank company, branch, series, bank or source
/// document, and whatever the counter refuses.
class PDC : public Component {
 public:
  Text CompanyPrefix;
  Text BranchPrefix;
  Text DocumentPrefix;
  /// What kind of document the payment belongs to.
  Text TransactionType;
  /// The account of the bank.
  Text BAnkID;
  Text BankName;
  Text ChequeNo;
  /// In home currency, and in the document's.
  Number ChequeAmount;
  Number ChequeFCAmount;
  /// "Yes" or "No".
  Text Cleared;
  Text CustomerID;
  Text CustomerName;
  Day PDCDate;
  Day PDCDueDate;
  Text CreditCardNo;
  Text CreditCardName;
  Text CreditCardCode;
  /// The document that is paid, and its series.
  Text SourceNo;
  Text SourcePrefix;
  Text Status;
  Text CurrencyCode;
  Flag ForeignCurrencyFlag;
  Day LastUpdate;
  /// What `Create_PDC` made of the entry.
  Property<std::string, Access::get> PDCNo;
  Property<double, Access::get> PDCIdentity;

  /// Registers the members as an entry of its own. A refusal writes nothing and leaves its reason
  /// in `ErrDesc`; failures of the database rise. Either way the counter then stands where it
  /// stood.
  bool Create_PDC();

 private:
  void write();
};

const Interface& pdc_interface();

}  // namespace ombrix::components
