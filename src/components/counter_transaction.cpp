#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "ombrix/connection.h"
#include "ombrix/property.h"

#include "base/number.h"
#include "base/raw.h"
#include "components/component.h"
#include "components/components.h"
#include "database/connection_access.h"

namespace ombrix::components {

using database::number;
using database::sql;
using database::Statement;
using database::text;

namespace {

/// `OmbrixSystem.CounterTransaction`: keeps the document counters on the rows of `Document_Prefix`.
///
/// Drawing a number claims it in one atomic step, so that two callers, in two processes too, get
/// different numbers. Temporary and final numbers count on their own. A claim that is not moved on
/// is given back when the component is released, unless a later number was drawn meanwhile: after a
/// failed document the counter stands where it stood.
class CounterTransaction final {
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

  bool refused(std::string reason);
  bool open_series(const Connection& connection) const;
  /// No value when the series has no row.
  std::optional<double> claim(const Connection& connection, bool temporary) const;
  /// For a reason.
  std::string series_text() const;
  bool is_borne(const Connection& connection, double number, bool temporary) const;
  void give_back() noexcept;

  std::optional<Claim> claim_;
};

/// The library's own statements about a series differ only in the column that counts.
Statement advance(const std::string& series, const std::string& company, const std::string& branch,
                  bool temporary) {
  if (temporary) {
    return sql(
        {"Update Document_Prefix Set Temporary_Next_No = Temporary_Next_No + 1"
         " Where Document_Prefix=",
         text(series), " and Company_Prefix=", text(company), " and Branch_Prefix=", text(branch),
         " Returning Temporary_Next_No - 1 As Claimed"});
  }
  return sql(
      {"Update Document_Prefix Set Document_Next_No = Document_Next_No + 1"
       " Where Document_Prefix=",
       text(series), " and Company_Prefix=", text(company), " and Branch_Prefix=", text(branch),
       " Returning Document_Next_No - 1 As Claimed"});
}

/// Only while no later number was drawn: a number in between is never handed out twice.
Statement retreat(const std::string& series, const std::string& company, const std::string& branch,
                  bool temporary, double before, double after) {
  if (temporary) {
    return sql({"Update Document_Prefix Set Temporary_Next_No = ", number(before),
                " Where Document_Prefix=", text(series), " and Company_Prefix=", text(company),
                " and Branch_Prefix=", text(branch), " and Temporary_Next_No = ", number(after)});
  }
  return sql({"Update Document_Prefix Set Document_Next_No = ", number(before),
              " Where Document_Prefix=", text(series), " and Company_Prefix=", text(company),
              " and Branch_Prefix=", text(branch), " and Document_Next_No = ", number(after)});
}

/// One look by key in every table that holds documents with a final number.
Statement bearers_of(const std::string& number) {
  Statement bearers = sql({"Select 1 As Borne Where Exists (Select 1 From "});
  bool first = true;
  for (const Shipped& each : shipped()) {
    if (!each.numbers()) continue;
    if (!first) bearers.append({") Or Exists (Select 1 From "});
    bearers.append({*each.numbers(), text(number)});
    first = false;
  }
  bearers.append({")"});
  return bearers;
}

CounterTransaction::~CounterTransaction() {
  give_back();
}

bool CounterTransaction::refused(std::string reason) {
  raw(ErrDesc) = std::move(reason);
  return false;
}

bool CounterTransaction::Get_Last_Counter(std::shared_ptr<Connection>& connection,
                                          std::optional<bool> temporary) {
  give_back();
  if (!connection) return refused("Invalid Connection.");
  const bool for_temporary = temporary.value_or(false);
  auto claimed = claim(*connection, for_temporary);
  if (!claimed && SkipChecking() && open_series(*connection)) {
    claimed = claim(*connection, for_temporary);
  }
  if (!claimed) {
    return refused("No counter for " + series_text() + ".");
  }
  const auto& session = database::ConnectionAccess::session(*connection);
  claim_ = Claim{connection, CompanyPrefix(), BranchPrefix(), DocumentPrefix(),    for_temporary,
                 *claimed,   *claimed + 1,    session,        session->rollbacks()};
  double drawn = *claimed;
  while (is_borne(*connection, drawn, for_temporary)) {
    claimed = claim(*connection, for_temporary);
    if (!claimed) return refused("The counter's series went while a number was drawn.");
    drawn = *claimed;
    // Another caller holds the numbers in between, and they are not ours to give back.
    if (drawn != claim_->after) claim_->before = drawn;
    claim_->after = drawn + 1;
  }
  raw(NextDocumentNo) = drawn;
  return true;
}

bool CounterTransaction::Increase_Counter(std::optional<bool> temporary) {
  if (!claim_) return refused("The counter was not moved on: no number was drawn.");
  if (claim_->temporary != temporary.value_or(false)) {
    return refused("The counter was not moved on: the number drawn is of the other kind.");
  }
  claim_.reset();
  return true;
}

bool CounterTransaction::open_series(const Connection& connection) const {
  database::execute(
      sql({"Insert Into Document_Prefix (Document_Prefix, Company_Prefix, Branch_Prefix,"
           " Document_Next_No) Values (",
           text(DocumentPrefix()), ", ", text(CompanyPrefix()), ", ", text(BranchPrefix()),
           ", 1) On Conflict Do Nothing"}),
      connection);
  return true;
}

std::optional<double> CounterTransaction::claim(const Connection& connection,
                                                bool temporary) const {
  auto row = database::open_recordset(
      advance(DocumentPrefix(), CompanyPrefix(), BranchPrefix(), temporary), connection, Keyset);
  if (row.RecordCount() == 0) return std::nullopt;
  const Value claimed = row("Claimed");
  if (claimed.is_null()) {
    throw Failure(94, "The counter of " + series_text() + " holds no number.");
  }
  return claimed.to_number();
}

std::string CounterTransaction::series_text() const {
  return "document series \"" + DocumentPrefix() + "\" of company \"" + CompanyPrefix() +
         "\", branch \"" + BranchPrefix() + "\"";
}

bool CounterTransaction::is_borne(const Connection& connection, double number,
                                  bool temporary) const {
  const std::string series = CompanyPrefix() + BranchPrefix() + DocumentPrefix();
  auto bearers = temporary ? database::open_recordset(
                                 sql({"Select Voucher_No From Voucher_Master Where Voucher_No=",
                                      text(series, "TMP", general_text(number))}),
                                 connection, ForwardOnly)
                           : database::open_recordset(bearers_of(series + general_text(number)),
                                                      connection, ForwardOnly);
  return bearers.RecordCount() > 0;
}

void CounterTransaction::give_back() noexcept {
  if (!claim_) return;
  try {
    const Claim claim = *std::exchange(claim_, std::nullopt);
    const auto& session = database::ConnectionAccess::session(*claim.connection);
    // A rollback, or the end of the session, has put the counter back already, and another caller
    // may have drawn since.
    if (session != claim.session.lock() || session->rollbacks() != claim.rollbacks) return;
    database::execute(retreat(claim.series, claim.company, claim.branch, claim.temporary,
                              claim.before, claim.after),
                      *claim.connection);
  } catch (const Failure&) {
    // The session is gone, or its transaction is doomed: the number stays claimed, or the rollback
    // to come puts it back.
  }
}

using Of = MembersOf<CounterTransaction>;

constexpr Member kMembers[] = {
    Of::property<&CounterTransaction::CompanyPrefix>("CompanyPrefix"),
    Of::property<&CounterTransaction::BranchPrefix>("BranchPrefix"),
    Of::property<&CounterTransaction::DocumentPrefix>("DocumentPrefix"),
    Of::property<&CounterTransaction::SkipChecking>("SkipChecking"),
    Of::property<&CounterTransaction::NextDocumentNo>("NextDocumentNo"),
    Of::property<&CounterTransaction::ErrDesc>("ErrDesc"),
    Of::method<&CounterTransaction::Get_Last_Counter>("Get_Last_Counter"),
    Of::method<&CounterTransaction::Increase_Counter>("Increase_Counter"),
};

constexpr Interface kInterface("OmbrixSystem.CounterTransaction", kMembers);

}  // namespace

Shipped counter_transaction() {
  return component<CounterTransaction>(kInterface);
}

}  // namespace ombrix::components
