#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ombrix/purchase/document.h"

namespace ombrix::purchase {

/// What the documents share that are posted to the ledger: the tax that they carry, and the ways to
/// the ledger and into the stock.
class PostedDocument : public Document {
 public:
  /// The tax code, whose authorities share the tax.
  Text TaxCode;
  /// The whole tax of the document, in home currency. Posting the tax may replace it.
  Number TaxAmount;
  /// The rate of the whole tax, in percent.
  Number TaxPercent;
  Text TaxDescription;
  /// The side of the tax: the document's own word ("GRN", "PI", "PR", "CP") or any other.
  Text TaxType;

 protected:
  using Document::Document;

  /// What a ledger line and a stock entry say of their document.
  struct Heading {
    const std::string& number;
    const Date& date;
    const std::string& comments;
  };

  enum class Side : bool { debit, credit };
  struct LedgerLine {
    std::string description;
    std::string account;
    Side side;
    double amount;     ///< home currency
    double fc_amount;  ///< foreign currency
  };
  /// One instance of the ledger component.
  class Ledger;

  /// How a document posts its tax.
  struct TaxPosting {
    Heading heading;
    std::string_view own_type;       ///< compared with `TaxType` without regard to case
    Side own_side = Side::debit;     ///< of a tax of the own type; any other goes opposite
    std::optional<double> digits{};  ///< decimals of the shares; none: nothing is rounded
  };
  /// Posts a share of `TaxAmount` to the account of each authority of `TaxCode`, through
  /// `ConnectionString` as to the authorities. The trap is silent. When the last authority has its
  /// share, `TaxAmount` becomes what the shares exceed it by, 0 where they are the same amount to
  /// 15 digits; it stays as it was where that excess equals the last share.
  bool post_tax(const TaxPosting& how);

  /// What a document owes its vendor, as the sub-ledger has it.
  struct Payable {
    Heading heading;
    const std::string& reference;  ///< the vendor's own number and date
    const Date& reference_date;
    std::string vendor;
    double amount;      ///< home currency
    double fc_amount;   ///< foreign currency
    bool tells_branch;  ///< the component is set to the company and the branch
  };
  /// The payable account of the branch, which must not be blank. `tells_branch`: the component is
  /// set to the branch beforehand.
  bool find_payable_account(bool tells_branch, std::string& account);
  /// Adds the credit to the sub-ledger; the ledger is not touched.
  bool enter_payable(const Payable& payable, const std::string& account);
  std::string payable_description() const;

  class StockIn;

 private:
  bool post_tax_shares(const TaxPosting& how);
  bool post_tax_share(const TaxPosting& how, const std::string& account, double share);
};

}  // namespace ombrix::purchase
