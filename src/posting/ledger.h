#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "ombrix/purchase/posted_document.h"

#include "frame/sibling.h"

namespace ombrix::purchase {

/// `OmbrixAccounts.GeneralLedger`, made for one document. What is set stays set from line to line.
///
/// A line is stated and inserted; then the balance of its account is moved. Both answer false with
/// the component's reason in the document's `ErrDesc`, and neither takes the other back.
class PostedDocument::Ledger {
 public:
  explicit Ledger(PostedDocument& document);

  /// A whole line, with the document's currency flag and `LastUpdate`.
  void state(const Heading& heading, const LedgerLine& line);
  void state(const Heading& heading, const LedgerLine& line, bool foreign, const Date& last_update);
  void set(std::initializer_list<std::pair<std::string_view, Value>> members) {
    component_.set(members);
  }
  Value get(std::string_view member) { return component_.get(member); }

  bool insert();
  /// By reference: the component may hand other values back.
  bool move(std::string& account, double& amount);
  /// A whole line on the side that its type names ("Credit", or any other text for a debit) and the
  /// move of its account. `amount` is negated on a credit that was inserted. `on_top` stands on the
  /// line in both currencies and moves nothing.
  struct Entry {
    const std::string& description;
    std::string& account;
    double& amount;
    double fc_amount;
    const std::string& type;
    double on_top = 0;
  };
  bool post(const Heading& heading, const Entry& entry);
  /// The stated line, and `movement` on its account.
  bool post(std::string account, double movement) { return insert() && move(account, movement); }

 private:
  PostedDocument& document_;
  Sibling component_;
};

}  // namespace ombrix::purchase
