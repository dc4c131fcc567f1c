#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ombrix/connection.h"
#include "ombrix/property.h"

#include "hosting/interface.h"

namespace ombrix::components {

/// `OmbrixSystem.CounterTransaction`: keeps the document counters on the rows of `Document_Prefix`.
///
/// Drawing a number claims it in one atomic step, so that two callers, in two processes too, get
/// different numbers. Temporary and final numbers count on their own. A claim that is not moved on
/// is given back when the component is released, unless a later number was drawn meanwhile: after a
/// failed document the counter stands where it stood.
class CounterTransaction {
 public:
  CounterTransaction() = default;
  ~CounterTransaction();

  Text CompanyPrefix;
  Text BranchPrefix;
  Text DocumentPrefix;
  /// True: a series without a row is opened at 1.
  Flag SkipChecking;
  Property<double, Access::get> NextDocumentNo;
  Property<std::string, Access::get> ErrDesc;

  /// Claims the next number that no document bears. False with a reason in `ErrDesc` when the
  /// series has no row; failures of the database rise.
  bool Get_Last_Counter(std::shared_ptr<Connection>& connection, std::optional<bool> temporary);
  /// Keeps the claim for good. False with a reason when no number was drawn.
  bool Increase_Counter(std::optional<bool> temporary);

 private:
  /// A number taken from the counter and not yet kept.
  struct Claim {
    std::shared_ptr<Connection> connection;
    std::string company, branch, series;
    bool temporary;
    double before;  ///< where the counter stood
    double after;
    /// On which it was claimed, and how many rollbacks that had seen.
    std::weak_ptr<database::Session> session;
    std::int64_t rollbacks;
  };

  bool refuse(std::string reason);
  bool open_series(const Connection& connection) const;
  /// No value when the series has no row.
  std::optional<double> claim(const Connection& connection, bool temporary) const;
  bool is_borne(const Connection& connection, double number, bool temporary) const;
  void give_back() noexcept;

  std::optional<Claim> claim_;
};

const Interface& counter_transaction_interface();

}  // namespace ombrix::components
